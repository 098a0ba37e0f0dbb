// The byte text of the engine, code page 932 (Shift_JIS as Windows has it), and its way to UTF-16
// and UTF-8. On Windows the conversions take the thread's code page, which is 932 on a Japanese
// system; the native half is always 932.
//
// Nothing fails: bytes that are no character become U+30FB, characters that the code page does not
// have become '?'. Embedded NULs pass through.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace qrn {

// True for the first byte of a two-byte character.
bool IsLeadByte(uint8_t byte) noexcept;

// The longest length up to `limit` bytes at which `text` can be cut without halving a character.
size_t CutAtCharacter(std::string_view text, size_t limit) noexcept;

// Copies as much of `text` as fits with its NUL, cut at a character; returns the length copied.
// An empty `out` takes nothing.
size_t CopyText(std::span<char> out, std::string_view text) noexcept;

// Equal but for the case of the letters A to Z; second bytes of two-byte characters are no letters.
bool EqualIgnoringCase(std::string_view left, std::string_view right) noexcept;

std::u16string CodePageToUtf16(std::string_view bytes);
std::string Utf16ToCodePage(std::u16string_view wide);
std::string Utf8ToCodePage(std::string_view utf8);
std::string CodePageToUtf8(std::string_view bytes);

// The same into the caller's memory, without a NUL: returns the number of UTF-16 units stored. A
// byte never gives more than one unit, so `wide` must be as long as `bytes`; a shorter one takes
// nothing. Allocates nothing.
size_t WidenText(std::string_view bytes, std::span<char16_t> wide) noexcept;

// CopyText of a UTF-8 text; returns the bytes copied. Allocates nothing.
size_t CopyUtf8(std::span<char> out, std::string_view utf8) noexcept;

}  // namespace qrn
