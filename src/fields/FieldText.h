// Every field of a record as text, and back. Text (code page 932, NUL-terminated) is the system's
// only exchange form: a field never reaches a caller as a number.
//
// The ranges given are what the routines may touch: reading never leaves `record`, writing never
// leaves `outBytes` or `outText`. Within them the stored forms are kept to the letter, quirks
// included: some codecs write past their field (fields/Numeric.h), and forms rely on it.
#pragma once

#include <cstdint>
#include <span>

#include "core/DbTypes.h"
#include "fields/QuorinSettings.h"

namespace qrn {

// Writes the text of the field whose value starts at `fieldBytes` (inside `record`, past any
// null-indicator byte). `record` is the whole readable record: a Blob's data lies at its offset
// there. A text that does not fit is cut. An unknown type leaves `outText` as it was; a Bit stores
// its raw byte without a terminator.
void GetFieldText(const QuorinSettings& settings, std::span<char> outText,
                  const uint8_t* fieldBytes, const DbFieldInfo& field,
                  std::span<const uint8_t> record);

// The same for a value that lies apart from the record, as those of an extended result do. `value`
// runs from the field's first byte to the end of what may be read; a field that it cuts short is
// read as far as it goes, missing bytes of a number counting as zero. `record` serves Blobs alone.
void GetDetachedFieldText(const QuorinSettings& settings, std::span<char> outText,
                          std::span<const uint8_t> value, const DbFieldInfo& field,
                          std::span<const uint8_t> record);

// Writes the stored form of `text` at the start of `outBytes`, which runs from the field's first
// byte to the end of the writable buffer. Nothing is rejected: text that does not fit is cut, text
// that does not parse is zero, a number too large loses its high bytes. A Blob is left alone.
void SetFieldText(const QuorinSettings& settings, std::span<uint8_t> outBytes, const char* text,
                  const DbFieldInfo& field);

// Bytes that the field takes when a record is walked field by field, without its null-indicator
// byte. For types 12 and 13 the length of the NUL-terminated text at `valueBytes` (at most
// `limit` bytes are looked at) plus 1. An unknown type shows VE011 and gives 0, and so, silently,
// does a negative `Size`.
int32_t GetFieldStoredSize(const QuorinSettings& settings, const DbFieldInfo& field,
                           const void* valueBytes, size_t limit);

// 65535 if the nullable field of that exact name holds a null in the record buffer, else 0; 0 also
// for an unknown name, a field that is not nullable and a table without a record buffer.
int32_t IsFieldNull(const QuorinSettings& settings, const DbTableInfo& table,
                    const char* fieldName);

// Stores a Blob's value behind the fixed part, moving other blobs and growing the table's buffer
// where needed. `fieldOffset` is where the 8-byte descriptor stands, `*endOffset` the running end
// of the record, where a value goes that was not there before; it grows by that value's length.
// Returns the value's length, 0 for another type and for a descriptor outside the buffer, -1 (after
// VE001) without memory, the record unchanged.
//
// A new value that is given a place where another one stands moves it along instead of writing over
// it. A descriptor that points outside the buffer counts as new. BufferSize follows the change of a
// value's length, reaches at least to the end of a new one and does not fall below RecordLength.
int32_t SetBlobField(const QuorinSettings& settings, DbTableInfo& table, const char* text,
                     const DbFieldInfo& field, int32_t fieldOffset, int32_t* endOffset);

}  // namespace qrn
