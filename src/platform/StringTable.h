// The module's string table: the numbered texts of resources/Messages.inc, as resources on Windows,
// compiled in natively.
#pragma once

#include <cstddef>
#include <span>

namespace qrn {

// Stores text `id` (code page 932) with a NUL, cut at a character where it does not fit, and
// returns its length in bytes. An id of no row gives 0 and stores an empty text.
size_t LoadText(int id, std::span<char> out) noexcept;

}  // namespace qrn
