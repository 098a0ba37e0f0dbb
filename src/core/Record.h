// Records and fields of an open table. The record buffer is the only copy of a record there is: a
// read overwrites it, fields are read and written in it, and the key of a read is taken from it.
//
// Nothing here tests whether the table is open: the entries do. Without a record buffer nothing is
// read or written beyond what exists. A Btrieve status is returned as it is, nothing shown; only
// VE804 (no such key) and VE001 appear.
#pragma once

#include <cstdint>
#include <span>

#include "core/DbEngine.h"
#include "core/DbTypes.h"

namespace qrn {

// One record operation along the key at an index position (-1: no key), with the engine's lock
// bias. -6 without a key buffer. A record longer than the buffer gives 22.
[[nodiscard]] Status DbRecordCall(DbEngine& engine, DbTableInfo& table, int32_t operation,
                                  int32_t indexPosition) noexcept;

// The same by the key's name; -6 for a null, empty or unknown one.
[[nodiscard]] Status DbRecordCallByName(DbEngine& engine, DbTableInfo& table, int32_t operation,
                                        const char* indexName) noexcept;

// The data length of Insert and Update on a table of variable-length records: the fixed part with
// the lengths of its blobs, or, when the last field is a text of variable length, the walk's sum.
// A fixed table keeps `length`.
void DbRecordDataLength(DbEngine& engine, DbTableInfo& table, uint32_t& length) noexcept;

// Empties the buffer: zeros, then each field's empty value at its offset. Always 0.
Status DbClearRecord(DbEngine& engine, DbTableInfo& table) noexcept;

// Stores the empty value of one field at the start of `bytes`, which runs to the end of the buffer.
// Types that know no empty value are left alone.
void DbClearValue(std::span<uint8_t> bytes, int32_t type, int32_t size) noexcept;

// The field's text goes to the engine's FieldText, which is returned: empty without such a field or
// without a buffer, valid until the next read.
const char* DbReadField(DbEngine& engine, const DbTableInfo& table, int32_t fieldPosition) noexcept;
const char* DbReadFieldByName(DbEngine& engine, const DbTableInfo& table,
                              const char* fieldName) noexcept;

// The same into the caller's memory.
void DbReadFieldInto(DbEngine& engine, const DbTableInfo& table, int32_t fieldPosition,
                     std::span<char> outText) noexcept;

// Stores a text in the field reached by walking the record; earlier fields of variable length are
// stepped over as if they held this very text, which is kept so. 0, -5 without such a field, -3
// without a buffer, -1 (after VE001) when a blob finds no memory.
[[nodiscard]] Status DbWriteField(DbEngine& engine, DbTableInfo& table, int32_t fieldPosition,
                                  const char* text) noexcept;
[[nodiscard]] Status DbWriteFieldByName(DbEngine& engine, DbTableInfo& table, const char* fieldName,
                                        const char* text) noexcept;

// Stores one text after another in the fields from `firstPosition` on, walking the record; fields
// outside the range are stepped over as they stand. Blobs are left alone. -3 without a buffer.
[[nodiscard]] Status DbWriteFields(DbEngine& engine, DbTableInfo& table, int32_t firstPosition,
                                   std::span<const char* const> texts) noexcept;

// Moves bytes between the start of the buffer and the caller's, as many as both have.
void DbReadRecordImage(const DbTableInfo& table, std::span<uint8_t> out) noexcept;
void DbWriteRecordImage(DbTableInfo& table, std::span<const uint8_t> image) noexcept;

// The number of records, by Btrieve's stat.
[[nodiscard]] Status DbCountRecords(DbEngine& engine, DbTableInfo& table, int32_t* count) noexcept;

}  // namespace qrn
