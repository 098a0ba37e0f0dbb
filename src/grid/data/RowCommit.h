// A row that the user changed on its way back to its record.
#pragma once

#include <vector>

#include "core/RecordPlace.h"
#include "grid/data/GridRecord.h"

namespace qrn {

class RowCommit {
 public:
  RowCommit(GridModel& model, DbEngine& engine, int32_t row)
      : model_(model), record_(model, engine), row_(row) {}

  void Run();

 private:
  // The texts of the row by the position of their field, null for fields that the grid does not
  // show. Valid until the cells change.
  struct Texts {
    std::vector<const char*> byField;
    bool any = false;  // some cell has a text
  };

  bool Store(DbTableInfo& table, int32_t position);
  bool Ended(Status status, MessageId message);
  Texts TextsFor(const DbTableInfo& table) const;
  void PutIntoRecord(DbTableInfo& table, const Texts& texts) const;

  GridModel& model_;
  const GridRecord record_;
  const int32_t row_;
};

}  // namespace qrn
