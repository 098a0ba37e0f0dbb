// What the engine tells the user: the one message box (no owner, no title of its own, one OK
// button), the signal, and the end of the process. Texts are code page 932.
#pragma once

namespace qrn {

inline constexpr unsigned kTaskModal = 0x2000;    // MB_TASKMODAL
inline constexpr unsigned kSystemModal = 0x1000;  // MB_SYSTEMMODAL
inline constexpr unsigned kBeepWarning = 48;      // MB_ICONEXCLAMATION

inline constexpr int kBoxOk = 1;  // IDOK

// Takes the text and the modality; gives what the user answered.
using ShowBoxFunction = int (*)(const char* text, unsigned flags);
using BeepFunction = void (*)(unsigned kind);
using FatalExitFunction = void (*)(const char* text);

// Shows the text and waits for the user's answer. Natively it goes to the standard error stream as
// UTF-8, and the answer is OK.
//
// While it waits, everything else of the application's thread may run, and call the engine.
int ShowBox(const char* text, unsigned flags) noexcept;

// True while a box waits for its answer: somebody who showed it is still in the middle of his work.
bool IsBoxUp() noexcept;

// Sounds the system's signal of that kind; natively the terminal's bell.
void SoundBeep(unsigned kind) noexcept;

// Shows `text` and ends the process; natively it is printed and the process aborts. Returns only
// from a replacement.
void FatalExit(const char* text) noexcept;

// Each puts another function in the real one's place; null brings that back. Returns what stood
// there (null for the real one).
ShowBoxFunction ReplaceShowBox(ShowBoxFunction function) noexcept;
BeepFunction ReplaceBeep(BeepFunction function) noexcept;
FatalExitFunction ReplaceFatalExit(FatalExitFunction function) noexcept;

// The system's own, behind those above.
int ShowSystemBox(const char* text, unsigned flags) noexcept;
void SoundSystemBeep(unsigned kind) noexcept;
void SystemFatalExit(const char* text) noexcept;

}  // namespace qrn
