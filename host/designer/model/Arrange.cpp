#include "host/designer/model/Arrange.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

#include "host/designer/model/Controls.h"

namespace qrn::designer {
namespace {

using Change = std::function<void(Place& place)>;

Point StepOf(const Grid& grid) noexcept {
  return grid.snaps ? Point{grid.width, grid.height} : Point{kTwipsPerPixel, kTwipsPerPixel};
}

int32_t Nearest(int32_t value, int32_t step) noexcept {
  if (step <= 1) return value;
  return static_cast<int32_t>(std::lround(static_cast<double>(value) / step)) * step;
}

// Those that have a place, without what lies in another of them: it goes along.
Ids Placed(const Design& design, const Ids& ids) {
  Ids placed = Outermost(design, ids);
  std::erase_if(placed, [&](ControlId id) { return !HasPlace(design, id); });
  return placed;
}

// Changes places as they are on the form; the origin of each container is taken off again.
Refusal ChangePlaces(Design& design, const Ids& ids, const Change& change) {
  for (const ControlId id : ids) {
    Place place = PlaceOnForm(design, id);
    change(place);
    const Point origin = OriginOnForm(design, design.Container(id));
    place.left -= origin.x;
    place.top -= origin.y;
    if (Refusal refusal = PutPlace(design, id, place)) return refusal;
  }
  return {};
}

struct EdgeRow {
  void (*change)(Place& place, const Place& leader);
};

constexpr EdgeRow kEdges[] = {
    {[](Place& p, const Place& l) { p.left = l.left; }},
    {[](Place& p, const Place& l) { p.left = l.left + (l.width - p.width) / 2; }},
    {[](Place& p, const Place& l) { p.left = l.Right() - p.width; }},
    {[](Place& p, const Place& l) { p.top = l.top; }},
    {[](Place& p, const Place& l) { p.top = l.top + (l.height - p.height) / 2; }},
    {[](Place& p, const Place& l) { p.top = l.Bottom() - p.height; }},
};

struct Axis {
  int32_t Place::*start;
  int32_t Place::*size;
};
constexpr Axis kAxes[] = {{&Place::left, &Place::width}, {&Place::top, &Place::height}};

const Axis& AxisOf(Direction direction) { return kAxes[static_cast<size_t>(direction)]; }

struct Span {
  ControlId id;
  Place place;
};

std::vector<Span> Sorted(const Design& design, const Ids& ids, const Axis& axis) {
  std::vector<Span> spans;
  for (const ControlId id : ids) spans.push_back({id, PlaceOnForm(design, id)});
  std::stable_sort(spans.begin(), spans.end(), [&](const Span& a, const Span& b) {
    return a.place.*axis.start < b.place.*axis.start;
  });
  return spans;
}

std::string KeyOf(const char* what, const Ids& ids) {
  std::string key = what;
  for (const ControlId id : ids) key += ":" + std::to_string(id);
  return key;
}

}  // namespace

Point Grid::Snapped(Point point) const noexcept {
  return snaps ? Point{Nearest(point.x, width), Nearest(point.y, height)} : point;
}

Refusal Align(Design& design, const Ids& ids, Edge edge) {
  if (ids.empty()) return {};
  Step step(design, TextId::AlignControls);
  const Place leader = PlaceOnForm(design, ids.back());
  const EdgeRow& row = kEdges[static_cast<size_t>(edge)];
  return step.Commit(
      ChangePlaces(design, Placed(design, ids), [&](Place& place) { row.change(place, leader); }));
}

Refusal AlignToGrid(Design& design, const Ids& ids, const Grid& grid) {
  Step step(design, TextId::AlignControls);
  for (const ControlId id : Placed(design, ids)) {
    Place place = PlaceOf(design, id);
    place.left = Nearest(place.left, grid.width);
    place.top = Nearest(place.top, grid.height);
    if (Refusal refusal = PutPlace(design, id, place)) return refusal;
  }
  return step.Commit(Refusal{});
}

Refusal MakeSameSize(Design& design, const Ids& ids, Alike alike) {
  if (ids.empty()) return {};
  Step step(design, TextId::SizeAlike);
  const Place leader = PlaceOnForm(design, ids.back());
  // A container and what lies in it may both be sized.
  for (const ControlId id : ids) {
    if (id == design.form() || !HasPlace(design, id)) continue;
    Place place = PlaceOf(design, id);
    if (alike != Alike::Height) place.width = leader.width;
    if (alike != Alike::Width) place.height = leader.height;
    if (Refusal refusal = PutPlace(design, id, place)) return refusal;
  }
  return step.Commit(Refusal{});
}

Refusal SpaceEvenly(Design& design, const Ids& ids, Direction direction) {
  const Axis& axis = AxisOf(direction);
  const std::vector<Span> spans = Sorted(design, Placed(design, ids), axis);
  if (spans.size() < 3) return {};
  Step step(design, TextId::SpaceEvenly);
  const int32_t first = spans.front().place.*axis.start;
  const int32_t room = spans.back().place.*axis.start - first;
  const int32_t taken =
      std::accumulate(spans.begin(), spans.end() - 1, 0,
                      [&](int32_t sum, const Span& span) { return sum + span.place.*axis.size; });
  const double space = static_cast<double>(room - taken) / static_cast<double>(spans.size() - 1);
  double start = first;
  for (const Span& span : spans) {
    const auto rounded = static_cast<int32_t>(std::lround(start));
    const bool isLast = &span == &spans.back();
    Refusal refusal = ChangePlaces(design, {span.id}, [&](Place& place) {
      if (!isLast) place.*axis.start = rounded;
    });
    if (refusal) return refusal;
    start += span.place.*axis.size + space;
  }
  return step.Commit(Refusal{});
}

Refusal CentreInContainer(Design& design, const Ids& ids, Direction direction) {
  const Axis& axis = AxisOf(direction);
  const Ids placed = Placed(design, ids);
  if (placed.empty()) return {};
  const std::vector<Span> spans = Sorted(design, placed, axis);
  int32_t end = -kLargestSize;
  for (const Span& span : spans) {
    end = std::max(end, span.place.*axis.start + span.place.*axis.size);
  }
  const int32_t start = spans.front().place.*axis.start;
  const Place room = PlaceOnForm(design, design.Container(placed.back()));
  const int32_t shift = room.*axis.start + (room.*axis.size - (end - start)) / 2 - start;
  Step step(design, TextId::AlignControls);
  return step.Commit(
      ChangePlaces(design, placed, [&](Place& place) { place.*axis.start += shift; }));
}

Refusal Nudge(Design& design, const Ids& ids, int across, int down, const Grid& grid) {
  const Point by = StepOf(grid);
  Step step(design, TextId::MoveControls, {}, KeyOf("nudge", ids));
  return step.Commit(ChangePlaces(design, Placed(design, ids), [&](Place& place) {
    place.left += across * by.x;
    place.top += down * by.y;
  }));
}

Refusal Stretch(Design& design, const Ids& ids, int across, int down, const Grid& grid) {
  const Point by = StepOf(grid);
  const bool isForm = ids.size() == 1 && ids[0] == design.form();
  Step step(design, isForm ? TextId::SizeForm : TextId::SizeControls, {}, KeyOf("stretch", ids));
  for (const ControlId id : ids) {
    if (!isForm && !HasPlace(design, id)) continue;
    Place place = PlaceOf(design, id);
    place.width = std::max(kTwipsPerPixel, place.width + across * by.x);
    place.height = std::max(kTwipsPerPixel, place.height + down * by.y);
    if (Refusal refusal = PutPlace(design, id, place)) return refusal;
  }
  return step.Commit(Refusal{});
}

}  // namespace qrn::designer
