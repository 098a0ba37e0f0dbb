// Runs of decimal digits in byte text. Second bytes of two-byte characters are never digits.
#pragma once

#include <cstddef>
#include <string_view>

namespace qrn {

inline bool IsDigit(char character) noexcept { return character >= '0' && character <= '9'; }

// The digits that `text` begins with.
inline std::string_view LeadingDigits(std::string_view text) noexcept {
  size_t count = 0;
  while (count < text.size() && IsDigit(text[count])) ++count;
  return text.substr(0, count);
}

}  // namespace qrn
