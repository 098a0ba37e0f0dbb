// One extended operation on an application's order. It does not position: the caller goes to a
// record with a Get or a Step before it.
#pragma once

#include <cstdint>

#include "core/DbEngine.h"
#include "core/DbTypes.h"

namespace qrn {

// Texts are code page 932, NUL-terminated; null counts as empty.
struct ExAccess {
  int32_t Operation = 0;             // 36 to 39, plus 0, 100, 200, 300 or 400 for the lock
  const char* SearchCond = nullptr;  // extended/SearchCond.h
  const char* Fields = nullptr;      // extended/FieldList.h
  int32_t Key = -1;                  // index position; -1 for none
  uint16_t SkipRecords = 0;          // records that may be rejected; 0: as many as it likes
  uint16_t MaxRecords = 0;           // records wanted
  bool IgnoreCase = false;
};

struct ExAccessResult {
  int16_t ResultId;       // in TheExResults()
  uint16_t NumOfResults;  // records that it holds
};

// Sends the request with the engine's mode as its signature and keeps the reply in the result
// store. On 0, 9, 22, 60, 64 and 65 `result` is set, the records possibly none; with all slots
// taken it is left alone and the reply is lost. On any other status, and on these codes, nothing
// is kept: -3 the table is closed, -6 no such key (after VE804), -7 the operation is none of the
// twenty (VE044), -8 the condition and -9 the field list have a fault (their messages), -99 no
// memory (VE001).
[[nodiscard]] Status ExecuteExtended(DbEngine& engine, DbTableInfo& table, const ExAccess& access,
                                     ExAccessResult& result) noexcept;

// The same by a key's name, in place of `access.Key`: -6 for an unknown one. The step operations,
// which need no key, take an empty name as none. The key is looked for last, behind the operation,
// the condition, the fields and the memory.
[[nodiscard]] Status ExecuteExtendedByName(DbEngine& engine, DbTableInfo& table,
                                           const ExAccess& access, const char* keyName,
                                           ExAccessResult& result) noexcept;

// Takes two characters, unchecked, as the signature of all later requests: -1 for a text of
// another length, the mode unchanged.
[[nodiscard]] Status DbExSetMode(DbEngine& engine, const char* mode) noexcept;

}  // namespace qrn
