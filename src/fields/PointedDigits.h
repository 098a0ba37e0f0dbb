// Digit text with an implied point, as the display number types read.
#pragma once

#include <cstddef>
#include <string_view>

#include "fields/Sinks.h"

namespace qrn {

// Digits in two runs, since the last one is often decoded apart from the others.
struct DigitRun {
  std::string_view body;
  std::string_view last;

  size_t Length() const noexcept { return body.size() + last.size(); }
};

// Puts the digits with "." in front of the last `decimals`; where no digit is left in front of it,
// with "0." instead and no further zeros. Without decimals there is no point.
void PutPointedDigits(TextSink& text, const DigitRun& digits, size_t decimals) noexcept;

}  // namespace qrn
