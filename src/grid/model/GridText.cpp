// How texts get into cells.
#include <algorithm>

#include "grid/model/GridMemory.h"
#include "grid/model/GridModel.h"

namespace qrn {
namespace {

// Takes the text up to the next tab off the front of a line. False at the line's end: a tab there
// has no text behind it.
bool TakeField(std::string_view& line, std::string_view& field) noexcept {
  if (line.empty()) return false;
  const size_t tab = std::min(line.find('\t'), line.size());
  field = line.substr(0, tab);
  line.remove_prefix(std::min(tab + 1, line.size()));
  return true;
}

std::string_view UpToNul(std::string_view text) noexcept { return text.substr(0, text.find('\0')); }

bool HasTab(std::string_view text) noexcept { return text.find('\t') != std::string_view::npos; }

// Both included, and no more than a count can hold: the product of two such fits 64 bits.
int64_t LinesBetween(int32_t first, int32_t last) noexcept {
  return std::clamp<int64_t>(int64_t{last} - first + 1, 0, INT32_MAX);
}

constexpr uint16_t kLastSpreadEntry = 0xFFFF;

}  // namespace

// The cell is found behind the format call, which runs the container's code.
bool GridModel::SetDressed(int64_t row, int64_t col, std::string_view text) {
  const char* format = columnFormats_.Get(col);
  if (format == nullptr || text.empty()) return SetCellText(row, col, text);
  return SetCellText(row, col, Dressed(text, col));
}

std::string GridModel::Dressed(std::string_view text, int64_t col) const {
  const char* format = columnFormats_.Get(col);
  if (format == nullptr || text.empty()) return std::string(text);
  const std::string dressed =
      host_.FormatCell(text, std::string(format)).value_or(std::string(text));
  return std::string(UpToNul(dressed));
}

int32_t GridModel::SetRowText(int64_t row, int64_t col, std::string_view text, bool& memory) {
  if (row < 0 || col < 0) return 0;
  if (!HasTab(text)) {
    if (!SetDressed(row, col, text)) memory = false;
    return 1;
  }
  int32_t written = 0;
  for (std::string_view field; TakeField(text, field); ++written) {
    if (!SetDressed(row, col, field)) memory = false;
    if (++col < Cols) continue;
    col = FixedCols;
    ++row;
  }
  return written;
}

int32_t GridModel::SetCurrentText(std::string_view text) {
  text = UpToNul(text);
  if (FillStyle == kFillSelection) return FillSelectionWith(text);
  if (Row < 0 || Col < 0) return 0;
  const std::string dressed = Dressed(text, Col);
  if (HasTab(dressed)) return SpreadFromCurrent(dressed);
  if (!SetCellText(Row, Col, dressed)) ReportGridMemoryFailure();
  return 1;
}

// A selection may name more rows and columns than can be: what lies outside the store is only
// counted.
int32_t GridModel::FillSelectionWith(std::string_view text) {
  const bool selected =
      SelStartRow >= FixedRows && SelStartCol >= FixedCols && SelStartRow <= SelEndRow;
  if (!selected) return 0;
  const int64_t lastRow = std::min(SelEndRow, maxRows());
  const int64_t lastCol = std::min(SelEndCol, std::max(Cols, maxCols()));
  bool memory = true;
  for (int64_t row = std::max(SelStartRow, 0); row <= lastRow; ++row) {
    for (int64_t col = std::max(SelStartCol, 0); col <= lastCol; ++col) {
      memory &= SetCellText(row, col, text);
    }
  }
  if (!memory) ReportGridMemoryFailure();
  const int64_t cells = LinesBetween(SelStartRow, SelEndRow) * LinesBetween(SelStartCol, SelEndCol);
  return static_cast<int32_t>(std::min<int64_t>(cells, INT32_MAX));
}

int32_t GridModel::SpreadFromCurrent(std::string_view text) {
  int64_t row = Row;
  int64_t col = Col;
  int32_t written = 0;
  bool memory = true;
  for (std::string_view field; TakeField(text, field);) {
    if (field.empty()) continue;
    const auto entry = static_cast<uint16_t>(EntryOf(row, col));
    if (entry == kLastSpreadEntry) break;
    memory &= cells_.Set(entry, field);
    ++written;
    if (++col < Cols) continue;
    col = FixedCols;
    ++row;
  }
  if (!memory) ReportGridMemoryFailure();
  return written;
}

}  // namespace qrn
