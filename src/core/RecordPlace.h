// The place of a table's current record, kept while a fill walks through other records.
#pragma once

#include <cstdint>

#include "core/DbEngine.h"
#include "core/DbTypes.h"

namespace qrn {

class RecordPlace {
 public:
  // Takes the place of the table's current record; a table without one is left where the walk ends.
  RecordPlace(DbEngine& engine, DbTableInfo& table) noexcept;

  // Makes that record current again, whole and whatever its length, so that an update stores what
  // was there: without a lock, along the key at an index position, or along none where the key
  // leaves the record out. A record that has gone meanwhile leaves the place where it is.
  //
  // `table` may be another one by now (the dictionary was loaded anew), but must be open.
  void GoBack(DbTableInfo& table, int32_t indexPosition) const noexcept;

 private:
  Status ReadWhole(DbTableInfo& table, int32_t indexPosition) const noexcept;
  Status Read(DbTableInfo& table, int32_t indexPosition) const noexcept;

  int32_t position_;
};

}  // namespace qrn
