// The grid without a screen: a flat store of texts, the sizes of columns and rows, and the rules of
// the properties that refuse, convert or format what is put.
//
// The control derives from it and binds its members as properties; the screen reads it to draw and
// to move; grid/data fills it from a table and writes it back. Texts are code page 932.
//
// The store keeps row r, column c at entry r * Cols + c with the present `Cols`. Kept so: after a
// change of `Cols` old texts show at other coordinates. Coordinates are 64 bits wide inside, and
// what lies outside the store is empty and takes nothing.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "grid/model/GridCapacity.h"
#include "grid/model/GridHost.h"
#include "grid/model/GridResult.h"
#include "grid/model/GridState.h"
#include "grid/model/PixelSizes.h"
#include "grid/model/TextSlots.h"

namespace qrn {

// As much of a cell's text as the edit box is read for, cut at a character.
std::string CutForEditing(std::string_view text);

class GridModel : public GridState {
 public:
  // The host is only kept, not called: it may be the object under construction.
  explicit GridModel(GridHost& host, const GridCapacity& capacity = GridCapacity::Read());
  GridModel(const GridModel&) = delete;
  GridModel& operator=(const GridModel&) = delete;

  // Makes the storage at the first window: sizes, at run time cells and formats too; puts the
  // current cell and the view at the first scrolling cell. Later calls do nothing. VE001 for each
  // part that finds no memory; the grid goes on without it.
  void Create();

  int32_t maxRows() const noexcept { return capacity_.maxRows; }
  int32_t maxCols() const noexcept { return capacity_.maxCols; }
  bool HasCells() const noexcept { return cells_.count() > 0; }

  // InvalidValue, and nothing changed, for `Cols` above the capacity or equal to `FixedCols`; for
  // `FixedCols` above the capacity or not below `Cols`; rows alike. Kept so: a value below the
  // fixed count is taken. The control repaints.
  GridResult PutCols(int32_t cols) noexcept;
  GridResult PutRows(int32_t rows) noexcept;
  GridResult PutFixedCols(int32_t cols) noexcept;
  GridResult PutFixedRows(int32_t rows) noexcept;
  // What a put of `DbListFields` does besides storing: makes `Cols` hold all of them, where the
  // capacity allows.
  void MakeRoomForFields(std::string_view fields) noexcept;

  int32_t ColWidthPx(int32_t col) const noexcept { return colWidths_.Get(col); }
  int32_t RowHeightPx(int32_t row) const noexcept { return rowHeights_.Get(row); }
  void SetColWidthPx(int32_t col, int32_t px) noexcept { colWidths_.Set(col, px); }
  void SetRowHeightPx(int32_t row, int32_t px) noexcept { rowHeights_.Set(row, px); }
  const PixelSizes& colWidths() const noexcept { return colWidths_; }
  const PixelSizes& rowHeights() const noexcept { return rowHeights_; }

  // Twips, 15 to a pixel, cut toward zero. InvalidIndex outside 0 to `Cols`, and above `Rows`;
  // rows have no lower check: a negative one reads as a fresh row. None repaints.
  GridResult GetColWidth(int32_t col, int32_t& twips) const noexcept;
  GridResult PutColWidth(int32_t col, int32_t twips) noexcept;
  GridResult GetRowHeight(int32_t row, int32_t& twips) const noexcept;
  GridResult PutRowHeight(int32_t row, int32_t twips) noexcept;

  // Only in place at run time: a get is NotAvailable otherwise, a put does nothing. No index is
  // refused: one that no column has reads as empty.
  GridResult GetFormatString(int32_t col, std::string& format) const;
  void PutFormatString(int32_t col, std::string_view format) noexcept;

  // InvalidIndex outside `FixedCols` to `Cols`.
  GridResult GetCellMaxLength(int32_t col, int16_t& length) const noexcept;
  GridResult PutCellMaxLength(int32_t col, int16_t length) noexcept;
  // No index is refused.
  int16_t GetTextAlign(int32_t col) const noexcept;
  void PutTextAlign(int32_t col, int16_t align) noexcept;
  int32_t GetIMEMode(int32_t col) const noexcept;
  void PutIMEMode(int32_t col, int32_t mode) noexcept;

  // The record position of a data row, counted from 0. InvalidIndex where there is none.
  GridResult GetPhysicalPosition(int32_t index, int32_t& position) const noexcept;

  // Null for an empty cell and for one outside the store. Valid until the store is written.
  const char* CellText(int64_t row, int64_t col) const noexcept {
    return cells_.Get(EntryOf(row, col));
  }
  // As it stands, without a format.
  [[nodiscard]] bool SetCellText(int64_t row, int64_t col, std::string_view text) noexcept {
    return cells_.Set(EntryOf(row, col), text);
  }
  void MoveCell(int64_t fromRow, int64_t toRow, int64_t col) noexcept {
    cells_.Move(EntryOf(fromRow, col), EntryOf(toRow, col));
  }
  void FreeCell(int64_t row, int64_t col) noexcept { cells_.Free(EntryOf(row, col)); }
  void ClearCells() noexcept { cells_.Clear(); }

  // Writes a line from a cell on: each text between tabs, empty ones too, dressed by the format of
  // the column it lands in; behind the last column on to column `FixedCols` of the next row. A tab
  // at the end adds none. The number of cells written, 0 for a negative cell. `memory` turns false
  // where a copy found no memory, and is left alone otherwise.
  int32_t SetRowText(int64_t row, int64_t col, std::string_view text, bool& memory);

  // Writes the current cell, or every cell of the selection with `FillStyle` 1; the number of cells
  // written. VE001, once, when copies find no memory.
  //
  // The selection, its ends included, takes the text unformatted. The current cell takes it dressed
  // by its column's format. Tabs spread it over the cells to the right and below; unlike in a line
  // empty texts are dropped, and here alone a cell's entry is a 16-bit number: entry 65,535 ends
  // the writing, those above wrap to the store's start.
  int32_t SetCurrentText(std::string_view text);

  // SetCurrentText, then repaints the cell, or the control where it wrote more or fewer than one.
  void WriteText(std::string_view text);
  // The property `Text`. A put works in place at run time alone. A get is false, `text` left alone,
  // without a current cell or in a designer.
  void PutText(std::string_view text);
  bool GetText(std::string& text) const;

  // Empties all cells and repaints; sizes and record positions stay.
  void Clear() noexcept;

  // The edit box has been put on the current cell: remembers the cell's text, as much as the box is
  // read. Kept so: an empty cell leaves the text remembered before.
  void KeepEditText();

  GridHost& host() const noexcept { return host_; }

 private:
  int64_t EntryOf(int64_t row, int64_t col) const noexcept { return row * Cols + col; }
  bool IsRunning() const { return host_.IsInPlace() && host_.IsRunTime(); }
  void MakeCells();
  void GoToFirstCell() noexcept;
  std::string Dressed(std::string_view text, int64_t col) const;
  bool SetDressed(int64_t row, int64_t col, std::string_view text);
  int32_t FillSelectionWith(std::string_view text);
  int32_t SpreadFromCurrent(std::string_view text);

  GridHost& host_;
  const GridCapacity capacity_;
  TextSlots cells_;
  TextSlots columnFormats_;
  PixelSizes colWidths_{kStartColWidthPx};
  PixelSizes rowHeights_{20};
};

}  // namespace qrn
