#include "grid/GridPlaces.h"

#include <oleacc.h>

#include <span>

namespace qrn {
namespace {

struct Step {
  LONG direction;
  int32_t rows;
  int32_t cols;
};
constexpr Step kOfCells[] = {{NAVDIR_UP, -1, 0},   {NAVDIR_DOWN, 1, 0}, {NAVDIR_LEFT, 0, -1},
                             {NAVDIR_RIGHT, 0, 1}, {NAVDIR_NEXT, 0, 1}, {NAVDIR_PREVIOUS, 0, -1}};
constexpr Step kOfRows[] = {
    {NAVDIR_UP, -1, 0}, {NAVDIR_DOWN, 1, 0}, {NAVDIR_NEXT, 1, 0}, {NAVDIR_PREVIOUS, -1, 0}};

std::optional<GridPlace> ChildOfTable(const GridModel& model, int32_t number) noexcept {
  const int32_t rows = RowsIn(model);
  if (number <= rows) return GridPlace{number - 1};
  const int64_t cell = int64_t{number} - rows - 1;
  if (ColsIn(model) == 0 || cell >= int64_t{rows} * ColsIn(model)) return std::nullopt;
  return GridPlace{static_cast<int32_t>(cell / ColsIn(model)),
                   static_cast<int32_t>(cell % ColsIn(model))};
}

std::optional<GridPlace> EndChild(const GridModel& model, bool last, GridPlace from) noexcept {
  const int32_t count = from.IsTable() ? RowsIn(model) : from.IsRow() ? ColsIn(model) : 0;
  if (count == 0) return std::nullopt;
  const int32_t index = last ? count - 1 : 0;
  return from.IsTable() ? GridPlace{index} : GridPlace{from.row, index};
}

std::optional<GridPlace> Beside(const GridModel& model, GridPlace from, const Step& step) noexcept {
  const GridPlace to{from.row + step.rows,
                     from.IsCell() ? from.col + step.cols : GridPlace::kWhole};
  const bool inFront = to.row < 0 || (from.IsCell() && to.col < 0);
  return !inFront && IsThere(model, to) ? std::optional(to) : std::nullopt;
}

}  // namespace

bool IsThere(const GridModel& model, GridPlace place) noexcept {
  return place.IsTable() || (place.row < RowsIn(model) && place.col < ColsIn(model));
}

int32_t CellNumber(const GridModel& model, GridPlace cell) noexcept {
  const int64_t number = int64_t{RowsIn(model)} + int64_t{cell.row} * ColsIn(model) + cell.col + 1;
  return number <= INT32_MAX ? static_cast<int32_t>(number) : 0;
}

std::optional<GridPlace> ChildOf(const GridModel& model, GridPlace parent,
                                 int32_t number) noexcept {
  if (number == CHILDID_SELF) return parent;
  if (number < 0) return std::nullopt;
  if (parent.IsTable()) return ChildOfTable(model, number);
  if (parent.IsRow() && number <= ColsIn(model)) return GridPlace{parent.row, number - 1};
  return std::nullopt;
}

std::optional<GridPlace> NeighbourOf(const GridModel& model, GridPlace from,
                                     LONG direction) noexcept {
  if (direction == NAVDIR_FIRSTCHILD || direction == NAVDIR_LASTCHILD) {
    return EndChild(model, direction == NAVDIR_LASTCHILD, from);
  }
  if (from.IsTable()) return std::nullopt;
  for (const Step& step : from.IsCell() ? std::span<const Step>(kOfCells) : kOfRows) {
    if (step.direction == direction) return Beside(model, from, step);
  }
  return std::nullopt;
}

}  // namespace qrn
