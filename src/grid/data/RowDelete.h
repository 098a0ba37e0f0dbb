// The record of a selected row, deleted, and the rows below it moved up.
#pragma once

#include "core/RecordPlace.h"
#include "grid/data/GridRecord.h"

namespace qrn {

class RowDelete {
 public:
  RowDelete(GridModel& model, DbEngine& engine) : model_(model), record_(model, engine) {}

  void Run();

 private:
  bool Delete(DbTableInfo& table, int32_t position);
  Status MakeCurrent(DbTableInfo& table, int32_t position) const;
  bool Ended(Status status, MessageId message);
  void GoBackTo(const RecordPlace& place) const;
  void CloseUp(int32_t position);
  void MoveRowsUpTo(int64_t row);
  void GoToNewRow();

  GridModel& model_;
  const GridRecord record_;
};

}  // namespace qrn
