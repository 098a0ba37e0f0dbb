// The words of Visual Basic code. A logical line is one statement line with its continuation lines
// (" _" at the end) joined; comments are gone.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/form/Mistakes.h"

namespace qrn::form {

enum class TokenKind {
  Word,    // a name or keyword, without its type character
  Number,  // without its type character; &H and &O as written
  Text,    // with its quotes
  Date,    // with its #
  Sign,    // an operator or punctuation, one or two characters
};

struct Token {
  TokenKind kind = TokenKind::Sign;
  std::string text;
  // % & ! # @ $ behind a name or number: the type written into it. 0 without.
  char typeMark = 0;
  bool spaceBefore = false;

  bool Is(std::string_view word) const noexcept;  // a word, whatever its case, or a sign
};

using Tokens = std::vector<Token>;

struct LogicalLine {
  int line = 0;       // the file's line number of its first line
  int lineCount = 1;  // physical lines, at least 1
  Tokens tokens;
};

// Reads code lines; the first has the number `firstLine`. A character that no code has, a text
// without its closing quote or a date without its # is a mistake, and the line is read on after it.
std::vector<LogicalLine> ReadCodeLines(const std::vector<std::string>& lines, int firstLine,
                                       Mistakes& mistakes);

// The tokens as code again, spaced as they were.
std::string Spelled(const Tokens& tokens);
std::string Spelled(Tokens::const_iterator begin, Tokens::const_iterator end);

}  // namespace qrn::form
