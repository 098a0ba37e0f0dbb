// The checks that come before a flat function's work. Their order is part of the interface: callers
// tell "no dictionary" from "no such table" from "not open" by the code alone.
#pragma once

#include "core/DbTypes.h"
#include "core/FlatState.h"
#include "core/ReturnCodes.h"

namespace qrn::flat {

// What the checks found. The table lives as long as the dictionary: not beyond a call that may
// load, free or attach another.
struct CheckedTable {
  Status failure = 0;
  DbTableInfo* table = nullptr;  // set when failure is 0 or -3
};

// A table of the current dictionary, open or not: -12 without a dictionary, -15 for a bad id. An id
// equal to the count passes, which is kept so; the empty slot there stands for no table.
inline CheckedTable FindTable(int16_t tableId) noexcept {
  const DbDictionary* dictionary = TheFlatState().CurrentDictionary;
  if (dictionary == nullptr) return {kNoDictionary};
  if (tableId < 0 || tableId > dictionary->TableCount) return {kBadTableId};
  return {kSuccess, &dictionary->Tables[tableId]};
}

// The same for an open table; -3, the table set all the same, for a closed one.
inline CheckedTable FindOpenTable(int16_t tableId) noexcept {
  CheckedTable found = FindTable(tableId);
  if (found.failure == 0 && found.table->IsOpen == 0) found.failure = kNotOpen;
  return found;
}

// `body` on the table, or the failure. `body` takes a DbTableInfo& and gives a status or a count;
// it must not throw.
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
