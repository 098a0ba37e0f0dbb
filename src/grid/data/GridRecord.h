// The records behind the rows of a grid: found, read, and what is said when that fails. Behind an
// event the table is to be asked for again.
#pragma once

#include <optional>

#include "core/DbEngine.h"
#include "fields/Messages.h"
#include "grid/model/GridModel.h"

namespace qrn {

class GridRecord {
 public:
  GridRecord(GridModel& model, DbEngine& engine)
      : model_(model), engine_(engine), names_(model.host().Names()) {}

  GridModel& model() const noexcept { return model_; }
  GridHost& host() const noexcept { return model_.host(); }
  DbEngine& engine() const noexcept { return engine_; }
  const GridNames& names() const noexcept { return names_; }

  // By the names as they were at the start; null where they lead nowhere.
  DbTableInfo* Table() const { return host().FindTable(names_); }

  // The record position of a row; nothing where the row stands for no record.
  std::optional<int32_t> PositionOf(int32_t row) const noexcept;

  // Reads the record into the table's buffer, whole, without a lock and along no key.
  [[nodiscard]] Status Read(DbTableInfo& table, int32_t position) const noexcept;

  // One operation on the record that was read. No key: the places of those stay as they are.
  [[nodiscard]] Status Call(DbTableInfo& table, int32_t operation) const noexcept;

  // True for a status other than 0, after the event `BtrieveError` and, unless a handler dealt with
  // it, the message.
  bool Failed(Status status, MessageId message) const;

 private:
  GridModel& model_;
  DbEngine& engine_;
  const GridNames names_;
};

}  // namespace qrn
