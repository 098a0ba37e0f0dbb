// What columns have of their own beside their width.
#include "grid/model/GridMemory.h"
#include "grid/model/GridModel.h"

namespace qrn {
namespace {

// An array reaches as far as its highest index. Further on it counts as without memory.
constexpr int32_t kFurthestColumn = 0xFFFFF;

int16_t ElementOf(const ShortArray& array, int32_t index) noexcept {
  return index < 0 ? int16_t{0} : array.Get(static_cast<size_t>(index));
}

void SetElement(ShortArray& array, int32_t index, int16_t value) noexcept {
  if (index < 0) return;
  const bool set = index <= kFurthestColumn && array.Set(static_cast<size_t>(index), value);
  if (!set) ReportGridMemoryFailure();
}

}  // namespace

GridResult GridModel::GetFormatString(int32_t col, std::string& format) const {
  if (!IsRunning()) return GridResult::NotAvailable;
  const char* text = columnFormats_.Get(col);
  format = text != nullptr ? text : "";
  return GridResult::Done;
}

void GridModel::PutFormatString(int32_t col, std::string_view format) noexcept {
  if (!IsRunning()) return;
  if (!columnFormats_.Set(col, format.substr(0, format.find('\0')))) ReportGridMemoryFailure();
}

GridResult GridModel::GetCellMaxLength(int32_t col, int16_t& length) const noexcept {
  if (col < FixedCols || col > Cols) return GridResult::InvalidIndex;
  length = ElementOf(CellMaxLength, col);
  return GridResult::Done;
}

GridResult GridModel::PutCellMaxLength(int32_t col, int16_t length) noexcept {
  if (col < FixedCols || col > Cols) return GridResult::InvalidIndex;
  SetElement(CellMaxLength, col, length);
  return GridResult::Done;
}

int16_t GridModel::GetTextAlign(int32_t col) const noexcept { return ElementOf(TextAlign, col); }
void GridModel::PutTextAlign(int32_t col, int16_t align) noexcept {
  SetElement(TextAlign, col, align);
}

int32_t GridModel::GetIMEMode(int32_t col) const noexcept { return ElementOf(IMEMode, col); }
void GridModel::PutIMEMode(int32_t col, int32_t mode) noexcept {
  SetElement(IMEMode, col, static_cast<int16_t>(mode));
}

}  // namespace qrn
