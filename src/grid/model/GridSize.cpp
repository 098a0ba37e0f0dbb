// How many columns and rows, and how large.
#include <algorithm>

#include "grid/model/GridModel.h"

namespace qrn {
namespace {

int32_t CutToLong(int64_t value) noexcept {
  return static_cast<int32_t>(std::clamp<int64_t>(value, INT32_MIN, INT32_MAX));
}

}  // namespace

GridResult GridModel::PutCols(int32_t cols) noexcept {
  if (cols > maxCols() || cols == FixedCols) return GridResult::InvalidValue;
  Cols = cols;
  return GridResult::Done;
}

GridResult GridModel::PutRows(int32_t rows) noexcept {
  if (rows > maxRows() || rows == FixedRows) return GridResult::InvalidValue;
  Rows = rows;
  return GridResult::Done;
}

// At run time the next move of the mouse finds the new extent.
GridResult GridModel::PutFixedCols(int32_t cols) noexcept {
  if (cols > maxCols() || cols >= Cols) return GridResult::InvalidValue;
  FixedCols = cols;
  if (host_.IsInPlace() && !host_.IsRunTime()) {
    fixedColsWidth = CutToLong(colWidths_.Sum(0, cols));
    Col = LeftCol = cols;
  }
  return GridResult::Done;
}

GridResult GridModel::PutFixedRows(int32_t rows) noexcept {
  if (rows > maxRows() || rows >= Rows) return GridResult::InvalidValue;
  FixedRows = rows;
  if (host_.IsInPlace() && !host_.IsRunTime()) {
    fixedRowsHeight = CutToLong(rowHeights_.Sum(0, rows));
    Row = TopRow = rows;
  }
  return GridResult::Done;
}

// No second byte of a two-byte character is a comma.
void GridModel::MakeRoomForFields(std::string_view fields) noexcept {
  if (fields.empty()) return;
  const int64_t count = 1 + std::ranges::count(fields, ',');
  if (int64_t{Cols} - FixedCols < count) PutCols(CutToLong(FixedCols + count));
}

GridResult GridModel::GetColWidth(int32_t col, int32_t& twips) const noexcept {
  if (col < 0 || col > Cols) return GridResult::InvalidIndex;
  twips = CutToLong(int64_t{ColWidthPx(col)} * kTwipsPerPixel);
  return GridResult::Done;
}

GridResult GridModel::PutColWidth(int32_t col, int32_t twips) noexcept {
  if (col < 0 || col > Cols) return GridResult::InvalidIndex;
  SetColWidthPx(col, twips / kTwipsPerPixel);
  return GridResult::Done;
}

GridResult GridModel::GetRowHeight(int32_t row, int32_t& twips) const noexcept {
  if (row > Rows) return GridResult::InvalidIndex;
  twips = CutToLong(int64_t{RowHeightPx(row)} * kTwipsPerPixel);
  return GridResult::Done;
}

GridResult GridModel::PutRowHeight(int32_t row, int32_t twips) noexcept {
  if (row > Rows) return GridResult::InvalidIndex;
  SetRowHeightPx(row, twips / kTwipsPerPixel);
  return GridResult::Done;
}

}  // namespace qrn
