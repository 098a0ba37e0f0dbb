// What both halves share: cutting and comparing byte text.
#include "platform/CodePage.h"

#include <algorithm>

namespace qrn {
namespace {

char UpperLetter(char letter) {
  return letter >= 'a' && letter <= 'z' ? letter - 'a' + 'A' : letter;
}

bool IsLead(char byte) { return IsLeadByte(static_cast<uint8_t>(byte)); }

}  // namespace

size_t CutAtCharacter(std::string_view text, size_t limit) noexcept {
  if (text.size() <= limit) return text.size();
  size_t at = 0;
  while (at < limit) {
    const size_t width = IsLead(text[at]) ? 2 : 1;
    if (at + width > limit) break;
    at += width;
  }
  return at;
}

size_t CopyText(std::span<char> out, std::string_view text) noexcept {
  if (out.empty()) return 0;
  const size_t length = CutAtCharacter(text, out.size() - 1);
  std::copy_n(text.data(), length, out.data());
  out[length] = '\0';
  return length;
}

bool EqualIgnoringCase(std::string_view left, std::string_view right) noexcept {
  if (left.size() != right.size()) return false;
  for (size_t i = 0; i < left.size(); ++i) {
    if (IsLead(left[i]) && i + 1 < left.size()) {
      if (left[i] != right[i] || left[i + 1] != right[i + 1]) return false;
      ++i;
    } else if (UpperLetter(left[i]) != UpperLetter(right[i])) {
      return false;
    }
  }
  return true;
}

}  // namespace qrn
