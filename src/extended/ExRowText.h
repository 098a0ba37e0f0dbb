// The text that a handler of `Format` stores for the row under way of an extended fill.
#pragma once

#include <cstdint>

namespace qrn {

// Makes the area ready for a row and gives it. There is one for the process: fills do not nest.
char* BeginExRowText() noexcept;

namespace flat {

// Stores the row's text, cut to 1,024 bytes (null counts as empty). Outside a fill it does no
// harm. Always 0.
int32_t DbExSetFormattedString(const char* text) noexcept;

}  // namespace flat
}  // namespace qrn
