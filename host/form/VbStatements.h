// A module's code as a flat list of statements.
#pragma once

#include <string>
#include <vector>

#include "host/form/Mistakes.h"
#include "host/form/VbTokens.h"

namespace qrn::form {

struct Statement {
  int line = 0;      // of its logical line
  size_t order = 0;  // which logical line
  Tokens tokens;     // never empty; `If ... Then`, `Else` and `ElseIf ... Then` stand alone
  // What stands between it and the next one of the same line: ":" or " ". Empty at the line's end.
  std::string joint;
  // In a line `If ... Then statement`, such an If and what follows it: no End If belongs to them.
  bool inlineIf = false;
  // A word alone at the line's start with a colon behind it: a jump label unless it is a statement.
  bool maybeLabel = false;

  bool Starts(std::string_view word) const noexcept { return tokens[0].Is(word); }
  bool Starts(std::string_view first, std::string_view second) const noexcept;
  bool Has(size_t at, std::string_view word) const noexcept;
};

std::vector<Statement> SplitStatements(const std::vector<LogicalLine>& lines, Mistakes& mistakes);

// The position of a word or sign outside parentheses at or after `from`, or `tokens.size()`.
size_t FindOutside(const Tokens& tokens, std::string_view word, size_t from = 0) noexcept;

// The position behind the parenthesis that closes the one at `open`, or `tokens.size()`.
size_t BehindParenthesis(const Tokens& tokens, size_t open) noexcept;

// The pieces between commas outside parentheses, from `begin` to before `end`; one empty piece if
// there is nothing between.
std::vector<Tokens> SplitAtCommas(const Tokens& tokens, size_t begin, size_t end);

Tokens Slice(const Tokens& tokens, size_t begin, size_t end);

}  // namespace qrn::form
