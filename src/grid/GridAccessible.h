// The grid for screen readers and other programs that read the screen: a table of rows of cells.
//
// Children of the table count its rows from 1, children of a row its cells. Behind its rows the
// table also knows every cell by a number, which is how it tells of the one that has the focus.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "com/Message.h"
#include "grid/GridPaint.h"

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

// The grid's side: answers who asks for the objects, tells of the current cell, and cuts the
// objects off when the grid goes.
class GridAccessibility {
 public:
  explicit GridAccessibility(GridReading& grid) : link_(std::make_shared<GridReading*>(&grid)) {}
  GridAccessibility(const GridAccessibility&) = delete;
  GridAccessibility& operator=(const GridAccessibility&) = delete;
  ~GridAccessibility() { *link_ = nullptr; }

  // WM_GETOBJECT. False when something else than the grid is asked for.
  bool Answer(com::Message& message);
  void TellCurrent() const;

 private:
  std::shared_ptr<GridReading*> link_;
};

}  // namespace qrn
