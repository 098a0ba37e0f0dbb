// A grid's cells as they lie on the screen at one moment. Copied numbers: made anew wherever a
// handler may have changed them.
#pragma once

#include "grid/layout/GridFrame.h"

namespace qrn {

struct GridView {
  GridAxis columns;
  GridAxis rows;
  GridSize usable;

  GridView(const GridModel& model, GridSize usableSize) noexcept
      : columns(ColumnsOf(model)), rows(RowsOf(model)), usable(usableSize) {}

  // Whether a cell is seen whole, or at least its left top.
  bool IsInView(int32_t row, int32_t col) const noexcept {
    return rows.IsInView(row, usable.height) && columns.IsInView(col, usable.width);
  }
  bool StartsInView(int32_t row, int32_t col) const noexcept {
    return rows.StartsInView(row, usable.height) && columns.StartsInView(col, usable.width);
  }
  // Whether a point lies before the end of the last row and column.
  bool HasPoint(int32_t x, int32_t y) const noexcept {
    return x < columns.End(x) && y < rows.End(y);
  }
};

}  // namespace qrn
