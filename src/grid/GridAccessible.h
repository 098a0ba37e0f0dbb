// The grid for screen readers and other programs that read the screen: a table of rows of cells.
//
// A cell is told of by its number among the table's children (grid/GridPlaces.h), which is how the
// one that has the focus is known.
#pragma once

#include <windows.h>

#include <memory>

#include "com/Com.h"
#include "grid/GridReader.h"

namespace qrn {

// The grid's side: makes the objects, tells of the current cell, and cuts the objects off when the
// grid goes.
class GridAccessibility {
 public:
  explicit GridAccessibility(GridReading& grid) : link_(std::make_shared<GridReading*>(&grid)) {}
  GridAccessibility(const GridAccessibility&) = delete;
  GridAccessibility& operator=(const GridAccessibility&) = delete;
  ~GridAccessibility() { *link_ = nullptr; }

  // The objects of the grid's own window and of its edit box.
  com::Com<IAccessible> Table() const;
  com::Com<IAccessible> CellEdit(HWND window) const;
  void TellCurrent() const;

 private:
  std::shared_ptr<GridReading*> link_;
};

}  // namespace qrn
