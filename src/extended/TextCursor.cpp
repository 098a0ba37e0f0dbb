#include "extended/TextCursor.h"

#include <algorithm>
#include <limits>

#include "platform/CodePage.h"

namespace qrn {
namespace {

uint8_t Code(char byte) { return static_cast<uint8_t>(byte); }
bool IsDigit(char byte) { return byte >= '0' && byte <= '9'; }

}  // namespace

template <class Ends>
std::string_view TextCursor::TakeUntil(size_t limit, Ends ends) {
  size_t size = 0;
  while (size < rest_.size()) {
    const bool pair = IsLeadByte(Code(rest_[size])) && size + 1 < rest_.size();
    if (!pair && ends(rest_[size])) break;
    if (size + (pair ? 2 : 1) > limit) break;
    size += pair ? 2 : 1;
  }
  return Take(size);
}

std::string_view TextCursor::Take(size_t size) {
  const std::string_view taken = rest_.substr(0, size);
  rest_.remove_prefix(size);
  return taken;
}

void TextCursor::SkipSpaces() {
  while (Peek() == ' ') rest_.remove_prefix(1);
}

bool TextCursor::Accept(std::string_view word) {
  if (!rest_.starts_with(word)) return false;
  rest_.remove_prefix(word.size());
  return true;
}

std::string_view TextCursor::TakeDigits(size_t limit) {
  size_t size = 0;
  while (size < std::min(limit, rest_.size()) && IsDigit(rest_[size])) ++size;
  return Take(size);
}

std::string_view TextCursor::TakeName(size_t limit) {
  return TakeUntil(limit, [](char byte) { return Code(byte) < 33 || byte == ','; });
}

std::string_view TextCursor::TakeWord(size_t limit) {
  return TakeUntil(limit, [](char byte) { return Code(byte) <= 32; });
}

std::string_view TextCursor::TakeDelimited(size_t limit) {
  const char delimiter = Peek();
  rest_.remove_prefix(1);
  const std::string_view taken =
      TakeUntil(limit, [delimiter](char byte) { return Code(byte) < 32 || byte == delimiter; });
  if (Peek() == delimiter) rest_.remove_prefix(1);
  return taken;
}

int32_t NumberOf(std::string_view digits) {
  constexpr int32_t kLargest = std::numeric_limits<int32_t>::max();
  int32_t number = 0;
  for (const char digit : digits) {
    const int32_t value = digit - '0';
    if (number > (kLargest - value) / 10) return kLargest;
    number = number * 10 + value;
  }
  return number;
}

}  // namespace qrn
