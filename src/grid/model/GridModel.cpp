#include "grid/model/GridModel.h"

#include <algorithm>
#include <limits>

#include "grid/model/GridMemory.h"
#include "platform/CodePage.h"

namespace qrn {

std::string CutForEditing(std::string_view text) {
  return std::string(text.substr(0, CutAtCharacter(text, kEditTextSize - 1)));
}

GridModel::GridModel(GridHost& host, const GridCapacity& capacity)
    : host_(host), capacity_(capacity) {}

void GridModel::Create() {
  if (created != 0) return;
  created = 1;
  if (!colWidths_.Make(capacity_.maxCols)) ReportGridMemoryFailure();
  if (!rowHeights_.Make(capacity_.maxRows)) ReportGridMemoryFailure();
  if (host_.IsRunTime()) MakeCells();
  GoToFirstCell();
}

void GridModel::MakeCells() {
  const int64_t rows = std::max(capacity_.maxRows, 0);
  const int64_t cols = std::max(capacity_.maxCols, 0);
  if (!cells_.Make(rows * cols)) ReportGridMemoryFailure();
  if (!columnFormats_.Make(cols)) ReportGridMemoryFailure();
}

void GridModel::GoToFirstCell() noexcept {
  Row = TopRow = FixedRows;
  Col = LeftCol = FixedCols;
  fixedRowsHeight = static_cast<int32_t>(int64_t{FixedRows} * defaultRowHeight);
  fixedColsWidth = static_cast<int32_t>(int64_t{FixedCols} * kStartColWidthPx);
}

bool GridModel::GetText(std::string& text) const {
  const bool onCell = Col >= 0 && Col < Cols && Row >= 0 && Row < Rows;
  if (!onCell || !host_.IsRunTime()) return false;
  const char* cell = CellText(Row, Col);
  text = cell != nullptr ? cell : "";
  return true;
}

void GridModel::PutText(std::string_view text) {
  if (IsRunning()) WriteText(text);
}

void GridModel::WriteText(std::string_view text) {
  if (SetCurrentText(text) == 1) return host_.RepaintCurrentCell();
  host_.Repaint();
}

void GridModel::Clear() noexcept {
  ClearCells();
  host_.Repaint();
}

void GridModel::KeepEditText() {
  const char* text = CellText(Row, Col);
  if (text == nullptr) return;
  savedEditText = CutForEditing(text);
}

GridResult GridModel::GetPhysicalPosition(int32_t index, int32_t& position) const noexcept {
  if (index < 0 || static_cast<size_t>(index) >= positions.Size()) return GridResult::InvalidIndex;
  position = positions.Get(static_cast<size_t>(index));
  return GridResult::Done;
}

}  // namespace qrn
