// The parts of a grid that have a name and a value of their own, as children of the table: its rows
// from 1, the cells of a row from 1; behind its rows the table also knows every cell by a number.
#pragma once

#include <windows.h>

#include <optional>

#include "grid/model/GridModel.h"

namespace qrn {

// The table (both kWhole), one of its rows, or one of their cells.
struct GridPlace {
  static constexpr int32_t kWhole = -1;

  int32_t row = kWhole;
  int32_t col = kWhole;
  bool IsTable() const noexcept { return row == kWhole; }
  bool IsRow() const noexcept { return row != kWhole && col == kWhole; }
  bool IsCell() const noexcept { return col != kWhole; }
  bool operator==(const GridPlace&) const = default;
};

inline int32_t RowsIn(const GridModel& model) noexcept { return std::max(model.Rows, 0); }
inline int32_t ColsIn(const GridModel& model) noexcept { return std::max(model.Cols, 0); }
bool IsThere(const GridModel& model, GridPlace place) noexcept;

// A cell's number among the table's children; 0, which is none, beyond what a number holds.
int32_t CellNumber(const GridModel& model, GridPlace cell) noexcept;
// The child of that number, which need not be there; the parent itself for 0.
std::optional<GridPlace> ChildOf(const GridModel& model, GridPlace parent, int32_t number) noexcept;

// What lies in a direction (NAVDIR_UP to NAVDIR_LASTCHILD) of a place.
std::optional<GridPlace> NeighbourOf(const GridModel& model, GridPlace from,
                                     LONG direction) noexcept;

}  // namespace qrn
