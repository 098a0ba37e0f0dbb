#include "grid/data/GridRecord.h"

#include "core/DictionaryLookup.h"
#include "core/Record.h"
#include "core/RecordPlace.h"

namespace qrn {

std::optional<int32_t> GridRecord::PositionOf(int32_t row) const noexcept {
  const int64_t index = int64_t{row} - model_.FixedRows;
  if (index < 0 || index >= static_cast<int64_t>(model_.positions.Size())) return std::nullopt;
  return model_.positions.Get(static_cast<size_t>(index));
}

Status GridRecord::Read(DbTableInfo& table, int32_t position) const noexcept {
  if (table.IsOpen == 0) return BtrStatusNotOpen;
  return DbReadWholeAt(table, position, kNoIndexPosition);
}

Status GridRecord::Call(DbTableInfo& table, int32_t operation) const noexcept {
  if (table.IsOpen == 0) return BtrStatusNotOpen;
  return DbRecordCall(engine_, table, operation, kNoIndexPosition);
}

bool GridRecord::Failed(Status status, MessageId message) const {
  if (status == 0) return false;
  const Status left = host().RaiseBtrieveError(names_.table, status);
  if (left != 0) ShowMessage(message, static_cast<int>(left));
  return true;
}

}  // namespace qrn
