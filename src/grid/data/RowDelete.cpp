#include "grid/data/RowDelete.h"

#include <algorithm>
#include <span>

#include "core/RecordPosition.h"
#include "core/ReturnCodes.h"

namespace qrn {

void RowDelete::Run() {
  if (model_.AllowDelete == 0 || model_.rowSelected == 0) return;
  const auto position = record_.PositionOf(model_.Row);
  DbTableInfo* table = record_.Table();
  if (!position || table == nullptr) return;
  const RecordPlace place(record_.engine(), *table);
  if (!Delete(*table, *position)) return GoBackTo(place);
  CloseUp(*position);
  GoToNewRow();
  record_.host().Raise(GridEvent::AfterDelete);
  model_.rowSelected = 0;
  record_.host().Repaint();
}

// True when the record has gone. While the handler of `BeforeDelete` runs it is the table's current
// record; what the handler made current instead must not go in its place.
bool RowDelete::Delete(DbTableInfo& table, int32_t position) {
  if (Ended(record_.Read(table, position), kVE820)) return false;
  if (record_.host().RaiseBeforeDelete()) return false;
  DbTableInfo* now = record_.Table();
  if (now == nullptr || Ended(MakeCurrent(*now, position), kVE820)) return false;
  return !Ended(record_.Call(*now, BtrOpDelete), kVE821);
}

// A record that still is the current one is not read again: that would hide what another station
// has made of it meanwhile.
Status RowDelete::MakeCurrent(DbTableInfo& table, int32_t position) const {
  const bool is = table.IsOpen != 0 && DbGetPositionOf(record_.engine(), table) == position;
  return is ? Status{kSuccess} : record_.Read(table, position);
}

bool RowDelete::Ended(Status status, MessageId message) {
  const bool failed = record_.Failed(status, message);
  if (failed) model_.rowSelected = 0;
  return failed;
}

// The form's record is current again, its bytes in the buffer.
void RowDelete::GoBackTo(const RecordPlace& place) const {
  DbTableInfo* table = record_.Table();
  if (table != nullptr && table->IsOpen != 0) place.GoBack(*table, model_.listKeyNumber);
}

// A handler may have filled the grid anew: the row is where the record's position is now.
void RowDelete::CloseUp(int32_t position) {
  const std::span<const int32_t> all(model_.positions.Data(), model_.positions.Size());
  const auto index = std::ranges::find(all, position) - all.begin();
  if (static_cast<size_t>(index) == all.size()) return;
  MoveRowsUpTo(model_.FixedRows + index);
  model_.positions.Remove(static_cast<size_t>(index));
}

// Fixed columns stay, record numbers with them, and so does the number of rows.
void RowDelete::MoveRowsUpTo(int64_t row) {
  row = std::max<int64_t>(row, 0);
  const int64_t first = std::max(model_.FixedCols, 0);
  for (int64_t col = first; col < model_.Cols; ++col) model_.FreeCell(row, col);
  for (; row + 1 < model_.Rows; ++row) {
    for (int64_t col = first; col < model_.Cols; ++col) model_.MoveCell(row + 1, row, col);
  }
}

void RowDelete::GoToNewRow() {
  const int64_t last = static_cast<int64_t>(model_.positions.Size()) - 1;
  const bool past = int64_t{model_.Row} - model_.FixedRows > last;
  if (past && model_.Row > INT32_MIN) --model_.Row;
  const auto position = record_.PositionOf(model_.Row);
  DbTableInfo* table = record_.Table();
  if (position && table != nullptr) record_.Failed(record_.Read(*table, *position), kVE820);
}

}  // namespace qrn
