#include "host/designer/model/Gesture.h"

#include <algorithm>
#include <cstdlib>

namespace qrn::designer {
namespace {

constexpr int32_t kUsualWidth = 1215;
constexpr int32_t kUsualHeight = 495;

ControlId HolderOf(const Design& design, ControlId id) {
  while (id != design.form() && !design.HoldsOthers(id)) id = design.Container(id);
  return id;
}

Place UsualSize(const Design& design, const Tool& tool) {
  const ClassInfo* info = design.classes().Find(tool.library, tool.className);
  return {0, 0, info ? info->width : kUsualWidth, info ? info->height : kUsualHeight};
}

bool KeepsSize(const Design& design, const Tool& tool) {
  const ClassInfo* info = design.classes().Find(tool.library, tool.className);
  return info && !info->hasSize;
}

bool IsTaken(const Design& design, ControlId container, Point corner) {
  const std::vector<ControlId> inside = design.Inside(container);
  return std::any_of(inside.begin(), inside.end(), [&](ControlId id) {
    const Place place = PlaceOf(design, id);
    return Point{place.left, place.top} == corner;
  });
}

}  // namespace

ControlId ContainerAt(const Design& design, Point onForm) {
  return HolderOf(design, ControlAt(design, onForm));
}

NewControl InTheMiddle(const Design& design, const Tool& tool, const Grid& grid) {
  const ControlId primary = design.Primary();
  NewControl control{tool.library, tool.className,
                     HolderOf(design, primary == 0 ? design.form() : primary),
                     UsualSize(design, tool)};
  const Place room = PlaceOf(design, control.container);
  Point corner = grid.Snapped({std::max(0, (room.width - control.place.width) / 2),
                               std::max(0, (room.height - control.place.height) / 2)});
  while (IsTaken(design, control.container, corner)) {
    corner = {corner.x + grid.width, corner.y + grid.height};
  }
  control.place.left = corner.x;
  control.place.top = corner.y;
  return control;
}

void Gesture::Press(Point point, Held held, int32_t reach) {
  start_ = now_ = point;
  held_ = held;
  reach_ = reach;
  const ControlId primary = design_.Primary();
  if (primary != 0 && primary != design_.form()) {
    const auto handle = HandleAt(PlaceOnForm(design_, primary), point, reach);
    if (handle && CanPull(design_, primary, *handle)) return PressHandle(*handle, point);
  }
  const ControlId hit = ControlAt(design_, point);
  const bool extends = held.shift || held.control;
  container_ = HolderOf(design_, hit);
  if (hit == design_.form() || extends) {
    kind_ = Kind::Band;
    toggled_ = hit;
    return;
  }
  Click(design_, hit, false);
  kind_ = Kind::Drag;
  drag_ = Drag::Move(design_, point, grid_);
}

void Gesture::PressWith(Tool tool, Point point) {
  kind_ = Kind::Draw;
  tool_ = std::move(tool);
  start_ = now_ = point;
  container_ = ContainerAt(design_, point);
}

void Gesture::PressHandle(Handle handle, Point point) {
  kind_ = Kind::Drag;
  reach_ = 0;
  start_ = now_ = point;
  drag_ = Drag::Size(design_, handle, point, grid_);
}

void Gesture::To(Point now, Held held) {
  now_ = now;
  held_ = held;
  moved_ = moved_ || std::abs(now.x - start_.x) > reach_ || std::abs(now.y - start_.y) > reach_;
  if (drag_ && moved_) drag_->To(now, held.control);
}

// The grid counts from the container's corner.
Place Gesture::Drawn() const {
  const Point origin = OriginOnForm(design_, container_);
  const auto snapped = [&](Point point) {
    point = {point.x - origin.x, point.y - origin.y};
    if (!held_.control) point = grid_.Snapped(point);
    return Point{point.x + origin.x, point.y + origin.y};
  };
  return Between(snapped(start_), snapped(now_));
}

std::vector<Place> Gesture::Outlines() const {
  if (!moved_) return {};
  if (kind_ == Kind::Band) return {Between(start_, now_)};
  if (kind_ == Kind::Draw) return {Drawn()};
  std::vector<Place> places;
  if (drag_) {
    for (const auto& [id, place] : drag_->Preview()) places.push_back(place);
  }
  return places;
}

Refusal Gesture::Draw(ControlId* added) {
  Place place = Drawn();
  const Point origin = OriginOnForm(design_, container_);
  const Place usual = UsualSize(design_, tool_);
  // A click, or a stroke, gives no size.
  const bool hasSize = moved_ && place.width > 0 && place.height > 0;
  if (!hasSize || KeepsSize(design_, tool_)) place.width = usual.width, place.height = usual.height;
  place.left -= origin.x;
  place.top -= origin.y;
  return AddControl(design_, {tool_.library, tool_.className, container_, place}, added);
}

Refusal Gesture::Release(ControlId* added) {
  if (kind_ == Kind::Draw) return Draw(added);
  if (kind_ == Kind::Drag) return moved_ ? drag_->Drop(design_) : Refusal{};
  if (kind_ != Kind::Band) return {};
  const bool extends = held_.shift || held_.control;
  if (moved_) {
    SelectTouching(design_, container_, Between(start_, now_), extends);
  } else {
    Click(design_, toggled_, extends);
  }
  return {};
}

}  // namespace qrn::designer
