// Plain text: bytes from 1 to 0x7F, which code page 932 and UTF-16 have in common. Most texts of a
// record are plain and short; they need neither tables nor a buffer in between.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

namespace qrn {

static_assert(std::endian::native == std::endian::little);

struct TextScan {
  size_t length;
  bool plain;
};

// The text at the start of `area`, up to its NUL or the area's end. Goes by bytes: the text has
// mostly been written a moment ago, and a word that takes in several young writes waits for them.
inline TextScan ScanText(std::span<const char> area) noexcept {
  size_t length = 0;
  uint8_t seen = 0;
  for (; length < area.size() && area[length] != '\0'; ++length) {
    seen |= static_cast<uint8_t>(area[length]);
  }
  return {length, seen < 0x80};
}

namespace detail {

// Four bytes as four UTF-16 units.
inline void WidenFour(const char* bytes, char16_t* wide) noexcept {
  uint32_t four;
  std::memcpy(&four, bytes, sizeof four);
  uint64_t spread = (four | uint64_t{four} << 16) & 0x0000FFFF0000FFFF;
  spread = (spread | spread << 8) & 0x00FF00FF00FF00FF;
  std::memcpy(wide, &spread, sizeof spread);
}

}  // namespace detail

// Plain `text` as UTF-16; `wide` has room for as many units as `text` has bytes.
inline void WidenPlain(std::string_view text, char16_t* wide) noexcept {
  const size_t size = text.size();
  if (size < 4) {
    for (size_t i = 0; i < size; ++i) wide[i] = static_cast<uint8_t>(text[i]);
    return;
  }
  // The last four come again where the size is no multiple.
  for (size_t at = 0; at + 4 < size; at += 4) detail::WidenFour(text.data() + at, wide + at);
  detail::WidenFour(text.data() + size - 4, wide + size - 4);
}

}  // namespace qrn
