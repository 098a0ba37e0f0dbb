#include "controls/text/TextBytes.h"

#include "platform/CodePage.h"

namespace qrn {
namespace {

bool IsHighSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
bool IsLowSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

// Units of the first character.
size_t FirstCharacter(std::u16string_view text) {
  const bool pair = text.size() > 1 && IsHighSurrogate(text[0]) && IsLowSurrogate(text[1]);
  return pair ? 2 : 1;
}

}  // namespace

size_t BytesOf(std::u16string_view text) { return Utf16ToCodePage(text).size(); }

size_t UnitsWithin(std::u16string_view text, size_t bytes) {
  size_t units = 0;
  while (units < text.size()) {
    const size_t next = FirstCharacter(text.substr(units));
    const size_t taken = BytesOf(text.substr(units, next));
    if (taken > bytes) break;
    bytes -= taken;
    units += next;
  }
  return units;
}

}  // namespace qrn
