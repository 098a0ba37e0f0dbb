// Display numbers with the sign overpunched on the last digit (Numeric): `Size` characters, the
// point implied.
//
//   positive   { A B C D E F G H I   = 0 to 9; plain digits count as positive too
//   negative   } J K L M N O P Q R
//
// An integer part that fills the field together with decimals is written past the field's end,
// over what stands behind it (never past the writable bytes): a record must be written in the
// order of its fields.
#pragma once

#include "fields/FieldAccess.h"

namespace qrn {

// A first byte of NUL reads "0". Trailing zeros stay: 12.50 is "12.50", zero "0.00".
void ReadNumeric(const FieldSource& field, std::span<char> outText);

// Takes the text as typed: digits and points count, "+", "," and blanks are stepped over, anything
// else ends the number. The first point counts, further ones are stepped over. At most `Size`
// digits are taken. Surplus decimals are cut.
void WriteNumeric(const FieldTarget& field);

}  // namespace qrn
