// The statement by statement work of RewriteCode.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/form/VbBlocks.h"
#include "host/form/VbExpression.h"
#include "host/form/VbOutput.h"

namespace qrn::form {

// The procedure being rewritten.
struct CurrentProcedure {
  std::string name;
  bool isFunction = false;
  const VbType* type = &VariantType();  // what a function gives
  VbOutput::Place head;
};

class VbRewriter {
 public:
  VbRewriter(const std::vector<LogicalLine>& lines, Mistakes& mistakes);

  ScriptCode Run();

 private:
  struct Handler;
  static const Handler kHandlers[];

  void Rewrite(const Statement& statement);
  std::string Rewritten(const Statement& statement);
  std::string RewriteHead(const Statement& statement, std::string_view word);
  std::string Parameters(const std::vector<Declared>& parameters);
  static std::string Conversions(const std::vector<Declared>& parameters);
  void EndProcedure();

  std::string OnNothing(const Statement& statement);
  std::string OnOption(const Statement& statement);
  std::string OnVariables(const Statement& statement);
  std::string OnConst(const Statement& statement);
  std::string OnEnum(const Statement& statement);
  std::string OnRefusedBlock(const Statement& statement);
  std::string OnReDim(const Statement& statement);
  std::string OnErase(const Statement& statement);
  std::string OnEnd(const Statement& statement);
  std::string OnNext(const Statement& statement);
  std::string OnSelect(const Statement& statement);
  std::string OnCase(const Statement& statement);
  std::string OnError(const Statement& statement);
  std::string OnLet(const Statement& statement);
  std::string OnOther(const Statement& statement);

  bool IsLabel(const Statement& statement);
  std::string Variables(const Statement& statement, size_t from, bool isStatic);
  std::string Declare(Declared declared, bool isStatic, int line);
  std::string KeepStatic(const Declared& declared, int line);
  std::string ReDimText(const Declared& declared, int line);
  std::string CheckedBounds(Declared* declared, int line);
  std::string Constants(const Statement& statement, size_t from);
  std::string Enumerator(const Statement& statement);
  std::string CaseTest(const Tokens& test, const std::string& selector, int line);
  std::string PrintList(const Tokens& tokens, size_t from, int line);
  const VbType* AssignedType(const Statement& statement, size_t equals) const;
  std::string Expression(const Tokens& tokens, int line);
  void Refuse(int line, std::string_view reason) { mistakes_.Add(line, std::string(reason)); }

  Mistakes& mistakes_;
  std::vector<Statement> statements_;
  Survey survey_;
  BlockCheck blocks_;
  VbOutput output_;
  Names names_;
  std::optional<CurrentProcedure> procedure_;
  std::vector<std::string> selectors_;  // of the open Selects; empty where Case is left as it is
  std::string skipTo_;                  // the word behind End that ends a refused block
  std::string lastEnumerator_;
  bool inEnum_ = false;
  size_t index_ = 0;  // of the statement under way
};

}  // namespace qrn::form
