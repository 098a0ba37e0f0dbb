// A reader of the texts that developers write: search conditions and field lists. Texts are code
// page 932 bytes; a two-byte character is always taken whole, so that a second byte which happens
// to be `@`, `|` or a backslash never counts as one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace qrn {

class TextCursor {
 public:
  // Null reads like an empty text. The text must outlive the cursor and every view taken from it.
  explicit TextCursor(const char* text) : rest_(text != nullptr ? text : "") {}

  // The next byte, NUL at the end.
  char Peek() const { return rest_.empty() ? '\0' : rest_.front(); }

  // Bytes that are not read yet.
  size_t Left() const { return rest_.size(); }

  // Blanks are U+0020 only: a tab is a character like any other.
  void SkipSpaces();

  // Steps over `word` if the text goes on with it.
  bool Accept(std::string_view word);

  // Digits, at most `limit` of them.
  std::string_view TakeDigits(size_t limit);

  // A field's name: up to a byte below 33 or a comma, at most `limit` bytes.
  std::string_view TakeName(size_t limit);

  // A word: up to a byte of 32 or below, at most `limit` bytes.
  std::string_view TakeWord(size_t limit);

  // What stands between two of the same delimiters, the first of which is next; blanks belong to
  // it. It also ends at a byte below 32 and after `limit` bytes; a closing delimiter is stepped
  // over where there is one.
  std::string_view TakeDelimited(size_t limit);

 private:
  std::string_view Take(size_t size);

  // Two-byte characters never end it.
  template <class Ends>
  std::string_view TakeUntil(size_t limit, Ends ends);

  std::string_view rest_;
};

// The number that `digits` spell; one that does not fit is the largest that does.
int32_t NumberOf(std::string_view digits);

}  // namespace qrn
