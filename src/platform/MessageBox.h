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
//
// While it waits, everything else of the application's thread may run, and call the engine.
int ShowBox(const char* text, unsigned flags) noexcept;

// True while a box waits for its answer: somebody who showed it is still in the middle of his work.
bool IsBoxUp() noexcept;

// Puts another function in the box's place; null brings the real one back. Returns what stood
// there (null for the real one).
ShowBoxFunction ReplaceShowBox(ShowBoxFunction function) noexcept;

// The system's own box, behind ShowBox.
int ShowSystemBox(const char* text, unsigned flags) noexcept;

}  // namespace qrn
