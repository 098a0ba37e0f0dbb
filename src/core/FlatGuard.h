// The checks that come before a flat function's work.
#pragma once

#include "core/DbTypes.h"
#include "core/FlatState.h"
#include "core/ReturnCodes.h"

namespace qrn::flat {

struct CheckedTable {
  Status failure = 0;
  DbTableInfo* table = nullptr;  // set when failure is 0 or -3
};

// A table of the current dictionary, open or not.
inline CheckedTable FindTable(int16_t tableId) noexcept {
  const DbDictionary* dictionary = TheFlatState().CurrentDictionary;
  if (dictionary == nullptr) return {kNoDictionary};
  if (tableId < 0 || tableId > dictionary->TableCount) return {kBadTableId};
  return {kSuccess, &dictionary->Tables[tableId]};
}

inline CheckedTable FindOpenTable(int16_t tableId) noexcept {
  CheckedTable found = FindTable(tableId);
  if (found.failure == 0 && found.table->IsOpen == 0) found.failure = kNotOpen;
  return found;
}

// `body` on the table, or the failure.
template <class Body>
int32_t OnTable(int16_t tableId, Body body) noexcept {
  const CheckedTable found = FindTable(tableId);
  return found.failure != 0 ? found.failure : body(*found.table);
}

template <class Body>
int32_t OnOpenTable(int16_t tableId, Body body) noexcept {
  const CheckedTable found = FindOpenTable(tableId);
  return found.failure != 0 ? found.failure : body(*found.table);
}

}  // namespace qrn::flat
