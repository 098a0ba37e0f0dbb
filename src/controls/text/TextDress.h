// How an edit control dresses its text for show: by the host's format service and by alignment,
// each on its occasion. Texts are code page 932.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace qrn {

enum FormatOptionCode : int32_t {
  FormatNone = 0,
  FormatEveryChar = 1,
  FormatRightAlign = 2,
  FormatEveryRight = 3,
};

// Bytes of a window's text that are dressed, and of a dressed text, without the NUL.
inline constexpr size_t kDressedTextSize = 1023;

struct TextDress {
  int32_t option = FormatNone;  // `FormatOption`
  size_t width = 0;             // right alignment ends at this byte; 0: none

  // The host's service with the control's `Format`: nothing when it gives none, which leaves the
  // text as it is. Null when `Format` is empty.
  std::function<std::optional<std::string>(const std::string&)> format;

  bool EveryChar() const noexcept {
    return option == FormatEveryChar || option == FormatEveryRight;
  }
  bool RightAligned() const noexcept {
    return option == FormatRightAlign || option == FormatEveryRight;
  }

  // A field's text that arrives from the record. An empty one stays empty.
  std::string OfField(const std::string& text) const;

  // A text that the application puts; an empty one is aligned like any other.
  std::string OfProperty(const std::string& text) const;

  // The whole text after a character was typed behind `shown`; a backspace takes the last byte,
  // and what it leaves of a two-byte character.
  // Nothing when the service gives no text: the character then goes its usual way. The result is
  // aligned whichever the option is, and forms rely on it.
  std::optional<std::string> OfTyping(const std::string& shown, char16_t character) const;
};

// Blanks in front of a text shorter than `width` bytes; of a longer one its last bytes.
std::string AlignRight(std::string text, size_t width);

}  // namespace qrn
