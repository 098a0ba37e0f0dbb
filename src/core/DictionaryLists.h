// The lists that hang on a dictionary: making, growing, freeing. Memory is platform/Memory.h's.
#pragma once

#include "core/DbTypes.h"
#include "core/DictionaryRows.h"

namespace qrn {

// Gives back the memory of dictionaries that ended while a message box was up, unless one is still.
void ReleaseEndedDictionaries() noexcept;

// An empty dictionary of that directory (cut to 259 bytes); null without memory. There is one table
// slot more than tables may be: an id equal to TableCount is let through to an empty slot.
[[nodiscard]] DbDictionary* NewDictionary(const char* directory) noexcept;

// Fills the next slot. False when all kMaxTables are in use.
[[nodiscard]] bool AppendTable(DbDictionary& dictionary, const FileRow& row) noexcept;

// Each appends one row, growing its list by a block of entries when it is full. False without
// memory, the list unchanged. The first gives the new entry, null without memory: its flag word or
// decimals are the caller's to add.
[[nodiscard]] DbFieldInfo* AppendField(DbTableInfo& table, const FieldRow& row) noexcept;
[[nodiscard]] bool AppendNamedIndex(DbTableInfo& table, const FieldRow& row) noexcept;
[[nodiscard]] bool AppendSegment(DbTableInfo& table, const IndexRow& row) noexcept;

// Exchanges the three lists of two tables.
void SwapLists(DbTableInfo& left, DbTableInfo& right) noexcept;

// Frees the three lists; the table counts as not loaded afterwards.
void FreeLists(DbTableInfo& table) noexcept;

}  // namespace qrn
