#include "grid/layout/GridAxis.h"

#include <algorithm>

namespace qrn {
namespace {

// Far behind every screen, and far from where sums of places would overflow.
constexpr int64_t kFarthest = 1 << 28;

int32_t Bounded(int64_t place) noexcept {
  return static_cast<int32_t>(std::clamp(place, -kFarthest, kFarthest));
}

}  // namespace

int32_t GridAxis::LastPlusOne() const noexcept { return std::max(count, 0); }
int32_t GridAxis::FixedPlusOne() const noexcept { return std::clamp(fixed, 0, LastPlusOne()); }
int32_t GridAxis::FirstShown() const noexcept { return std::clamp(first, 0, LastPlusOne()); }

int32_t GridAxis::SumOf(int32_t from, int32_t to, int32_t base, int32_t limit) const noexcept {
  int64_t sum = base;
  for (int32_t i = from; i < to && sum <= limit; ++i) sum += SizeOf(i);
  return Bounded(sum);
}

TrackSpan GridAxis::Place(int32_t index, int32_t limit) const noexcept {
  const int32_t upTo = std::min(index, LastPlusOne());
  const int32_t start =
      IsFixed(index) ? SumOf(0, upTo, 0, limit) : SumOf(FirstShown(), upTo, fixedExtent, limit);
  return {start, Bounded(int64_t{start} + SizeOf(index))};
}

int32_t GridAxis::End(int32_t limit) const noexcept {
  return SumOf(FirstShown(), LastPlusOne(), fixedExtent, limit);
}

std::vector<PlacedTrack> GridAxis::Shown(int32_t from, int32_t to, int32_t start,
                                         int32_t limit) const {
  std::vector<PlacedTrack> shown;
  int64_t place = start;
  for (int32_t i = from; i < to && place < limit; ++i) {
    const int32_t size = SizeOf(i);
    if (size > 0) shown.push_back({i, {Bounded(place), Bounded(place + size)}});
    place += size;
  }
  return shown;
}

std::vector<PlacedTrack> GridAxis::ShownFixed(int32_t limit) const {
  return Shown(0, FixedPlusOne(), 0, limit);
}
std::vector<PlacedTrack> GridAxis::ShownScrolling(int32_t limit) const {
  return Shown(FirstShown(), LastPlusOne(), fixedExtent, limit);
}

int32_t GridAxis::IndexAt(int32_t place, int32_t from, int32_t to, int32_t start) const noexcept {
  int64_t end = start;
  if (place < start) return kNoTrack;
  for (int32_t i = from; i < to; ++i) {
    end += SizeOf(i);
    if (place < end) return i;
  }
  return kNoTrack;
}

int32_t GridAxis::ScrollingAt(int32_t place) const noexcept {
  return IndexAt(place, FirstShown(), LastPlusOne(), fixedExtent);
}
int32_t GridAxis::FixedAt(int32_t place) const noexcept {
  return IndexAt(place, 0, FixedPlusOne(), 0);
}

int32_t GridAxis::BorderAt(int32_t place) const noexcept {
  constexpr int64_t kTolerance = 1;
  const auto find = [&](int32_t from, int32_t to, int64_t end) {
    for (int32_t i = from; i < to && end <= place + kTolerance; ++i) {
      end += SizeOf(i);
      if (end >= place - kTolerance && end <= place + kTolerance) return i;
    }
    return kNoTrack;
  };
  const int32_t inFixed = find(0, FixedPlusOne(), 0);
  return inFixed != kNoTrack ? inFixed : find(FirstShown(), LastPlusOne(), fixedExtent);
}

bool GridAxis::IsInView(int32_t index, int32_t limit) const noexcept {
  return index >= first && Place(index, limit).end < limit;
}
bool GridAxis::StartsInView(int32_t index, int32_t limit) const noexcept {
  return index >= first && Place(index, limit).start < limit;
}

int32_t GridAxis::MeasureFixed() const noexcept { return SumOf(0, FixedPlusOne(), 0); }
int32_t GridAxis::MeasureAll() const noexcept { return SumOf(0, LastPlusOne(), 0); }

GridAxis ColumnsOf(const GridModel& model) noexcept {
  return {&model.colWidths(), model.Cols, model.FixedCols, model.LeftCol, model.fixedColsWidth};
}
GridAxis RowsOf(const GridModel& model) noexcept {
  return {&model.rowHeights(), model.Rows, model.FixedRows, model.TopRow, model.fixedRowsHeight};
}

}  // namespace qrn
