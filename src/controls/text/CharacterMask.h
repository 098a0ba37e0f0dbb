// The keystroke filter of an edit control with `NumericMask` on.
#pragma once

#include <cstdint>

namespace qrn {

inline constexpr char16_t kBackspace = 8;

// Whether a typed character goes through: digits, "+", ",", "-", ".", backspace; also "/" in a
// control bound to a Date field and ":" to a Time field. `fieldType` is the field's type code, -1
// when it is not known. Every two-byte character is refused.
bool MaskAllows(char16_t character, int32_t fieldType) noexcept;

}  // namespace qrn
