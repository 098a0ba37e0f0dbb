// The mouse on the form: handles, rubber band, moving and sizing. A drag changes nothing before it
// is dropped; until then it tells where things would lie.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "host/designer/model/Arrange.h"

namespace qrn::designer {

// Clockwise from the top left corner.
enum class Handle { TopLeft, Top, TopRight, Right, BottomRight, Bottom, BottomLeft, Left };
inline constexpr int kHandleCount = 8;

// The middle of a handle of something that lies there.
Point HandleMiddle(const Place& place, Handle handle) noexcept;
// The handle within `reach` twips of a point. A corner wins over a side.
std::optional<Handle> HandleAt(const Place& place, Point point, int32_t reach) noexcept;
// Handles that can be pulled: the form's are those at its right and bottom; none of what keeps its
// size.
bool CanPull(const Design& design, ControlId id, Handle handle);

// A click on a control, 0 for none. With Shift or Ctrl it joins the selection or leaves it; without
// it becomes the selection, or the primary one if it is selected among others.
void Click(Design& design, ControlId id, bool extends);
// All controls that a rubber band touches, told in the form's client area; with Shift or Ctrl they
// are added.
void SelectTouching(Design& design, ControlId container, const Place& band, bool extends);
// Every control of the primary's container.
void SelectAll(Design& design);
// As Tab and Shift+Tab go: by the order of TabIndex, the form between the last and the first.
void SelectNext(Design& design, bool backwards);

class Drag {
 public:
  // Moves the selection. Points are on the form's client area.
  static Drag Move(const Design& design, Point start, const Grid& grid);
  // Sizes the primary control, or the form.
  static Drag Size(const Design& design, Handle handle, Point start, const Grid& grid);

  // The mouse is there now. `free`: the grid is not looked at.
  void To(Point now, bool free = false);

  // Controls with the places that they would take on the form.
  const std::vector<std::pair<ControlId, Place>>& Preview() const noexcept { return preview_; }
  bool HasMoved() const noexcept;

  // One step; none if nothing has moved. `into` is the container that moved controls go to, 0: they
  // stay in theirs.
  Refusal Drop(Design& design, ControlId into = 0) const;

 private:
  Drag(const Design& design, const Ids& ids, Point start, const Grid& grid);
  Place Pulled(Place place, Point by, bool free) const;

  std::vector<std::pair<ControlId, Place>> before_;
  std::vector<std::pair<ControlId, Place>> preview_;
  std::optional<Handle> handle_;
  Point start_;
  Point origin_;  // of the container that the grid counts from
  Grid grid_;
  bool isForm_ = false;
};

}  // namespace qrn::designer
