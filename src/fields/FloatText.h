// Floating numbers as text: plain digits, never an exponent, rounded to float_size significant
// digits (IEEE doubles; where a number lies halfway, to the even digit).
#pragma once

#include <span>

#include "fields/FieldAccess.h"
#include "fields/QuorinSettings.h"

namespace qrn {

// Digits that float_size can ask for; a greater setting counts as this, a negative one as 0.
inline constexpr int kMaxFloatDigits = 1024;

// A fraction that is all zeros is left out, any other keeps its trailing zeros; a number below one
// prints all its digits behind at most 20 zeros: zero reads "0.0000000000" at ten digits. A number
// with more than float_size digits in front of the point loses its magnitude: 1500000000000 reads
// "1500000000". Without digits the text is empty, or "0." and zeros. What is no number reads "inf"
// or "nan".
void FloatToText(const QuorinSettings& settings, double value, std::span<char> outText) noexcept;

// Size 8: a double, any other: four bytes, a single.
void ReadFloat(const FieldSource& field, std::span<char> outText);
// Size 4: four bytes, any other: eight, past the field's end where it is shorter.
void WriteFloat(const FieldTarget& field);

}  // namespace qrn
