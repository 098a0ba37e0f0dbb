// The reply of an extended operation: u16 number of records, then for each record u16 length of its
// data, u32 position, data (the extracted fields in the order of the field list).
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "core/DbTypes.h"

namespace qrn {

inline constexpr size_t kExReplyCount = BtrReplyCountSize;     // bytes in front of all records
inline constexpr size_t kExRecordHead = sizeof(BtrReplyHead);  // bytes in front of a record's data

struct ExReplyRecord {
  uint32_t Position;
  std::span<const uint8_t> Data;
};

// True for the statuses whose reply holds records, possibly none: 0, 9 (end of the file), 22 (the
// next record does not fit), 60 (reject count), 64 (filter limit), 65 (field past a record's end).
bool BringsRecords(Status status);

// The record at the start of `bytes`, which its data points into; nothing when it does not lie
// wholly inside.
std::optional<ExReplyRecord> ReadExRecord(std::span<const uint8_t> bytes);

// Reads the records of a reply one after another and never beyond its end: a record that does not
// lie wholly inside ends it, whatever the count says.
class ExReplyReader {
 public:
  explicit ExReplyReader(std::span<const uint8_t> reply);

  // The next record; nothing at the end.
  std::optional<ExReplyRecord> Next();

  // The bytes behind the records read so far.
  std::span<const uint8_t> Rest() const { return rest_; }

 private:
  std::span<const uint8_t> rest_;
  uint16_t remaining_;
};

}  // namespace qrn
