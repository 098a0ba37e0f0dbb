// What a grid knows of itself, at its defaults. Members that are properties have their names and
// automation types; a flag of 16 bits holds 0 or -1. Rows and columns count from 0, fixed ones
// first.
//
// Not here: the stock properties (ole/VisibleControl.h), the texts of the binding, which the
// control keeps as wide texts (GridNames in GridHost.h), and what a drag needs while it lasts.
#pragma once

#include <cstdint>
#include <string>

#include "core/GrowingArray.h"
#include "extended/ExFillSettings.h"

namespace qrn {

inline constexpr int32_t kStartColWidthPx = 50;
inline constexpr int32_t kTwipsPerPixel = 15;
// Bytes that the edit box is read into, its NUL among them.
inline constexpr size_t kEditTextSize = 640;

// Values of the enumerated properties.
enum GridFillStyle : int32_t { kFillCell = 0, kFillSelection = 1 };
enum GridUpdateOption : int32_t { kGridUpdateNone = 0, kGridUpdateInitial = 1 };
enum GridScrollBars : int32_t { kNoBars = 0, kHorizontalBar = 1, kVerticalBar = 2, kBothBars = 3 };
enum GridResizing : int32_t { kResizeNone = 0, kResizeCol = 1, kResizeRow = 2, kResizeBoth = 3 };
enum GridTextAlign : int16_t { kAlignLeft = 0, kAlignRight = 1, kAlignCentre = 2 };

struct GridState : ExFillSettings {
  int32_t AllowUserResizing = kResizeBoth;
  int16_t Abort = 0;  // set by a handler of `Format` to end a fill
  int16_t AllowUpdate = 0;
  int16_t AllowDelete = 0;
  int16_t AlignFixedCells = 0;
  int16_t GridLines = -1;
  int16_t SetRecordNumbers = -1;
  int16_t HighLight = 0;
  int16_t SetColNames = -1;
  int16_t SetColWidth = 0;
  int32_t FillStyle = kFillCell;
  int32_t DbUpdateOption = kGridUpdateInitial;
  int32_t ScrollBars = kBothBars;
  int32_t GridLineWidth = 1;  // pixels
  int16_t listKeyNumber = 0;  // index position of `DbListIndex`, found anew at every fill
  int32_t Cols = 2;           // in use, fixed ones included; put by GridModel::PutCols
  int32_t Rows = 2;           //   and its like, which refuse some values
  int32_t FixedCols = 1;
  int32_t FixedRows = 1;
  int32_t SelStartRow = 0;
  int32_t SelEndRow = 0;
  int32_t SelStartCol = 0;
  int32_t SelEndCol = 0;
  int32_t defaultRowHeight = 20;  // pixels
  int32_t Row = 1;                // current cell
  int32_t Col = 1;
  int32_t created = 0;  // the storage was made
  int32_t TopRow = 1;   // first of the scrolling part that is seen
  int32_t LeftCol = 1;
  int32_t fixedColsWidth = 50;  // pixels
  int32_t fixedRowsHeight = 20;
  int32_t vScrollPos = 1;
  int32_t hScrollPos = 1;

  // Editing. The screen sets `editActive` when the box stands on the current cell and clears it
  // when it leaves; `rowSelected` when a row is picked by its header. CommitCell sets `rowDirty`,
  // CommitRow clears it.
  int32_t editActive = 0;
  int32_t rowDirty = 0;
  int32_t rowSelected = 0;
  std::string savedEditText;  // of the last cell with a text that the box was put on

  uint32_t drawTextFlags = 0x0A30;

  // By column. `CellMaxLength` is written by a fill from field 0 on and by its property from the
  // column's number on; the edit box reads it at `Col - FixedCols`.
  ShortArray TextAlign;
  ShortArray CellMaxLength;
  ShortArray IMEMode;

  LongArray positions;  // of the records shown, from row `FixedRows` on; empty when read-only
};

}  // namespace qrn
