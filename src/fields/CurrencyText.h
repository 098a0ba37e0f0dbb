// Currency: a signed 64-bit integer, little-endian, scaled by ten to the power of the field's
// decimals. Eight bytes, whatever `Size` says.
#pragma once

#include "fields/FieldAccess.h"

namespace qrn {

// The point always prints: 123 without decimals reads "123.".
void ReadCurrency(const FieldSource& field, std::span<char> outText);

// Keeps digits and "-"; a second "." begins the fraction anew. The fraction is filled up with zeros
// and never cut: "1.234" with two decimals stores 1234, which reads "12.34". Numbers outside 64
// bits stay at the limit.
void WriteCurrency(const FieldTarget& field);

}  // namespace qrn
