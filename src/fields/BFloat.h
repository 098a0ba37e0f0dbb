// BFloat, the Microsoft binary format, little-endian. From the last byte down: the exponent (the
// mantissa's leading 1, which is not stored, counts 2 to the power of exponent minus 129); then the
// sign in bit 7 above the top seven bits of the mantissa; then the rest, 48 bits in eight bytes, 16
// in four. Example: 12.0 in four bytes is 00 00 40 84.
//
// An exponent of zero is not taken apart, so a field of zeros does not read as zero: eight bytes
// give 2 to the power -129, four bytes 2 to the power 127. What is written here reads back.
#pragma once

#include <cstdint>
#include <span>

#include "fields/FieldAccess.h"
#include "fields/QuorinSettings.h"

namespace qrn {

inline constexpr size_t kBFloat8Size = 8;

// The lowest three mantissa bits of the eight-byte form have no place in a double and are dropped.
void BFloat8ToDouble(const QuorinSettings& settings, std::span<const uint8_t, kBFloat8Size> in,
                     double* out) noexcept;

// 0, or -1 when the exponent does not fit: then `out` is the double with its bytes reversed, as
// fields store it.
int DoubleToBFloat8(const QuorinSettings& settings, double in,
                    std::span<uint8_t, kBFloat8Size> out) noexcept;

// Between the bits of the four-byte form and a single; exponents wrap within their eight bits.
float BFloat4ToFloat(const QuorinSettings& settings, uint32_t value) noexcept;
uint32_t FloatToBFloat4(const QuorinSettings& settings, float value) noexcept;

// Size 8: eight bytes, any other: four.
void ReadBFloat(const FieldSource& field, std::span<char> outText);
// Size 4: four bytes, any other: eight, past the field's end where it is shorter.
void WriteBFloat(const FieldTarget& field);

}  // namespace qrn
