// Replies of extended operations that an application reads record by record afterwards, with no
// further call to the record manager. A fixed table of slots for the whole process; a result id is
// the number of a slot, and lives until it is freed.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/DbTypes.h"
#include "extended/ExReply.h"
#include "extended/FieldList.h"

namespace qrn {

inline constexpr int16_t kExResultSlots = 48;
inline constexpr int16_t kNoResult = -1;

struct ExResultSlot {
  int32_t FileId = 0;                 // of the table
  std::optional<std::string> Fields;  // the field list's text; nothing: the slot is free
  std::vector<uint8_t> Reply;         // the records, back to back, without a count in front
  // Not owned; the table may have been closed since. Null once its dictionary has been freed.
  const DbTableInfo* Table = nullptr;

  std::vector<size_t> Records;  // where in `Reply` each record begins
  std::vector<ExField> Plan;    // how the data of a record reads
  uint32_t Serial = 0;          // tells this result from later ones under the same id

  // Record `location`, counted from 0; nothing past the end.
  std::optional<ExReplyRecord> Record(int32_t location) const;
};

class ExResultStore {
 public:
  // Takes the first free slot for a reply; kNoResult, the reply not kept, when all are taken.
  // Throws std::bad_alloc, no slot taken.
  int16_t Keep(const DbTableInfo& table, const char* fields, const FieldList& plan,
               std::span<const uint8_t> reply);

  // Adds a later reply of the same request behind the kept ones. False, nothing changed, when the
  // slot no longer holds the result of `serial`. Throws std::bad_alloc, nothing changed.
  bool Append(int16_t id, uint32_t serial, std::span<const uint8_t> reply);

  // Null for a free slot and for an id that is no slot's.
  const ExResultSlot* Find(int16_t id) const;

  // False when there is nothing to free.
  bool Free(int16_t id);

  // Frees all.
  void Clear();

  // The dictionary is about to be freed: results of its tables stay, without their table.
  void ForgetTables(const DbDictionary& dictionary);

 private:
  std::array<ExResultSlot, kExResultSlots> slots_;
  uint32_t lastSerial_ = 0;
};

// The process's own store, empty at first; told of every dictionary that goes.
ExResultStore& TheExResults();

}  // namespace qrn
