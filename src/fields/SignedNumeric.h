// Display numbers with a sign of their own: NumericSTS ends in "+" or "-", NumericSA has "p" to "y"
// for a negative last digit. `Size` characters in all, the point implied.
//
// Reading skips leading zeros on both sides of the point, so a number below a tenth comes out too
// large: 0.05 reads "0.5", zero "0.0". Writing puts a NUL behind the field, over the first byte of
// what stands there (never past the writable bytes): a record must be written in the order of its
// fields. Fields whose decimals do not fit are written past the end in the same way, up to 63
// decimals; more count only as far as the field has room for them.
#pragma once

#include "fields/FieldAccess.h"

namespace qrn {

// Both read "0" where the first byte is NUL.
void ReadNumericSTS(const FieldSource& field, std::span<char> outText);
void ReadNumericSA(const FieldSource& field, std::span<char> outText);

// The integer part ends at the first character that is no digit, or when it fills its place; all
// further digits are the fraction, which is cut at the field's decimals.
void WriteNumericSTS(const FieldTarget& field);
void WriteNumericSA(const FieldTarget& field);

}  // namespace qrn
