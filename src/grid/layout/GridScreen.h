// What the rules of keys, mouse and bars ask of the window that shows a grid. The control
// implements it; tests play it.
//
// Calls marked EVENT run handlers of the application, which may write properties, fill the grid
// anew, close its form and with it the window. All calls are allowed behind that: without a window
// they do nothing.
#pragma once

#include "grid/layout/GridFrame.h"

namespace qrn {

enum class GridDirection { Horizontal, Vertical };

class GridScreen {
 public:
  virtual ~GridScreen() = default;

  virtual GridSize UsableSize() const = 0;  // within the frame and beside the bars

  virtual void Repaint() = 0;
  // Draws the focus rectangle of the current cell, or takes it away where it is drawn.
  virtual void ToggleFocus() = 0;
  // Paints the cells between two corners, both included, as selected.
  virtual void PaintSelected(int32_t row, int32_t col, int32_t otherRow, int32_t otherCol) = 0;
  // Inverts a line across the cells at a place: of Horizontal a column's border.
  virtual void InvertLine(GridDirection direction, int32_t place, int32_t length) = 0;
  virtual void ShowResizeCursor(GridDirection direction) = 0;
  virtual void ShowPointer() = 0;

  virtual void PlaceEdit() = 0;  // on the current cell, or hides it where that is not in view
  virtual void HideEdit() = 0;

  virtual void LayOutBars() = 0;                              // and sets their ranges
  virtual void ShowBarPosition(GridDirection direction) = 0;  // vScrollPos, hScrollPos

  // EVENT, all of these.
  virtual void CommitCell() = 0;
  virtual void CommitRow(int32_t row) = 0;
  virtual void DeleteCurrentRow() = 0;
  virtual void RaiseChange() = 0;
  virtual void RaiseSelChange() = 0;
};

}  // namespace qrn
