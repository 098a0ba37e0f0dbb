#pragma once

namespace qrn {

inline constexpr unsigned kBeepWarning = 48;  // MB_ICONEXCLAMATION

using BeepFunction = void (*)(unsigned kind);

// Sounds the system's signal of that kind; natively the terminal's bell.
void SoundBeep(unsigned kind) noexcept;

// Puts another function in its place; null brings the real one back. Returns what stood there.
BeepFunction ReplaceBeep(BeepFunction function) noexcept;

}  // namespace qrn
