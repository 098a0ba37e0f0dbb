// The frame: which statement goes where, procedures and their heads.
#include "host/form/VbRewriter.h"

#include "host/form/SourceText.h"
#include "host/form/VbRefusals.h"

namespace qrn::form {

// A second word narrows a row down. The first row that fits is taken.
struct VbRewriter::Handler {
  std::string_view first;
  std::string_view second;
  std::string (VbRewriter::*rewrite)(const Statement&);
};

// clang-format off
const VbRewriter::Handler VbRewriter::kHandlers[] = {
    {"Attribute", "",           &VbRewriter::OnNothing},
    {"Option",    "",           &VbRewriter::OnOption},
    {"Private",   "Const",      &VbRewriter::OnConst},
    {"Public",    "Const",      &VbRewriter::OnConst},
    {"Global",    "Const",      &VbRewriter::OnConst},
    {"Const",     "",           &VbRewriter::OnConst},
    {"Private",   "Enum",       &VbRewriter::OnEnum},
    {"Public",    "Enum",       &VbRewriter::OnEnum},
    {"Enum",      "",           &VbRewriter::OnEnum},
    {"Private",   "Type",       &VbRewriter::OnRefusedBlock},
    {"Public",    "Type",       &VbRewriter::OnRefusedBlock},
    {"Private",   "Property",   &VbRewriter::OnRefusedBlock},
    {"Public",    "Property",   &VbRewriter::OnRefusedBlock},
    {"Friend",    "Property",   &VbRewriter::OnRefusedBlock},
    {"Private",   "Declare",    &VbRewriter::OnRefusedBlock},
    {"Public",    "Declare",    &VbRewriter::OnRefusedBlock},
    {"Public",    "Event",      &VbRewriter::OnRefusedBlock},
    {"Type",      "",           &VbRewriter::OnRefusedBlock},
    {"Property",  "",           &VbRewriter::OnRefusedBlock},
    {"Dim",       "",           &VbRewriter::OnVariables},
    {"Private",   "",           &VbRewriter::OnVariables},
    {"Public",    "",           &VbRewriter::OnVariables},
    {"Global",    "",           &VbRewriter::OnVariables},
    {"Static",    "",           &VbRewriter::OnVariables},
    {"ReDim",     "",           &VbRewriter::OnReDim},
    {"Erase",     "",           &VbRewriter::OnErase},
    {"End",       "",           &VbRewriter::OnEnd},
    {"Next",      "",           &VbRewriter::OnNext},
    {"Select",    "Case",       &VbRewriter::OnSelect},
    {"Case",      "",           &VbRewriter::OnCase},
    {"On",        "",           &VbRewriter::OnError},
    {"Let",       "",           &VbRewriter::OnLet},
};
// clang-format on

namespace {

constexpr std::string_view kStandAlone[] = {"Do",   "Loop",  "Next",      "Wend", "End",
                                            "Stop", "Print", "Randomize", "Else", "Select"};

bool StandsAlone(const Token& token) {
  for (const std::string_view word : kStandAlone) {
    if (token.Is(word)) return true;
  }
  return token.Is("DoEvents") || token.Is("Beep");
}

}  // namespace

VbRewriter::VbRewriter(const std::vector<LogicalLine>& lines, Mistakes& mistakes)
    : mistakes_(mistakes),
      statements_(SplitStatements(lines, mistakes)),
      survey_(SurveyModule(statements_, mistakes)),
      blocks_(mistakes),
      output_(lines) {
  names_.survey = &survey_;
}

ScriptCode VbRewriter::Run() {
  if (survey_.optionExplicit) output_.PutFirst("Option Explicit");
  for (index_ = 0; index_ < statements_.size(); ++index_) Rewrite(statements_[index_]);
  blocks_.Finish();
  ScriptCode code;
  code.text = output_.Text();
  code.procedures = survey_.procedures;
  return code;
}

void VbRewriter::Rewrite(const Statement& statement) {
  if (!skipTo_.empty()) {
    if (statement.Starts("End", skipTo_)) skipTo_.clear();
    return;
  }
  blocks_.Pass(statement);
  const std::string_view head = ProcedureWord(statement);
  if (head.empty()) {
    output_.Add(statement, Rewritten(statement));
  } else {
    EndProcedure();
    procedure_.emplace();
    std::string text = RewriteHead(statement, head);
    procedure_->head = output_.Add(statement, std::move(text));
    if (!procedure_->type->initial.empty() && procedure_->isFunction) {
      const bool isObject = procedure_->type->conversion.empty();
      output_.PutBehind(procedure_->head, (isObject ? "Set " : "") + procedure_->name + " = " +
                                              std::string(procedure_->type->initial));
    }
  }
}

std::string VbRewriter::Rewritten(const Statement& statement) {
  if (inEnum_ && !statement.Starts("End", "Enum")) return Enumerator(statement);
  if (IsLabel(statement)) return "";
  for (const Handler& handler : kHandlers) {
    if (!statement.Starts(handler.first)) continue;
    if (!handler.second.empty() && !statement.Has(1, handler.second)) continue;
    if (statement.Has(1, "=")) continue;
    return (this->*handler.rewrite)(statement);
  }
  if (!survey_.names.contains(LowerWord(statement.tokens[0].text))) {
    const std::string_view reason = WhyStatementRefused(statement);
    if (!reason.empty()) {
      Refuse(statement.line, reason);
      return "";
    }
  }
  return OnOther(statement);
}

bool VbRewriter::IsLabel(const Statement& statement) {
  if (statement.tokens[0].kind == TokenKind::Number) {
    Refuse(statement.line, "a line number cannot be had: jumps cannot be had either");
    return true;
  }
  const Token& word = statement.tokens[0];
  if (!statement.maybeLabel || StandsAlone(word)) return false;
  if (survey_.names.contains(LowerWord(word.text))) return false;
  Refuse(statement.line, "'" + word.text + ":' is a jump label, and jumps cannot be had");
  return true;
}

std::string VbRewriter::RewriteHead(const Statement& statement, std::string_view word) {
  const Tokens& tokens = statement.tokens;
  size_t at = FindOutside(tokens, word) + 1;
  if (FindOutside(tokens, "Static") < at) {
    Refuse(statement.line, "Static before a procedure cannot be had: declare single variables so");
  }
  if (at >= tokens.size()) return "";
  procedure_->name = tokens[at].text;
  procedure_->isFunction = word == "Function";
  procedure_->type = &TypeMarked(tokens[at].typeMark);
  std::vector<Declared> parameters;
  ++at;
  if (statement.Has(at, "(")) {
    const size_t behind = BehindParenthesis(tokens, at);
    if (behind > at + 2) {
      parameters = ReadParameters(tokens, at + 1, behind - 1, statement.line, mistakes_);
    }
    at = behind;
  }
  if (statement.Has(at, "As") && at + 1 < tokens.size()) {
    procedure_->type = &TypeNamed(tokens[at + 1].text);
    at += 2;
    if (statement.Has(at, "(")) procedure_->type = &VariantType();  // gives an array
  }
  return std::string(word) + " " + procedure_->name + Parameters(parameters) +
         Conversions(parameters);
}

std::string VbRewriter::Parameters(const std::vector<Declared>& parameters) {
  std::string text;
  for (const Declared& parameter : parameters) {
    if (!text.empty()) text += ", ";
    if (parameter.byValue) text += "ByVal ";
    text += parameter.name;
    names_.locals.Add(parameter);
  }
  return "(" + text + ")";
}

// A parameter passed by value arrives in whatever type the caller had.
std::string VbRewriter::Conversions(const std::vector<Declared>& parameters) {
  std::string conversions;
  for (const Declared& parameter : parameters) {
    if (!parameter.byValue || parameter.isArray || parameter.type->conversion.empty()) continue;
    conversions += ": " + parameter.name + " = " + std::string(parameter.type->conversion) + "(" +
                   parameter.name + ")";
  }
  return conversions;
}

void VbRewriter::EndProcedure() {
  procedure_.reset();
  names_.locals = Scope();
  names_.statics.clear();
}

std::string VbRewriter::Expression(const Tokens& tokens, int line) {
  return Spelled(RewriteExpression(tokens, names_, line, mistakes_));
}

const Procedure* ScriptCode::Find(const std::string& name) const noexcept {
  for (const Procedure& procedure : procedures) {
    if (SameWord(procedure.name, name)) return &procedure;
  }
  return nullptr;
}

ScriptCode RewriteCode(const std::vector<std::string>& lines, int firstLine, Mistakes& mistakes) {
  const std::vector<LogicalLine> logical = ReadCodeLines(lines, firstLine, mistakes);
  ScriptCode code = VbRewriter(logical, mistakes).Run();
  code.firstLine = firstLine;
  return code;
}

void CheckParameters(const Procedure& handler, int expected, Mistakes& mistakes) {
  if (handler.parameterCount == expected) return;
  mistakes.Add(handler.line, handler.name + " is a handler of an event with " +
                                 std::to_string(expected) + " parameters, not " +
                                 std::to_string(handler.parameterCount));
}

}  // namespace qrn::form
