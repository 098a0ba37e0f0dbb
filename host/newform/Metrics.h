// Sizes of what stands on a form, in pixels, shared by those who measure and those who draw.
#pragma once

#include <string_view>

#include "host/newform/CardPlan.h"

namespace qrn::newform {

inline constexpr int kMargin = 12;
inline constexpr int kGap = 8;
inline constexpr int kButtonHeight = 27;
inline constexpr int kButtonWidth = 84;
inline constexpr int kFindPitch = kButtonHeight + 3;
inline constexpr int kLabelDrop = 4;  // from a box's top to its caption's
inline constexpr int kLabelHeight = 17;
inline constexpr int kFrameTop = 22;
inline constexpr int kFrameSide = 12;
inline constexpr int kFrameBottom = 10;
inline constexpr int kStatusHeight = 22;
inline constexpr int kDatabaseSize = 32;
inline constexpr int kGridHeight = 150;
inline constexpr int kCharacter = 7;  // the mean of half-width characters; digits are wider
inline constexpr int kDigit = 8;
inline constexpr int kBoxMargin = 14;
inline constexpr int kNarrowestBox = 44;
inline constexpr int kPictureWidth = 160;
inline constexpr int kPictureHeight = 120;
inline constexpr int kArrow = 20;  // of a combo

// Of a caption in UTF-8.
int TextWidth(std::string_view utf8);

}  // namespace qrn::newform
