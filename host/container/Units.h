// Sizes: forms count in twips (fixed 15 a pixel), windows in pixels, extents in HIMETRIC.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cmath>

#include "host/form/Twips.h"

namespace qrn::host {

using form::kTwipsPerPixel;
inline constexpr int kPixelsPerInch = 96;
inline constexpr int kHimetricPerInch = 2540;

// Far outside any screen, and still to be added and doubled.
inline constexpr double kMostPixels = 1e6;

inline int ToPixels(double twips) noexcept {
  const double pixels = std::clamp(twips / kTwipsPerPixel, -kMostPixels, kMostPixels);
  return static_cast<int>(std::lround(pixels));
}
inline double ToTwips(int pixels) noexcept { return double{kTwipsPerPixel} * pixels; }
inline LONG ToHimetric(int pixels) noexcept {
  return MulDiv(pixels, kHimetricPerInch, kPixelsPerInch);
}

// Where something stands on its container, in twips.
struct Bounds {
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;

  // Edges are rounded each by itself, so that what touches in twips touches in pixels.
  RECT Pixels() const noexcept {
    return {ToPixels(left), ToPixels(top), ToPixels(left) + ToPixels(width),
            ToPixels(top) + ToPixels(height)};
  }
};

}  // namespace qrn::host
