// The place of a table's current record, kept while a fill walks through other records.
#pragma once

#include <cstdint>

#include "core/DbEngine.h"
#include "core/DbTypes.h"

namespace qrn {

// Reads the record at a position whole, whatever its length, so that an update stores what was
// there: without a lock, along the key at an index position or, for -1, along none. -1 (after
// VE001) without memory for a long record, -6 without a key buffer.
[[nodiscard]] Status DbReadWholeAt(DbTableInfo& table, int32_t position,
                                   int32_t indexPosition) noexcept;

class RecordPlace {
 public:
  // Takes the place of the table's current record; a table without one is left where the walk ends.
  RecordPlace(DbEngine& engine, DbTableInfo& table) noexcept;

  // Makes that record current again, read whole: along the key at an index position, or along none
  // where the key leaves the record out. The status of that; 0 where there was no place. A record
  // that has gone meanwhile leaves the place where it is.
  //
  // `table` may be another one by now (the dictionary was loaded anew), but must be open.
  Status GoBack(DbTableInfo& table, int32_t indexPosition) const noexcept;

 private:
  int32_t position_;
};

}  // namespace qrn
