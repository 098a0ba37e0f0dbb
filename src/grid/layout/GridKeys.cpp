#include "grid/layout/GridKeys.h"

#include <algorithm>
#include <iterator>

namespace qrn {

const GridKeys::GridKeyRow GridKeys::kGridKeys[] = {
    {kKeyReturn, &GridKeys::Right}, {kKeyRight, &GridKeys::Right}, {kKeyLeft, &GridKeys::Left},
    {kKeyUp, &GridKeys::Up},        {kKeyDown, &GridKeys::Down},   {kKeyDelete, &GridKeys::Delete},
};

bool GridKeys::OnGridKey(uint32_t key) {
  ComeIntoView();
  const auto* row = std::ranges::find(kGridKeys, key, &GridKeyRow::key);
  return row != std::end(kGridKeys) && (this->*row->run)();
}

bool GridKeys::OnEditKey(uint32_t key, const EditCaret& caret) {
  const bool atStart = caret.start == 0 && caret.end == 0;
  const bool atEnd = caret.start == caret.length && caret.end == caret.length;
  if (key == kKeyLeft && atStart && model_.Col > model_.FixedCols) {
    screen_.CommitCell();
    GoLeft();
    return true;
  }
  if (key == kKeyRight && atEnd && model_.Col < model_.Cols - 1) {
    screen_.CommitCell();
    GoRight();
    return true;
  }
  if (key == kKeyUp) return Up();
  if (key == kKeyDown) return Down();
  if (key != kKeyDelete || model_.AllowDelete == 0 || model_.rowSelected == 0) return false;
  DeleteAndShow();
  return true;
}

// A cell that was scrolled away does not go on from where it is: the first one that shows does.
void GridKeys::ComeIntoView() {
  model_.Row = std::max(model_.Row, model_.FixedRows);
  model_.Col = std::max(model_.Col, model_.FixedCols);
  if (View().StartsInView(model_.Row, model_.Col)) return;
  model_.Row = std::max(model_.FixedRows, std::min(model_.TopRow, model_.Rows - 1));
  model_.Col = std::max(model_.FixedCols, std::min(model_.LeftCol, model_.Cols - 1));
  screen_.ToggleFocus();
}

bool GridKeys::Right() {
  if (model_.Col >= model_.Cols - 1) return false;
  if (CurrentIsInView()) screen_.CommitCell();
  GoRight();
  return true;
}

// Handlers of the commit may have moved the current cell or taken columns away.
void GridKeys::GoRight() {
  if (model_.Col >= model_.Cols - 1) return screen_.PlaceEdit();
  if (View().IsInView(model_.Row, model_.Col + 1)) {
    MoveTo(model_.Row, model_.Col + 1);
    return screen_.PlaceEdit();
  }
  ++model_.Col;
  ++model_.LeftCol;
  ++model_.hScrollPos;
  screen_.ShowBarPosition(GridDirection::Horizontal);
  screen_.PlaceEdit();
  screen_.Repaint();
}

bool GridKeys::Left() {
  if (model_.AllowUpdate != 0 || model_.Col <= model_.FixedCols) return false;
  GoLeft();
  return true;
}

// A column wider than the window is never seen whole; the view stays behind the fixed ones for all
// that.
void GridKeys::GoLeft() {
  if (model_.Col <= model_.FixedCols) return screen_.PlaceEdit();
  MoveTo(model_.Row, model_.Col - 1);
  const bool scrolls = !CurrentIsInView() && model_.LeftCol > model_.FixedCols;
  if (scrolls) {
    --model_.hScrollPos;
    --model_.LeftCol;
    screen_.ShowBarPosition(GridDirection::Horizontal);
  }
  screen_.PlaceEdit();
  if (scrolls) screen_.Repaint();
}

bool GridKeys::Up() {
  if (model_.Row <= model_.FixedRows) return false;
  LeaveRow(-1);
  return true;
}

bool GridKeys::Down() {
  if (model_.Row >= model_.Rows - 1) return false;
  LeaveRow(+1);
  return true;
}

void GridKeys::LeaveRow(int32_t by) {
  const int32_t left = model_.Row;
  screen_.CommitCell();
  screen_.CommitRow(left);
  const int32_t next = model_.Row + by;
  const bool isThere = next >= model_.FixedRows && next < model_.Rows;
  if (isThere) MoveTo(next, model_.Col);
  const bool scrolled = isThere && !CurrentIsInView() && ScrollRows(by);
  screen_.PlaceEdit();
  if (scrolled) screen_.Repaint();
}

// Kept so: upwards the position, which counts from 1, is held against the number of fixed rows, so
// that with several of them the last rows are not scrolled back to.
bool GridKeys::ScrollRows(int32_t by) {
  const bool mayGo = by > 0
                         ? model_.TopRow < model_.Rows - 1
                         : model_.TopRow > model_.FixedRows && model_.vScrollPos > model_.FixedRows;
  if (!mayGo) return false;
  model_.TopRow += by;
  model_.vScrollPos += by;
  screen_.ShowBarPosition(GridDirection::Vertical);
  return true;
}

bool GridKeys::Delete() {
  if (model_.AllowUpdate != 0 || model_.rowSelected == 0) return false;
  DeleteAndShow();
  return true;
}

void GridKeys::DeleteAndShow() {
  screen_.DeleteCurrentRow();
  screen_.PlaceEdit();
  screen_.Repaint();
}

void GridKeys::MoveTo(int32_t row, int32_t col) {
  screen_.ToggleFocus();
  model_.Row = row;
  model_.Col = col;
  screen_.ToggleFocus();
}

}  // namespace qrn
