// Packed decimal (Decimal, Money): `Size` bytes hold 2*Size-1 digits, most significant first, high
// nibble before low; the low nibble of the last byte is the sign: 13 is negative, anything else
// positive. The point is implied `decimals` digits from the right. Digits never pass through a
// binary number, so a field may hold more of them than any machine word.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "fields/FieldAccess.h"
#include "fields/QuorinSettings.h"

namespace qrn {

// `fieldBytes` is the field, no more. 12.00 reads "12" but zero reads "0.00" and one half "0.50":
// forms rely on it. A nibble that is no digit prints as the character at its distance from "0".
void DecimalToText(const QuorinSettings& settings, std::span<const uint8_t> fieldBytes,
                   std::span<char> outText, int decimals) noexcept;

// `cleanText` comes from StripToNumber. Writes `size` bytes at `outBytes`, fewer where the span is
// shorter. Digits beyond `decimals` are cut, not rounded. A text of more than 2*size-1 characters
// leaves a zero of its sign. Without decimals a "." is stored as the digit 0: "12.5" becomes 1205.
// Without a point, digits too many on the left are lost. The positive sign is the setting
// sign_nibble, of which only the low four bits have room.
void TextToDecimal(const QuorinSettings& settings, std::string_view cleanText,
                   std::span<uint8_t> outBytes, int size, int decimals) noexcept;

void ReadDecimal(const FieldSource& field, std::span<char> outText);
void WriteDecimal(const FieldTarget& field);

}  // namespace qrn
