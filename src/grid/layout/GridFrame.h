// What surrounds the cells of a grid: its frame and its scroll bars. Pixels from the corner of the
// control's window.
#pragma once

#include <cstdint>
#include <optional>

#include "grid/layout/GridAxis.h"

namespace qrn {

struct GridSize {
  int32_t width;
  int32_t height;
  bool IsEmpty() const noexcept { return width <= 0 || height <= 0; }
  bool operator==(const GridSize&) const = default;
};
// `right` and `bottom` are the first pixels outside.
struct GridRect {
  int32_t left;
  int32_t top;
  int32_t right;
  int32_t bottom;
  bool IsEmpty() const noexcept { return left >= right || top >= bottom; }
  bool operator==(const GridRect&) const = default;
};
struct GridBars {
  bool horizontal = false;
  bool vertical = false;
  bool operator==(const GridBars&) const = default;
};

inline constexpr int32_t kBarThickness = 18;  // the grid's own, whatever the system's

struct GridFrame {
  int32_t depth = 0;  // pixels of the frame on each side
  GridSize inner{};   // within the frame
  GridSize usable{};  // within the frame and beside the bars
};

int32_t FrameDepth(int32_t appearance, int32_t borderStyle) noexcept;
GridFrame FrameOf(GridSize window, int32_t depth, GridBars bars) noexcept;

// The bars that `ScrollBars` (_enumGridSc) gives a window of that size for cells of those extents.
// Kept so: with both allowed, a grid that is wider than the window and almost as high gets the
// horizontal bar alone, though that bar then covers its last pixels.
GridBars ChooseBars(int32_t scrollBars, GridSize window, GridSize cells) noexcept;

// Where a bar lies beside or above the other one, if that is there too.
GridRect PlaceHorizontalBar(GridSize window, int32_t depth, GridBars bars) noexcept;
GridRect PlaceVerticalBar(GridSize window, int32_t depth, GridBars bars) noexcept;

// The last position of the vertical bar, the first being 1: the rows from there to the last one
// fit. Nothing where all rows fit. Room for the other bar is always kept.
std::optional<int32_t> LastVerticalPosition(const GridAxis& rows, int32_t innerHeight) noexcept;

// The rectangle of a cell's text, and of the cell's own filling, moved by the frame.
GridRect TextRect(TrackSpan column, TrackSpan row, int32_t depth) noexcept;

}  // namespace qrn
