#include "platform/Utf.h"

#include <cstddef>
#include <cstdint>

namespace qrn {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

struct Lead {
  uint8_t mask, value, following;
  char32_t smallest;
};
constexpr Lead kLeads[] = {
    {0x80, 0x00, 0, 0}, {0xE0, 0xC0, 1, 0x80}, {0xF0, 0xE0, 2, 0x800}, {0xF8, 0xF0, 3, 0x10000}};

bool IsSurrogate(char32_t point) { return point >= 0xD800 && point < 0xE000; }

// Takes one character off the front; one byte when it is malformed.
char32_t NextPoint(std::string_view& rest) {
  const auto first = static_cast<uint8_t>(rest[0]);
  for (const Lead& lead : kLeads) {
    if ((first & lead.mask) != lead.value || rest.size() <= lead.following) continue;
    char32_t point = first & static_cast<uint8_t>(~lead.mask);
    size_t at = 1;
    for (; at <= lead.following; ++at) {
      const auto next = static_cast<uint8_t>(rest[at]);
      if ((next & 0xC0) != 0x80) break;
      point = (point << 6) | (next & 0x3F);
    }
    if (at <= lead.following || point < lead.smallest || point > 0x10FFFF || IsSurrogate(point)) {
      break;
    }
    rest.remove_prefix(at);
    return point;
  }
  rest.remove_prefix(1);
  return kReplacement;
}

void AppendUtf8(std::string& utf8, char32_t point) {
  if (point < 0x80) {
    utf8.push_back(static_cast<char>(point));
    return;
  }
  const int following = point < 0x800 ? 1 : point < 0x10000 ? 2 : 3;
  utf8.push_back(static_cast<char>(kLeads[following].value | (point >> (6 * following))));
  for (int shift = 6 * (following - 1); shift >= 0; shift -= 6) {
    utf8.push_back(static_cast<char>(0x80 | ((point >> shift) & 0x3F)));
  }
}

bool IsPair(std::u16string_view wide, size_t at) {
  return (wide[at] & 0xFC00) == 0xD800 && at + 1 < wide.size() && (wide[at + 1] & 0xFC00) == 0xDC00;
}

}  // namespace

Utf16Character TakeUtf8(std::string_view& rest) noexcept {
  const char32_t point = NextPoint(rest);
  if (point < 0x10000) return {{static_cast<char16_t>(point)}, 1};
  const char32_t offset = point - 0x10000;
  return {{static_cast<char16_t>(0xD800 + (offset >> 10)),
           static_cast<char16_t>(0xDC00 + (offset & 0x3FF))},
          2};
}

std::u16string Utf8ToUtf16(std::string_view utf8) {
  std::u16string wide;
  wide.reserve(utf8.size());
  while (!utf8.empty()) {
    const Utf16Character character = TakeUtf8(utf8);
    wide.append(character.units, character.size);
  }
  return wide;
}

std::string Utf16ToUtf8(std::u16string_view wide) {
  std::string utf8;
  utf8.reserve(wide.size());
  for (size_t at = 0; at < wide.size(); ++at) {
    char32_t point = wide[at];
    if (IsPair(wide, at)) {
      point = 0x10000 + ((point & 0x3FF) << 10) + (wide[++at] & 0x3FF);
    } else if (IsSurrogate(point)) {
      point = kReplacement;
    }
    AppendUtf8(utf8, point);
  }
  return utf8;
}

}  // namespace qrn
