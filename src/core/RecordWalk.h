// Walking a record field by field, the second of the two ways to address a field: where the offsets
// of the dictionary do not count null-indicator bytes and texts of variable length, the walk does.
//
//   RecordWalk walk(settings, table);
//   while (walk.Next()) { ... walk.Field(), walk.Place() ...; walk.Step(); }
#pragma once

#include <cstdint>
#include <span>

#include "core/DbTypes.h"
#include "fields/QuorinSettings.h"

namespace qrn {

// The place never leaves the record buffer, whatever the record or the dictionary says. It is an
// offset, so that it stays good when a field's storage makes the buffer grow.
class RecordWalk {
 public:
  RecordWalk(const QuorinSettings& settings, DbTableInfo& table) noexcept
      : settings_(settings), table_(table) {}

  // Goes to the next field and past its null-indicator byte; false behind the last.
  bool Next() noexcept;

  int32_t Position() const noexcept { return position_; }  // in `Fields`
  const DbFieldInfo& Field() const noexcept { return table_.Fields[position_]; }

  int32_t Offset() const noexcept { return offset_; }  // of the value, from the record's start
  std::span<uint8_t> Place() const noexcept;           // from the value to the buffer's end

  // Steps over the value: as it stands in the record, or as long as `text` would be (for fields of
  // variable length the two differ).
  void Step() noexcept;
  void StepAsText(const char* text) noexcept;

 private:
  void Advance(int64_t bytes) noexcept;

  const QuorinSettings& settings_;
  DbTableInfo& table_;
  int32_t position_ = -1;
  int32_t offset_ = 0;
};

}  // namespace qrn
