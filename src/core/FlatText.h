// How a text leaves the module (qrnbt350.h).
#pragma once

namespace qrn::flat {

// Bytes of the text in a wide string's room, or in the fixed area.
void* ReturnBytes(const char* text) noexcept;

// The fixed area, emptied.
void* ReturnNothing() noexcept;

}  // namespace qrn::flat
