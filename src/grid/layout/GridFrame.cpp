#include "grid/layout/GridFrame.h"

namespace qrn {
namespace {

GridBars ChooseBoth(GridSize window, GridSize cells) noexcept {
  const bool wider = cells.width > window.width;
  const bool higher = cells.height > window.height;
  const bool eachForTheOther =
      cells.width > window.width - kBarThickness && cells.height > window.height - kBarThickness;
  if ((wider && higher) || eachForTheOther) return {true, true};
  return {wider, !wider && higher};
}

}  // namespace

int32_t FrameDepth(int32_t appearance, int32_t borderStyle) noexcept {
  if (appearance != 0) return 2;
  return borderStyle != 0 ? 1 : 0;
}

GridFrame FrameOf(GridSize window, int32_t depth, GridBars bars) noexcept {
  const GridSize inner{window.width - 2 * depth, window.height - 2 * depth};
  return {depth, inner,
          GridSize{inner.width - (bars.vertical ? kBarThickness : 0),
                   inner.height - (bars.horizontal ? kBarThickness : 0)}};
}

GridBars ChooseBars(int32_t scrollBars, GridSize window, GridSize cells) noexcept {
  switch (scrollBars) {
    case kHorizontalBar:
      return {cells.width > window.width, false};
    case kVerticalBar:
      return {false, cells.height > window.height};
    case kBothBars:
      return ChooseBoth(window, cells);
    default:
      return {};
  }
}

GridRect PlaceHorizontalBar(GridSize window, int32_t depth, GridBars bars) noexcept {
  const int32_t beside = bars.vertical ? kBarThickness : 0;
  const int32_t bottom = window.height - depth;
  return {depth, bottom - kBarThickness, window.width - depth - beside, bottom};
}

GridRect PlaceVerticalBar(GridSize window, int32_t depth, GridBars bars) noexcept {
  const int32_t below = bars.horizontal ? kBarThickness : 0;
  const int32_t right = window.width - depth;
  return {right - kBarThickness, depth, right, window.height - depth - below};
}

std::optional<int32_t> LastVerticalPosition(const GridAxis& rows, int32_t innerHeight) noexcept {
  const int64_t height = int64_t{innerHeight} - kBarThickness - rows.fixedExtent;
  int64_t sum = 0;
  for (int32_t row = rows.fixed < 0 ? 0 : rows.fixed; row < rows.count; ++row) {
    sum += rows.SizeOf(row);
    if (sum > height) return rows.count - row + 1;
  }
  return std::nullopt;
}

GridRect TextRect(TrackSpan column, TrackSpan row, int32_t depth) noexcept {
  return {column.start + 1 + depth, row.start + 1 + depth, column.end + depth, row.end + depth};
}

}  // namespace qrn
