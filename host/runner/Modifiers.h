// What is held down while a key or button goes down: Shift 1, Ctrl 2, Alt 4; buttons left 1, right
// 2, middle 4.
#pragma once

#include <windows.h>

#include <cstdint>

namespace qrn::host {

inline int16_t KeyModifiers() noexcept {
  return static_cast<int16_t>((GetKeyState(VK_SHIFT) < 0 ? 1 : 0) |
                              (GetKeyState(VK_CONTROL) < 0 ? 2 : 0) |
                              (GetKeyState(VK_MENU) < 0 ? 4 : 0));
}

inline int16_t ButtonsHeld(WPARAM mouseKeys) noexcept {
  return static_cast<int16_t>(((mouseKeys & MK_LBUTTON) ? 1 : 0) |
                              ((mouseKeys & MK_RBUTTON) ? 2 : 0) |
                              ((mouseKeys & MK_MBUTTON) ? 4 : 0));
}

}  // namespace qrn::host
