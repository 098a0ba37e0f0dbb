#include "host/designer/model/Drag.h"

#include <algorithm>
#include <cmath>

#include "host/designer/model/Controls.h"
#include "host/designer/model/TabOrder.h"

namespace qrn::designer {
namespace {

// Which sides a handle pulls: -1 the left or top one, 1 the right or bottom one, 0 none.
struct HandleRow {
  int across;
  int down;
};
constexpr HandleRow kHandles[kHandleCount] = {
    {-1, -1}, {0, -1}, {1, -1}, {1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0},
};

const HandleRow& RowOf(Handle handle) { return kHandles[static_cast<size_t>(handle)]; }

bool IsNear(Point one, Point other, int32_t reach) noexcept {
  return std::abs(one.x - other.x) <= reach && std::abs(one.y - other.y) <= reach;
}

// Pulls one side of a span. The other side stays, and a pixel is left between them.
void Pull(int32_t* start, int32_t* size, int side, int32_t to) {
  const int32_t end = *start + *size;
  if (side < 0) {
    *start = std::min(to, end - kTwipsPerPixel);
    *size = end - *start;
  } else if (side > 0) {
    *size = std::max(kTwipsPerPixel, to - *start);
  }
}

}  // namespace

Point HandleMiddle(const Place& place, Handle handle) noexcept {
  const HandleRow& row = RowOf(handle);
  return {place.left + place.width * (row.across + 1) / 2,
          place.top + place.height * (row.down + 1) / 2};
}

std::optional<Handle> HandleAt(const Place& place, Point point, int32_t reach) noexcept {
  for (const int first : {0, 1}) {
    for (int at = first; at < kHandleCount; at += 2) {
      const auto handle = static_cast<Handle>(at);
      if (IsNear(HandleMiddle(place, handle), point, reach)) return handle;
    }
  }
  return std::nullopt;
}

bool CanPull(const Design& design, ControlId id, Handle handle) {
  const HandleRow& row = RowOf(handle);
  if (id == design.form()) return row.across >= 0 && row.down >= 0;
  return HasPlace(design, id) && HasSize(design, id);
}

void Click(Design& design, ControlId id, bool extends) {
  const ControlId form = design.form();
  const bool alone = id == 0 || id == form;
  if (alone) return design.Select(extends ? design.selection() : Ids{form});
  Ids ids = design.selection();
  const bool wasSelected = std::erase(ids, id) > 0;
  std::erase(ids, form);
  if (!extends && !wasSelected) ids.clear();
  if (!extends || !wasSelected) ids.push_back(id);
  design.Select(ids);
}

void SelectTouching(Design& design, ControlId container, const Place& band, bool extends) {
  Ids ids = extends ? design.selection() : Ids{};
  std::erase(ids, design.form());
  const std::vector<ControlId> touched = Touching(design, container, band);
  ids.insert(ids.end(), touched.begin(), touched.end());
  if (ids.empty()) ids = {container};
  design.Select(ids);
}

void SelectAll(Design& design) {
  const ControlId primary = design.Primary();
  const bool isForm = primary == 0 || primary == design.form();
  design.Select(design.Inside(isForm ? design.form() : design.Container(primary)));
}

void SelectNext(Design& design, bool backwards) {
  Ids ring = TabOrderOf(design);
  for (const ControlId id : design.All()) {
    if (std::find(ring.begin(), ring.end(), id) == ring.end()) ring.push_back(id);
  }
  ring.push_back(design.form());
  const auto now = std::find(ring.begin(), ring.end(), design.Primary());
  const size_t at = now == ring.end() ? ring.size() - 1 : static_cast<size_t>(now - ring.begin());
  design.Select({ring[(at + (backwards ? ring.size() - 1 : 1)) % ring.size()]});
}

Drag::Drag(const Design& design, const Ids& ids, Point start, const Grid& grid)
    : start_(start), grid_(grid) {
  for (const ControlId id : ids) before_.emplace_back(id, PlaceOnForm(design, id));
  preview_ = before_;
  if (!before_.empty() && before_.back().first != design.form()) {
    origin_ = OriginOnForm(design, design.Container(before_.back().first));
  }
}

Drag Drag::Move(const Design& design, Point start, const Grid& grid) {
  Ids ids = Outermost(design, design.selection());
  std::erase_if(ids, [&](ControlId id) { return !HasPlace(design, id); });
  // The primary one leads: it keeps to the grid, the others keep their distance from it.
  const auto primary = std::find(ids.begin(), ids.end(), design.Primary());
  if (primary != ids.end()) std::rotate(primary, primary + 1, ids.end());
  return Drag(design, ids, start, grid);
}

Drag Drag::Size(const Design& design, Handle handle, Point start, const Grid& grid) {
  const ControlId id = design.Primary();
  const bool can = id != 0 && CanPull(design, id, handle);
  Drag drag(design, can ? Ids{id} : Ids{}, start, grid);
  drag.handle_ = handle;
  drag.isForm_ = id == design.form();
  return drag;
}

Place Drag::Pulled(Place place, Point by, bool free) const {
  const HandleRow& row = RowOf(*handle_);
  Point to{(row.across < 0 ? place.left : place.Right()) + by.x,
           (row.down < 0 ? place.top : place.Bottom()) + by.y};
  if (!free) {
    to = grid_.Snapped({to.x - origin_.x, to.y - origin_.y});
    to = {to.x + origin_.x, to.y + origin_.y};
  }
  Pull(&place.left, &place.width, row.across, to.x);
  Pull(&place.top, &place.height, row.down, to.y);
  return place;
}

void Drag::To(Point now, bool free) {
  if (before_.empty()) return;
  Point by{now.x - start_.x, now.y - start_.y};
  preview_ = before_;
  if (by == Point{}) return;
  if (handle_) {
    preview_[0].second = Pulled(before_[0].second, by, free);
    return;
  }
  const Place& leader = before_.back().second;
  if (!free) {
    const Point to = grid_.Snapped({leader.left + by.x - origin_.x, leader.top + by.y - origin_.y});
    by = {to.x + origin_.x - leader.left, to.y + origin_.y - leader.top};
  }
  for (auto& [id, place] : preview_) {
    place.left += by.x;
    place.top += by.y;
  }
}

bool Drag::HasMoved() const noexcept { return preview_ != before_; }

Refusal Drag::Drop(Design& design, ControlId into) const {
  if (!HasMoved()) return {};
  const TextId name = !handle_  ? TextId::MoveControls
                      : isForm_ ? TextId::SizeForm
                                : TextId::SizeControls;
  Step step(design, name);
  if (into != 0 && !handle_) {
    Ids ids;
    for (const auto& [id, place] : preview_) ids.push_back(id);
    if (Refusal refusal = MoveInto(design, ids, into)) return refusal;
  }
  for (auto [id, place] : preview_) {
    if (id != design.form()) {
      const Point origin = OriginOnForm(design, design.Container(id));
      place.left -= origin.x;
      place.top -= origin.y;
    }
    if (Refusal refusal = PutPlace(design, id, place)) return refusal;
  }
  return step.Commit(Refusal{});
}

}  // namespace qrn::designer
