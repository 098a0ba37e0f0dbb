// Sizes as containers give them: HIMETRIC, hundredths of a millimetre, against pixels of the
// screen.
#pragma once

#include <windows.h>

namespace qrn::com {

// Rounded to the nearest; 2540 HIMETRIC are one logical inch of the screen.
SIZE PixelsToHimetric(SIZE pixels) noexcept;
SIZE HimetricToPixels(SIZE himetric) noexcept;

inline SIZE SizeOf(const RECT& rect) noexcept {
  return {rect.right - rect.left, rect.bottom - rect.top};
}

}  // namespace qrn::com
