// Date and Time fields. Date: day, month (a byte each), year (16 bits, little-endian, full year).
// Time: hundredths, seconds, minutes, hours (a byte each). Four bytes, whatever `Size` says.
//
// Texts are "yyyy/mm/dd" or, with DateStyle 2, "yy/mm/dd"; and "hh:mm:ss". No value is checked in
// either direction. Worked example: 2024/01/05 is 05 01 E8 07, 12:34:56 is 00 38 22 0C.
#pragma once

#include "fields/FieldAccess.h"

namespace qrn {

// A year below 2000 prints in two digits as year minus 1900, any other as year minus 2000; what
// does not fit prints longer, so that no date at all reads "-1900/00/00".
void ReadDate(const FieldSource& field, std::span<char> outText);

// Goes by fixed positions and looks at no separator, but that a one-digit month may stand in a
// four-digit date ("2024/1/5"). Positions behind the text's end count as 0. Two-digit years count
// from 1900, with year_2000 from 2000.
void WriteDate(const FieldTarget& field);

// Hundredths are not shown.
void ReadTime(const FieldSource& field, std::span<char> outText);

// A text that is not exactly eight characters long stores zero.
void WriteTime(const FieldTarget& field);

}  // namespace qrn
