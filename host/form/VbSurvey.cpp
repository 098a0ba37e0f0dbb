#include "host/form/VbSurvey.h"

#include "host/form/SourceText.h"
#include "host/form/VbBlocks.h"

namespace qrn::form {
namespace {

bool IsVariableWord(const Statement& statement) {
  return statement.Starts("Dim") || statement.Starts("Private") || statement.Starts("Public") ||
         statement.Starts("Global");
}

bool HasRange(const Statement& statement) {
  for (size_t at = 1; at < statement.tokens.size(); ++at) {
    const bool begins = at == 1 || statement.tokens[at - 1].Is(",");
    if (statement.tokens[at].Is("To") || (begins && statement.tokens[at].Is("Is"))) return true;
  }
  return false;
}

class Surveyor {
 public:
  Surveyor(const std::vector<Statement>& statements, Mistakes& mistakes)
      : statements_(statements), mistakes_(mistakes) {}

  Survey Run() {
    for (size_t i = 0; i < statements_.size(); ++i) {
      const Statement& statement = statements_[i];
      LookAtSelect(statement, i);
      if (LookAtProcedure(statement)) continue;
      if (!inside_) LookAtModule(statement);
    }
    return std::move(survey_);
  }

 private:
  bool LookAtProcedure(const Statement& statement) {
    if (statement.Starts("End", "Sub") || statement.Starts("End", "Function")) {
      inside_ = false;
      return true;
    }
    const std::string_view word = ProcedureWord(statement);
    if (word.empty()) return false;
    inside_ = true;
    AddProcedure(statement, word);
    return true;
  }

  void AddProcedure(const Statement& statement, std::string_view word) {
    const size_t at = FindOutside(statement.tokens, word) + 1;
    if (at >= statement.tokens.size() || statement.tokens[at].kind != TokenKind::Word) {
      mistakes_.Add(statement.line, "a name is expected behind '" + std::string(word) + "'");
      return;
    }
    Procedure procedure;
    procedure.name = statement.tokens[at].text;
    procedure.line = statement.line;
    procedure.isFunction = word == "Function";
    for (const Procedure& earlier : survey_.procedures) {
      if (!SameWord(earlier.name, procedure.name)) continue;
      mistakes_.Add(statement.line,
                    procedure.name + " stands already on line " + std::to_string(earlier.line));
    }
    procedure.parameterCount = CountParameters(statement, at + 1);
    survey_.names.insert(LowerWord(procedure.name));
    survey_.procedures.push_back(std::move(procedure));
  }

  static int CountParameters(const Statement& statement, size_t open) {
    if (!statement.Has(open, "(")) return 0;
    const size_t behind = BehindParenthesis(statement.tokens, open);
    if (behind <= open + 2) return 0;
    return static_cast<int>(SplitAtCommas(statement.tokens, open + 1, behind - 1).size());
  }

  void LookAtModule(const Statement& statement) {
    if (statement.Starts("Option", "Explicit")) survey_.optionExplicit = true;
    if (statement.Starts("Option", "Base") && statement.tokens.size() == 3 &&
        statement.tokens[2].text == "1") {
      survey_.optionBase = 1;
    }
    const bool constant = statement.Starts("Const") || statement.Has(1, "Const");
    if (!constant && !IsVariableWord(statement)) return;
    // Mistakes are told when the statement is rewritten.
    Mistakes unheard;
    const size_t begin = statement.Has(1, "Const") || statement.Has(1, "WithEvents") ? 2 : 1;
    const Tokens& tokens = statement.tokens;
    for (const Tokens& entry : SplitAtCommas(tokens, begin, tokens.size())) {
      const size_t end = constant ? FindOutside(entry, "=") : entry.size();
      for (const Declared& declared : ReadDeclared(entry, 0, end, statement.line, unheard)) {
        survey_.names.insert(LowerWord(declared.name));
        if (!constant) survey_.module.Add(declared);
      }
    }
  }

  void LookAtSelect(const Statement& statement, size_t index) {
    if (statement.Starts("Select", "Case")) {
      selects_.push_back(index);
    } else if (statement.Starts("End", "Select")) {
      if (!selects_.empty()) selects_.pop_back();
    } else if (statement.Starts("Case") && !selects_.empty() && HasRange(statement)) {
      survey_.rangeSelects.insert(selects_.back());
    }
  }

  const std::vector<Statement>& statements_;
  Mistakes& mistakes_;
  Survey survey_;
  std::vector<size_t> selects_;
  bool inside_ = false;
};

}  // namespace

Survey SurveyModule(const std::vector<Statement>& statements, Mistakes& mistakes) {
  return Surveyor(statements, mistakes).Run();
}

}  // namespace qrn::form
