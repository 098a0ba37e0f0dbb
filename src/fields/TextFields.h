// The character types, Logical and Bit. Texts are bytes of code page 932 and are cut by bytes: a
// two-byte character that straddles the end is halved.
//
//   String   `Size` bytes, padded with blanks, or ended by a NUL.
//   LString  a count byte, then the text.
//   ZString  ended by a NUL, whatever `Size` says.
//   Note     types 12 and 13: up to `Size` bytes, ended by a NUL where shorter.
#pragma once

#include "fields/FieldAccess.h"

namespace qrn {

// Trailing blanks go only from a value that fills its field; blanks in front of a NUL stay.
void ReadString(const FieldSource& field, std::span<char> outText);
// A shorter text is filled up with blanks while the setting fill_space is on. With it off a NUL
// follows the text, and the bytes behind it keep what they held.
void WriteString(const FieldTarget& field);

// The count is not held against the field: a text written at full length counts one byte too many
// (its count is `Size`), and reads back with the byte behind the field. A count of 128 or more,
// which is no count to a reader of signed bytes, stops at the field's end.
void ReadLString(const FieldSource& field, std::span<char> outText);
// The count byte holds 255 at most; a longer text is cut there.
void WriteLString(const FieldTarget& field);

void ReadZString(const FieldSource& field, std::span<char> outText);
void WriteZString(const FieldTarget& field);

void ReadNote(const FieldSource& field, std::span<char> outText);
void WriteNote(const FieldTarget& field);

// One byte against one character, apart by the code of "0": 1 is "1", 10 is ":". Empty text thus
// stores 208. Bytes after the first are not touched.
void ReadLogical(const FieldSource& field, std::span<char> outText);
void WriteLogical(const FieldTarget& field);

// The raw byte as the first character. No NUL follows it: the caller's next byte stays.
void ReadBit(const FieldSource& field, std::span<char> outText);
void WriteBit(const FieldTarget& field);

}  // namespace qrn
