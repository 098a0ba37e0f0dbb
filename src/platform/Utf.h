// UTF-8 and UTF-16, for the native half of the code page and for texts of the program's own.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qrn {

struct Utf16Character {
  char16_t units[2];
  size_t size;
};

// Takes the first character off a text that is not empty. A byte that begins no whole,
// shortest-form character becomes U+FFFD.
Utf16Character TakeUtf8(std::string_view& rest) noexcept;

// The same for the whole text.
std::u16string Utf8ToUtf16(std::string_view utf8);

// A surrogate without its partner becomes U+FFFD.
std::string Utf16ToUtf8(std::u16string_view wide);

}  // namespace qrn
