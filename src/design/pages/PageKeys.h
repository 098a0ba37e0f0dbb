// Which keys are a property page's and which its frame's.
#pragma once

#include <windows.h>

namespace qrn::design {

// Runs a key of the page: Tab between its controls, Enter on its buttons, what an open list takes,
// characters. False for the frame's: Tab past the page's ends, Enter, Escape, and keys with Alt or
// Ctrl that the control with the keyboard does not take itself.
bool RunPageKey(HWND page, MSG& message) noexcept;

}  // namespace qrn::design
