// The left mouse button on a grid: it moves the current cell, selects cells, and drags the borders
// of columns and rows. Points are pixels from the corner of the control, as the mouse tells them:
// the frame's pixels are not taken off.
//
// The mouse is not captured: a border that is let go outside stays in hand until the button comes
// up inside, and a selection ends with the next move without the button.
#pragma once

#include "grid/layout/GridScreen.h"
#include "grid/layout/GridView.h"

namespace qrn {

class GridMouse {
 public:
  GridMouse(GridModel& model, GridScreen& screen) noexcept : model_(model), screen_(screen) {}

  void Press(int32_t x, int32_t y);
  void Move(bool buttonHeld, int32_t x, int32_t y);
  void Release();

  bool IsSelecting() const noexcept { return selecting_; }

 private:
  // A border in hand: where it is drawn (kNowhere: none is held) and how far it may go back.
  struct Drag {
    static constexpr int32_t kNowhere = -1;
    int32_t place = kNowhere;
    int32_t least = 0;
    int32_t index = 0;
    int32_t lineLength = 0;
    bool IsOn() const noexcept { return place != kNowhere; }
  };
  struct Cell {
    int32_t row;
    int32_t col;
  };

  void SelectAll();
  void SelectColumn(int32_t col);
  void SelectRow(int32_t row);
  void PressCell(Cell cell);
  void GoTo(Cell cell);

  void Select(int32_t x, int32_t y);
  void EndSelecting();
  // Take hold of the border under the point, if there is one that may be dragged.
  bool Grip(bool buttonHeld, int32_t x, int32_t y);
  void StartDrag(GridDirection direction, int32_t index, int32_t place);
  void MoveDrag(GridDirection direction, int32_t place);
  void EndDrag(GridDirection direction);

  int32_t ColumnBorderAt(int32_t x, int32_t y) const noexcept;
  int32_t RowBorderAt(int32_t x, int32_t y) const noexcept;
  bool MayDrag(GridDirection direction) const noexcept;
  Drag& DragOf(GridDirection direction) noexcept {
    return direction == GridDirection::Horizontal ? columnDrag_ : rowDrag_;
  }
  GridView View() const noexcept { return {model_, screen_.UsableSize()}; }

  GridModel& model_;
  GridScreen& screen_;
  Drag columnDrag_;
  Drag rowDrag_;
  bool selecting_ = false;
  Cell anchor_{-1, -1};
  Cell dragEnd_{0, 0};  // -1: the selection reached no other cell
};

}  // namespace qrn
