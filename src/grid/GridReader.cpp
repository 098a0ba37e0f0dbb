#include "grid/GridReader.h"

#include <algorithm>

#include "com/Text.h"

namespace qrn {
namespace {

int32_t TrackAt(const GridAxis& axis, int32_t place) noexcept {
  const int32_t fixed = axis.FixedAt(place);
  return fixed != kNoTrack ? fixed : axis.ScrollingAt(place);
}

bool IsTrackShown(const GridAxis& axis, int32_t index, int32_t limit) noexcept {
  return axis.IsFixed(index) ? axis.Place(index, limit).start < limit
                             : axis.StartsInView(index, limit);
}

}  // namespace

GridReader::GridReader(GridReading& grid)
    : model_(grid.ReadModel()),
      look_(grid.ReadLook()),
      frame_(look_.Frame()),
      columns_(ColumnsOf(model_)),
      rows_(RowsOf(model_)),
      grid_(grid) {}

LONG GridReader::RoleOf(GridPlace place) const noexcept {
  if (place.IsTable()) return ROLE_SYSTEM_TABLE;
  if (place.IsRow()) return ROLE_SYSTEM_ROW;
  if (rows_.IsFixed(place.row)) return ROLE_SYSTEM_COLUMNHEADER;
  return columns_.IsFixed(place.col) ? ROLE_SYSTEM_ROWHEADER : ROLE_SYSTEM_CELL;
}

com::Bstr GridReader::TextOf(GridPlace cell) const {
  const char* text = model_.CellText(cell.row, cell.col);
  return com::WidenToBstr(text != nullptr ? text : "");
}

com::Bstr GridReader::NameOf(GridPlace place) const {
  if (place.IsTable()) return com::Bstr(grid_.ReadName());
  if (place.IsRow()) return model_.FixedCols > 0 ? TextOf({place.row, 0}) : com::Bstr::Empty();
  const bool named = model_.FixedRows > 0 && !rows_.IsFixed(place.row);
  return TextOf({named ? 0 : place.row, place.col});
}

LONG GridReader::FocusedIf(bool isPlace) const noexcept {
  return isPlace && grid_.HasKeyboard() ? STATE_SYSTEM_FOCUSED : 0;
}

LONG GridReader::StateOf(GridPlace place) const noexcept {
  LONG state = IsShown(place) ? 0 : STATE_SYSTEM_OFFSCREEN;
  if (place.IsTable()) return state | STATE_SYSTEM_FOCUSABLE | FocusedIf(true);
  if (place.IsCell() && RoleOf(place) != ROLE_SYSTEM_CELL) return state | STATE_SYSTEM_READONLY;
  state |= STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_SELECTABLE;
  if (model_.AllowUpdate == 0) state |= STATE_SYSTEM_READONLY;
  if (IsSelected(place)) state |= STATE_SYSTEM_SELECTED;
  return state | FocusedIf(place == Current());
}

RECT GridReader::RectOf(GridPlace place) const noexcept {
  if (place.IsTable()) return {0, 0, look_.window.width, look_.window.height};
  const TrackSpan row = rows_.Place(place.row, frame_.usable.height);
  const TrackSpan column = place.IsCell() ? columns_.Place(place.col, frame_.usable.width)
                                          : TrackSpan{0, columns_.End(frame_.usable.width)};
  const LONG end = place.IsCell() ? column.end : std::min(column.end, frame_.usable.width);
  return {column.start + frame_.depth, row.start + frame_.depth, end + frame_.depth,
          row.end + frame_.depth};
}

GridPlace GridReader::At(int32_t x, int32_t y) const noexcept {
  const int32_t row = TrackAt(rows_, y - frame_.depth);
  if (row == kNoTrack || y - frame_.depth >= frame_.usable.height) return {};
  const int32_t col = TrackAt(columns_, x - frame_.depth);
  const bool inside = x - frame_.depth < frame_.usable.width && col != kNoTrack;
  return {row, inside ? col : GridPlace::kWhole};
}

bool GridReader::IsShown(GridPlace place) const noexcept {
  if (place.IsTable()) return true;
  return IsTrackShown(rows_, place.row, frame_.usable.height) &&
         (place.IsRow() || IsTrackShown(columns_, place.col, frame_.usable.width));
}

bool GridReader::IsSelected(GridPlace place) const noexcept {
  const bool inRows = place.row >= model_.SelStartRow && place.row <= model_.SelEndRow;
  if (place.IsRow()) return inRows && model_.rowSelected != 0;
  return inRows && place.col >= model_.SelStartCol && place.col <= model_.SelEndCol;
}

}  // namespace qrn
