// Finding tables, fields and keys. Names compare exactly, case included, and the first match wins;
// a null name matches nothing. "Not found" is null or -1.
//
// An index position is the slot in `Segments` of a key's first segment; the key number is what
// Btrieve takes. -1 as a position means no key.
#pragma once

#include <cstddef>
#include <cstdint>

#include "core/DbTypes.h"

namespace qrn {

inline constexpr int32_t kNoIndexPosition = -1;

DbTableInfo* DbFindTable(const DbDictionary& dictionary, const char* name) noexcept;

int32_t DbFindField(const DbTableInfo& table, const char* name) noexcept;

const DbFieldInfo* DbFindFieldById(const DbTableInfo& table, int32_t fieldId) noexcept;

// The field at that position, null outside the table's fields.
const DbFieldInfo* DbFieldAt(const DbTableInfo& table, int32_t position) noexcept;

// A name in `NamedIndexes` wins; otherwise the key whose first segment indexes a field of that
// name. -1 for a null, empty or unknown name.
int32_t DbFindIndex(const DbTableInfo& table, const char* name) noexcept;

// The same, but 0 for a null or unknown name; an empty name is compared like any other.
int32_t DbFindIndexOrFirst(const DbTableInfo& table, const char* name) noexcept;

// 0 also when the table has not that many keys.
int32_t DbKeyToSegment(const DbTableInfo& table, int32_t keyNumber) noexcept;

// -1 gives 255, any other position below 1 gives 0.
int32_t DbSegmentToKey(const DbTableInfo& table, int32_t indexPosition) noexcept;

// Cuts the trailing blanks of a fixed-width name in place. `text` has room for `width` characters
// and a NUL; blanks in front of an embedded NUL stay.
void DbTrimName(char* text, size_t width) noexcept;

}  // namespace qrn
