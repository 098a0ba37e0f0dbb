#pragma once

#include <span>

namespace qrn {

// Stores the path of the library of that name if this process has it loaded (cut where it does not
// fit). False, and `out` untouched, if not; natively always.
bool LoadedModulePath(const char* name, std::span<char> out) noexcept;

}  // namespace qrn
