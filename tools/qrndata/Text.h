// UTF-8 outside, code page 932 inside: conversions that notice what does not fit.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

namespace qrndata {

// What the texts of a file are in.
enum class Encoding { Utf8, CodePage932 };

// What happens to a character that the other side does not have.
enum class OnUnmappable {
  Error,    // the text is refused
  Replace,  // '?' on the way in, U+FFFD on the way out
  Skip,     // the character is left out
};

struct Converted {
  std::string text;
  // The first character that the other side does not have, as UTF-8 or "byte 0x81", and its place
  // in characters from 0. Set under every choice, so that replacements can be counted.
  std::string unmappable;
  size_t unmappableAt = 0;
  // The one at unmappableAt is a byte that belongs to no character; goes before others.
  bool isBroken = false;

  bool IsExact() const noexcept { return unmappable.empty(); }
};

// UTF-8 to code page 932. Seven characters that other systems write for one of the code page's own
// (U+301C for U+FF5E, U+2212 for U+FF0D, ...) are taken for it. Broken UTF-8 counts as unmappable.
Converted ToCodePage(std::string_view utf8, OnUnmappable choice);

// Code page 932 to UTF-8. A NUL and a lead byte without its second one are unmappable.
Converted FromCodePage(std::string_view bytes, OnUnmappable choice);

// Code page 932 as it stands, but for bytes that are no character of it: '?' on Replace. A NUL is
// one of them only `withoutNul`.
Converted SoundCodePage(std::string_view bytes, OnUnmappable choice, bool withoutNul);

// Whether `second` makes a two-byte character together with a lead byte before it.
bool IsTrailByte(uint8_t second) noexcept;

// For messages: never fails, odd bytes show as U+FFFD.
std::string Show(std::string_view codePageBytes);

// A UTF-8 text in quotes as JSON writes it.
std::string JsonString(std::string_view text);

// Bytes of the UTF-8 character that `text` begins with; 0 when it is broken or `text` is empty.
size_t CharacterLength(std::string_view text) noexcept;

// Characters of a UTF-8 text; each broken byte counts as one.
size_t CountCharacters(std::string_view utf8) noexcept;

// Without the UTF-8 byte order mark.
std::string_view WithoutByteOrderMark(std::string_view text) noexcept;

// Numbers as printf puts them, up to 63 bytes.
template <class... Numbers>
std::string Printed(const char* format, Numbers... numbers) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), format, numbers...);
  return text.data();
}

// Equal but for the case of the letters A to Z.
bool SameName(std::string_view left, std::string_view right) noexcept;

// The letters A to Z made small.
std::string Lowered(std::string_view text);

}  // namespace qrndata
