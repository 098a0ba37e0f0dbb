// Fields of an extended reply as text. In a reply the extracted fields of a record stand back to
// back, each at its size; the last one may be cut short by the record's end.
#pragma once

#include <cstdint>
#include <span>

#include "core/DbTypes.h"
#include "fields/QuorinSettings.h"

namespace qrn {

// Bytes that hold any text of a field; longer ones are cut.
inline constexpr size_t kExFieldTextSize = 4097;

// Writes the text of the field whose bytes begin at `offset` in `data`, the extracted bytes of one
// record; nothing beyond them is read. A field that begins past their end is an empty text.
//
// A Blob's bytes are a descriptor, and its value is looked for where the descriptor says in the
// record that `table` holds now, which may be another one; without a table it is empty.
void ExFieldText(const QuorinSettings& settings, const DbTableInfo* table, const DbFieldInfo& field,
                 std::span<const uint8_t> data, size_t offset, std::span<char> outText);

}  // namespace qrn
