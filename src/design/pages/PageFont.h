// The font that a frame gives a page's dialog.
#pragma once

#include <windows.h>

namespace qrn::design {

// Gives `font` to the controls of a dialog, which keep their places in the measure of the letters:
// all grows, or shrinks, with them. Gives what becomes of `size`, in pixels.
SIZE GiveFont(HWND dialog, HFONT font, SIZE size) noexcept;

}  // namespace qrn::design
