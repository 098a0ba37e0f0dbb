// Rewriting of statements that do something.
#include "host/form/SourceText.h"
#include "host/form/VbRewriter.h"

namespace qrn::form {
namespace {

constexpr std::string_view kComparisons[] = {"=", "<>", "<=", ">=", "<", ">", "=<", "=>"};

bool IsComparison(const Token& token) {
  for (const std::string_view sign : kComparisons) {
    if (token.Is(sign)) return true;
  }
  return false;
}

// Where the "=" of `name = ...` or `name(...) = ...` stands; 0 if the statement is none of these.
size_t AssignmentSign(const Tokens& tokens) {
  if (tokens.size() < 2 || tokens[0].kind != TokenKind::Word) return 0;
  const size_t at = tokens[1].Is("(") ? BehindParenthesis(tokens, 1) : 1;
  return at < tokens.size() && tokens[at].Is("=") ? at : 0;
}

// Where the list begins of `Print ...` and `anything.Print ...`; 0 for other statements.
size_t PrintListBegin(const Tokens& tokens) {
  if (tokens[0].Is("Print")) return 1;
  for (size_t at = 1; at + 1 < tokens.size(); at += 2) {
    if (tokens[at - 1].kind != TokenKind::Word || !tokens[at].Is(".")) return 0;
    if (tokens[at + 1].Is("Print")) return at + 2;
  }
  return 0;
}

}  // namespace

std::string VbRewriter::OnEnd(const Statement& statement) {
  if (statement.tokens.size() == 1) return kEndName;
  if (statement.Has(1, "Sub") || statement.Has(1, "Function")) {
    EndProcedure();
  } else if (statement.Has(1, "Select") && !selectors_.empty()) {
    selectors_.pop_back();
  } else if (statement.Has(1, "Enum")) {
    inEnum_ = false;
    return "";
  }
  return Spelled(statement.tokens);
}

// The engine's Next names no variable.
std::string VbRewriter::OnNext(const Statement& statement) {
  std::string text = "Next";
  const size_t count = SplitAtCommas(statement.tokens, 1, statement.tokens.size()).size();
  for (size_t i = 1; i < count; ++i) text += ": Next";
  return text;
}

// With To or Is among its cases the value is kept in a variable and each case becomes a condition.
std::string VbRewriter::OnSelect(const Statement& statement) {
  const bool ranges = survey_.rangeSelects.contains(index_);
  selectors_.push_back(ranges ? "Select" + std::to_string(index_) + "_" : "");
  if (!ranges) return Expression(statement.tokens, statement.line);
  const Tokens value = Slice(statement.tokens, 2, statement.tokens.size());
  const std::string& selector = selectors_.back();
  if (procedure_) {
    output_.PutBehind(procedure_->head, "Dim " + selector);
  } else {
    output_.PutFirst("Dim " + selector);
  }
  return selector + " = (" + Expression(value, statement.line) + "): Select Case True";
}

std::string VbRewriter::OnCase(const Statement& statement) {
  const bool plain = selectors_.empty() || selectors_.back().empty();
  if (plain || statement.Has(1, "Else")) return Expression(statement.tokens, statement.line);
  std::string text = "Case ";
  bool first = true;
  for (const Tokens& test : SplitAtCommas(statement.tokens, 1, statement.tokens.size())) {
    text += (first ? "" : ", ") + CaseTest(test, selectors_.back(), statement.line);
    first = false;
  }
  return text;
}

std::string VbRewriter::CaseTest(const Tokens& test, const std::string& selector, int line) {
  if (test.empty()) {
    Refuse(line, "a value is missing in 'Case'");
    return "False";
  }
  const size_t to = FindOutside(test, "To");
  if (to < test.size()) {
    return "(" + selector + " >= (" + Expression(Slice(test, 0, to), line) + ") And " + selector +
           " <= (" + Expression(Slice(test, to + 1, test.size()), line) + "))";
  }
  if (!test[0].Is("Is")) return "(" + selector + " = (" + Expression(test, line) + "))";
  if (test.size() < 3 || !IsComparison(test[1])) {
    Refuse(line, "a comparison and a value are expected behind 'Case Is'");
    return "False";
  }
  return "(" + selector + " " + test[1].text + " (" +
         Expression(Slice(test, 2, test.size()), line) + "))";
}

std::string VbRewriter::OnError(const Statement& statement) {
  const bool known =
      statement.Has(1, "Error") && ((statement.Has(2, "Resume") && statement.Has(3, "Next")) ||
                                    (statement.Has(2, "GoTo") && statement.tokens.size() == 4 &&
                                     statement.tokens[3].text == "0"));
  if (known) return Spelled(statement.tokens);
  Refuse(statement.line,
         statement.Has(1, "Error")
             ? "a jump on an error cannot be had: use On Error Resume Next and look at Err.Number "
               "behind what may fail"
             : "'On ... GoTo' cannot be had: use Select Case");
  return "";
}

std::string VbRewriter::OnLet(const Statement& statement) {
  Statement bare = statement;
  bare.tokens.erase(bare.tokens.begin());
  if (bare.tokens.empty()) {
    Refuse(statement.line, "an assignment is expected behind 'Let'");
    return "";
  }
  return OnOther(bare);
}

// Print lists have separators that are no syntax in the engine: they travel as texts.
std::string VbRewriter::PrintList(const Tokens& tokens, size_t from, int line) {
  std::string text;
  size_t start = from;
  const auto add = [&text](const std::string& argument) {
    text += (text.empty() ? " " : ", ") + argument;
  };
  while (start < tokens.size()) {
    const size_t end = std::min(FindOutside(tokens, ";", start), FindOutside(tokens, ",", start));
    if (end > start) add(Expression(Slice(tokens, start, end), line));
    if (end < tokens.size()) {
      if (end == start) add("\"\"");
      add("\"" + tokens[end].text + "\"");
    }
    start = end + 1;
  }
  return kPrintName + text;
}

// The type that what is assigned has to be converted to; null if it stays as it is.
const VbType* VbRewriter::AssignedType(const Statement& statement, size_t equals) const {
  const std::string& name = statement.tokens[0].text;
  const VbType* type = nullptr;
  if (const Declared* declared = names_.Find(name)) {
    const bool element = equals > 1;
    if (declared->isArray == element) type = declared->type;
  } else if (procedure_ && procedure_->isFunction && SameWord(procedure_->name, name) &&
             equals == 1) {
    type = procedure_->type;
  }
  return type && !type->conversion.empty() ? type : nullptr;
}

std::string VbRewriter::OnOther(const Statement& statement) {
  const Tokens& tokens = statement.tokens;
  const int line = statement.line;
  if (statement.Starts("Debug", ".") && statement.Has(2, "Assert")) {
    return std::string(kAssertName) + " " + Expression(Slice(tokens, 3, tokens.size()), line);
  }
  const size_t print = PrintListBegin(tokens);
  if (print > 0 && !survey_.names.contains("print")) return PrintList(tokens, print, line);
  const size_t equals = AssignmentSign(tokens);
  const VbType* type = equals > 0 ? AssignedType(statement, equals) : nullptr;
  if (!type || equals + 1 == tokens.size()) return Expression(tokens, line);
  return Expression(Slice(tokens, 0, equals + 1), line) + " " + std::string(type->conversion) +
         "(" + Expression(Slice(tokens, equals + 1, tokens.size()), line) + ")";
}

}  // namespace qrn::form
