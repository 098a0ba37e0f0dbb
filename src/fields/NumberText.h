// Numbers as a user types them: cleaning the text, and the plain decimal conversions.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "fields/QuorinSettings.h"

namespace qrn {

// Room for any number text; what is longer is cut. No field holds that many digits.
inline constexpr size_t kNumberTextSize = 4096;

// Keeps digits, "-" and "." of `text` and drops all else, a two-byte character as a whole: "1,234"
// gives "1234", "1-2" stays. Stores it in `out` with a NUL and returns it; the result lives as
// long as `out`.
std::string_view StripToNumber(const QuorinSettings& settings, std::string_view text,
                               std::span<char> out) noexcept;

// A number taken character by character: leading blanks, one sign, digits; it ends at the first
// other character, and what comes later is ignored. Nothing usable gives 0. Values outside 64 bits
// stay at the limit.
class IntegerParser {
 public:
  void Take(char character) noexcept;
  void Take(std::string_view text) noexcept {
    for (const char character : text) Take(character);
  }
  int64_t Value() const noexcept;

 private:
  enum class State { kBlanks, kDigits, kDone };

  void TakeDigit(unsigned digit) noexcept;

  State state_ = State::kBlanks;
  bool negative_ = false;
  uint64_t magnitude_ = 0;
};

// The same on a whole text. ParseInt32 stays at the limits of 32 bits.
int64_t ParseInt64(std::string_view text) noexcept;
int32_t ParseInt32(std::string_view text) noexcept;

// The same on up to `length` characters from `position` on; 0 where the text ends before it.
int32_t ParseInt32At(std::string_view text, size_t position, size_t length) noexcept;

// Digits with an optional "-" and point, as StripToNumber leaves them; ends at the first character
// that does not belong. Nothing usable gives 0, a number beyond the range an infinity.
double ParseDouble(std::string_view text) noexcept;

}  // namespace qrn
