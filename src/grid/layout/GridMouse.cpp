#include "grid/layout/GridMouse.h"

#include <algorithm>
#include <utility>

namespace qrn {

bool GridMouse::MayDrag(GridDirection direction) const noexcept {
  const int32_t alone = direction == GridDirection::Horizontal ? kResizeCol : kResizeRow;
  return model_.AllowUserResizing == alone || model_.AllowUserResizing == kResizeBoth;
}

// Borders are gripped in the fixed rows and columns alone.
int32_t GridMouse::ColumnBorderAt(int32_t x, int32_t y) const noexcept {
  const bool inBand = y <= model_.fixedRowsHeight && MayDrag(GridDirection::Horizontal);
  return inBand ? ColumnsOf(model_).BorderAt(x) : kNoTrack;
}
int32_t GridMouse::RowBorderAt(int32_t x, int32_t y) const noexcept {
  const bool inBand = x <= model_.fixedColsWidth && MayDrag(GridDirection::Vertical);
  return inBand ? RowsOf(model_).BorderAt(y) : kNoTrack;
}

void GridMouse::Press(int32_t x, int32_t y) {
  const GridView view = View();
  if (!view.HasPoint(x, y)) return;
  model_.rowSelected = 0;
  if (x == model_.fixedColsWidth || y == model_.fixedRowsHeight) return;
  const bool inFixedCols = x < model_.fixedColsWidth;
  const bool inFixedRows = y < model_.fixedRowsHeight;
  if (inFixedCols && inFixedRows) return SelectAll();
  const Cell cell{view.rows.ScrollingAt(y), view.columns.ScrollingAt(x)};
  if (inFixedRows) {
    if (ColumnBorderAt(x, y) == kNoTrack) SelectColumn(cell.col);
  } else if (inFixedCols) {
    if (RowBorderAt(x, y) == kNoTrack) SelectRow(cell.row);
  } else {
    PressCell(cell);
  }
}

void GridMouse::GoTo(Cell cell) {
  model_.Row = cell.row;
  model_.Col = cell.col;
  anchor_ = cell;
}

void GridMouse::SelectAll() {
  GoTo({model_.FixedRows, model_.FixedCols});
  model_.SelStartRow = model_.FixedRows;
  model_.SelStartCol = model_.FixedCols;
  model_.SelEndRow = model_.Rows;
  model_.SelEndCol = model_.Cols;
  screen_.RaiseChange();
}

void GridMouse::SelectColumn(int32_t col) {
  GoTo({model_.FixedRows, col});
  model_.SelStartRow = model_.FixedRows;
  model_.SelEndRow = model_.Rows;
  model_.SelStartCol = model_.SelEndCol = col;
  screen_.RaiseChange();
}

void GridMouse::SelectRow(int32_t row) {
  GoTo({row, model_.FixedCols});
  model_.SelStartCol = model_.FixedCols;
  model_.SelEndCol = model_.Cols;
  model_.SelStartRow = model_.SelEndRow = row;
  screen_.RaiseChange();
  model_.rowSelected = 1;
}

// Kept so: the selection is cut to 16 bits, the current cell is not, and programs hear of the new
// cell before the row that was left is written.
void GridMouse::PressCell(Cell cell) {
  screen_.CommitCell();
  if (cell.row >= model_.Rows || cell.col >= model_.Cols) return;
  const int32_t left = model_.Row;
  model_.SelStartRow = model_.SelEndRow = static_cast<int16_t>(cell.row);
  model_.SelStartCol = model_.SelEndCol = static_cast<int16_t>(cell.col);
  model_.Row = cell.row;
  model_.Col = cell.col;
  screen_.RaiseChange();
  selecting_ = true;
  anchor_ = cell;
  dragEnd_ = {-1, -1};
  if (left != cell.row) screen_.CommitRow(left);
  screen_.PlaceEdit();
}

void GridMouse::Move(bool buttonHeld, int32_t x, int32_t y) {
  if (selecting_) {
    buttonHeld ? Select(x, y) : void(selecting_ = false);
  } else if (columnDrag_.IsOn()) {
    if (buttonHeld) return MoveDrag(GridDirection::Horizontal, x);
  } else if (rowDrag_.IsOn()) {
    if (buttonHeld) return MoveDrag(GridDirection::Vertical, y);
  } else if (Grip(buttonHeld, x, y)) {
    return;
  }
  screen_.ShowPointer();
}

// Kept so: what was painted as selected stays so when the selection shrinks, until the next paint.
void GridMouse::Select(int32_t x, int32_t y) {
  const GridView view = View();
  Cell cell{view.rows.ScrollingAt(y), view.columns.ScrollingAt(x)};
  if (cell.row == kNoTrack) cell.row = anchor_.row;
  if (cell.col == kNoTrack) cell.col = anchor_.col;
  if (cell.row == anchor_.row && cell.col == anchor_.col) return;
  screen_.PaintSelected(anchor_.row, anchor_.col, cell.row, cell.col);
  dragEnd_ = cell;
}

bool GridMouse::Grip(bool buttonHeld, int32_t x, int32_t y) {
  model_.fixedRowsHeight = RowsOf(model_).MeasureFixed();
  model_.fixedColsWidth = ColumnsOf(model_).MeasureFixed();
  const int32_t col = ColumnBorderAt(x, y);
  const int32_t row = RowBorderAt(x, y);
  if (col == kNoTrack && row == kNoTrack) return false;
  const auto direction = col != kNoTrack ? GridDirection::Horizontal : GridDirection::Vertical;
  screen_.ShowResizeCursor(direction);
  if (!buttonHeld) return true;
  col != kNoTrack ? StartDrag(direction, col, x) : StartDrag(direction, row, y);
  return true;
}

void GridMouse::StartDrag(GridDirection direction, int32_t index, int32_t place) {
  const GridView view = View();
  const bool across = direction == GridDirection::Horizontal;
  const int32_t size = (across ? view.columns : view.rows).SizeOf(index);
  const int32_t length = across ? std::min(view.rows.End(view.usable.height), view.usable.height)
                                : std::min(view.columns.End(view.usable.width), view.usable.width);
  screen_.HideEdit();
  DragOf(direction) = {place, place - size + 1, index, length};
  screen_.InvertLine(direction, place, length);
}

void GridMouse::MoveDrag(GridDirection direction, int32_t place) {
  if (!MayDrag(direction)) return;
  Drag& drag = DragOf(direction);
  screen_.InvertLine(direction, drag.place, drag.lineLength);
  drag.place = std::max(place, drag.least);
  screen_.InvertLine(direction, drag.place, drag.lineLength);
  screen_.ShowResizeCursor(direction);
  screen_.HideEdit();
}

void GridMouse::Release() {
  if (columnDrag_.IsOn() || rowDrag_.IsOn()) {
    if (rowDrag_.IsOn()) EndDrag(GridDirection::Vertical);
    if (columnDrag_.IsOn()) EndDrag(GridDirection::Horizontal);
    screen_.LayOutBars();
    screen_.Repaint();
    screen_.PlaceEdit();
  } else if (selecting_) {
    EndSelecting();
  }
}

// A track never vanishes: it could not be gripped again.
void GridMouse::EndDrag(GridDirection direction) {
  const Drag drag = std::exchange(DragOf(direction), Drag{});
  const bool across = direction == GridDirection::Horizontal;
  const GridAxis axis = across ? ColumnsOf(model_) : RowsOf(model_);
  const int32_t size = std::max(drag.place - axis.StartOf(drag.index), 1);
  if (across) {
    model_.SetColWidthPx(drag.index, size);
    if (drag.index <= model_.FixedCols) model_.fixedColsWidth = axis.MeasureFixed();
  } else {
    model_.SetRowHeightPx(drag.index, size);
    if (drag.index <= model_.FixedRows) model_.fixedRowsHeight = axis.MeasureFixed();
  }
}

void GridMouse::EndSelecting() {
  selecting_ = false;
  model_.SelEndRow = model_.SelStartRow;
  model_.SelEndCol = model_.SelStartCol;
  if (dragEnd_.row >= 0) {
    model_.SelEndRow = dragEnd_.row;
    model_.SelEndCol = dragEnd_.col;
    if (model_.SelEndRow < model_.SelStartRow) std::swap(model_.SelEndRow, model_.SelStartRow);
    if (model_.SelEndCol < model_.SelStartCol) std::swap(model_.SelEndCol, model_.SelStartCol);
    screen_.ToggleFocus();
  }
  screen_.RaiseSelChange();
}

}  // namespace qrn
