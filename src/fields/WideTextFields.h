// The wide string types 25 and 26: UTF-16 units, little-endian, ended by a zero unit. `Size` is not
// consulted in either direction.
#pragma once

#include "fields/FieldAccess.h"

namespace qrn {

// Reads up to the zero unit or the end of the readable bytes.
void ReadWideText(const FieldSource& field, std::span<char> outText);

// Stores the text with its zero unit; a text too long for the writable bytes is cut, the zero unit
// still there.
void WriteWideText(const FieldTarget& field);

}  // namespace qrn
