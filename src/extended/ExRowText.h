// The text that a handler of `Format` stores for the row under way of an extended fill.
#pragma once

namespace qrn {

// Makes the area ready for a row and gives it. There is one for the process: fills do not nest.
// DbExSetFormattedString stores there; outside a fill it does no harm.
char* BeginExRowText() noexcept;
}  // namespace qrn
