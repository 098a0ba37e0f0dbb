// The one message box of the engine: no owner, no title of its own, one OK button.
#pragma once

namespace qrn {

inline constexpr unsigned kTaskModal = 0x2000;    // MB_TASKMODAL
inline constexpr unsigned kSystemModal = 0x1000;  // MB_SYSTEMMODAL

inline constexpr int kBoxOk = 1;  // IDOK

// Takes `text` (code page 932) and the modality; gives what the user answered.
using ShowBoxFunction = int (*)(const char* text, unsigned flags);

// Shows the text and waits for the user's answer. Natively it goes to the standard error stream as
// UTF-8, and the answer is OK.
int ShowBox(const char* text, unsigned flags) noexcept;

// Puts another function in the box's place; null brings the real one back. Returns what stood
// there (null for the real one).
ShowBoxFunction ReplaceShowBox(ShowBoxFunction function) noexcept;

}  // namespace qrn
