// The binary integer types, little-endian. The widths that reading and writing take differ on
// purpose, and so do the signs: a 1-byte Integer is written signed and reads unsigned, a 2-byte
// AutoInc of -1 reads 4294967295, a UBin that is not 4 bytes wide always reads two.
#pragma once

#include "fields/FieldAccess.h"

namespace qrn {

// Size 2, 4, 8: signed. Any other: the first byte, unsigned.
void ReadInteger(const FieldSource& field, std::span<char> outText);
// Integer and UBin. Size 1, 4, 8: that many bytes. Any other: two. Up to 4 bytes take the low bytes
// of a number held at the limits of 32 bits, 8 bytes one held at those of 64. No sign is refused.
void WriteInteger(const FieldTarget& field);

// Size 4: four bytes, any other: two, unsigned.
void ReadUBin(const FieldSource& field, std::span<char> outText);

// Size 4: four bytes, any other: two, sign-extended to four; either way printed as unsigned.
void ReadAutoInc(const FieldSource& field, std::span<char> outText);
// Size 4: four bytes, any other: two.
void WriteAutoInc(const FieldTarget& field);

}  // namespace qrn
