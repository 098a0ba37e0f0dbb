#pragma once

namespace qrn {

using FatalExitFunction = void (*)(const char* text);

// Shows `text` (code page 932) and ends the process; natively it is printed and the process aborts.
// Returns only from a replacement.
void FatalExit(const char* text) noexcept;

// Puts another function in its place; null brings the real one back. Returns what stood there.
FatalExitFunction ReplaceFatalExit(FatalExitFunction function) noexcept;

}  // namespace qrn
