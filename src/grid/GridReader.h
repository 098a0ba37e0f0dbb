// What a screen reader is told of a grid's table, rows and cells, as the grid is at that moment.
#pragma once

#include <oleacc.h>

#include <string>

#include "com/Bstr.h"
#include "grid/GridPaint.h"
#include "grid/GridPlaces.h"

namespace qrn {

// What is read of a grid.
class GridReading {
 public:
  virtual ~GridReading() = default;
  virtual HWND ReadWindow() const = 0;
  virtual const GridModel& ReadModel() const = 0;
  virtual GridLook ReadLook() = 0;
  virtual std::wstring ReadName() const = 0;
  virtual bool HasKeyboard() const = 0;
  // EVENT. Makes a cell the current one.
  virtual void ChooseCell(int32_t row, int32_t col) = 0;
};

// Reads one moment: not to be kept across an event. Places have to be there.
class GridReader {
 public:
  explicit GridReader(GridReading& grid);
  GridReader(const GridReader&) = delete;
  GridReader& operator=(const GridReader&) = delete;

  LONG RoleOf(GridPlace place) const noexcept;
  LONG StateOf(GridPlace place) const noexcept;
  // A cell is called as its column is, a row as its header is.
  com::Bstr NameOf(GridPlace place) const;
  com::Bstr TextOf(GridPlace cell) const;
  // Pixels from the corner of the control.
  RECT RectOf(GridPlace place) const noexcept;
  // The cell at a point of the control, else the row, else the table.
  GridPlace At(int32_t x, int32_t y) const noexcept;
  GridPlace Current() const noexcept { return {model_.Row, model_.Col}; }

 private:
  bool IsShown(GridPlace place) const noexcept;
  bool IsSelected(GridPlace place) const noexcept;
  LONG FocusedIf(bool isPlace) const noexcept;

  const GridModel& model_;
  const GridLook look_;
  const GridFrame frame_;
  const GridAxis columns_;
  const GridAxis rows_;
  const GridReading& grid_;
};

}  // namespace qrn
