#include "com/Extent.h"

#include "com/Handles.h"

namespace qrn::com {
namespace {

constexpr int kHimetricPerInch = 2540;

SIZE PixelsPerInch() noexcept {
  const WindowDc screen(nullptr);
  constexpr LONG kUsual = 96;
  if (!screen.get()) return {kUsual, kUsual};
  return {GetDeviceCaps(screen.get(), LOGPIXELSX), GetDeviceCaps(screen.get(), LOGPIXELSY)};
}

}  // namespace

SIZE PixelsToHimetric(SIZE pixels) noexcept {
  const SIZE inch = PixelsPerInch();
  return {MulDiv(pixels.cx, kHimetricPerInch, inch.cx),
          MulDiv(pixels.cy, kHimetricPerInch, inch.cy)};
}

SIZE HimetricToPixels(SIZE himetric) noexcept {
  const SIZE inch = PixelsPerInch();
  return {MulDiv(himetric.cx, inch.cx, kHimetricPerInch),
          MulDiv(himetric.cy, inch.cy, kHimetricPerInch)};
}

}  // namespace qrn::com
