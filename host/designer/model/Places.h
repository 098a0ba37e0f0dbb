// Where controls lie and how large they are, in twips (1,440 an inch, 15 a pixel), whatever scale
// the file counts in.
#pragma once

#include <cstdint>
#include <vector>

#include "host/designer/model/Design.h"
#include "host/form/Twips.h"

namespace qrn::designer {

using form::kTwipsPerPixel;
inline constexpr int32_t kLargestSize = 245745;  // 16,383 pixels, the most that a form can have

struct Point {
  int32_t x = 0;
  int32_t y = 0;
  bool operator==(const Point&) const = default;
};

struct Place {
  int32_t left = 0;
  int32_t top = 0;
  int32_t width = 0;
  int32_t height = 0;

  int32_t Right() const noexcept { return left + width; }
  int32_t Bottom() const noexcept { return top + height; }
  bool Holds(Point point) const noexcept;
  bool Touches(const Place& other) const noexcept;
  bool operator==(const Place&) const = default;
};

// The rectangle between two corners, whichever they are.
Place Between(Point one, Point other) noexcept;

// False for what has no place of its own on the form, such as lines, and is not moved.
bool HasPlace(const Design& design, ControlId id);
// False for what keeps its size: controls that show nothing at run time.
bool HasSize(const Design& design, ControlId id);

// In its container. Of the form: its client area at 0, 0.
Place PlaceOf(const Design& design, ControlId id);
// In the form's client area.
Place PlaceOnForm(const Design& design, ControlId id);
Point OriginOnForm(const Design& design, ControlId container);

// Writes what differs, in the container's scale and, for a module's control, its extent too. A size
// below 0 or beyond the largest is cut to it. The form takes its size alone. Within a step.
Refusal PutPlace(Design& design, ControlId id, Place place);
// The same for a new control, whose lines are all written.
Refusal PutFirstPlace(Design& design, ControlId id, Place place);

// What follows from sizes that were written by themselves: a module's control's extent, the form's
// ScaleWidth and ScaleHeight. Within a step.
Refusal PutExtents(Design& design, ControlId id);
Refusal PutScaleSize(Design& design);

// The front-most control at a point of the form's client area, what lies in a container before the
// container; the form where there is none.
ControlId ControlAt(const Design& design, Point onForm);
// Those directly in the container that touch the rectangle, told in the form's client area.
std::vector<ControlId> Touching(const Design& design, ControlId container, const Place& onForm);

}  // namespace qrn::designer
