// The object that a window's messages come to, kept in a word of the window.
#pragma once

#include <windows.h>

namespace qrn::com {

// Null before WM_NCCREATE, whose lpCreateParams must be an `Object*` as this, and after
// ForgetWindowObject.
template <class Object>
Object* WindowObject(HWND window, UINT message, LPARAM lParam, int word = GWLP_USERDATA) noexcept {
  if (message == WM_NCCREATE) {
    const auto* created = reinterpret_cast<const CREATESTRUCTW*>(lParam);
    SetWindowLongPtrW(window, word, reinterpret_cast<LONG_PTR>(created->lpCreateParams));
  }
  return reinterpret_cast<Object*>(GetWindowLongPtrW(window, word));
}

inline void ForgetWindowObject(HWND window, int word = GWLP_USERDATA) noexcept {
  SetWindowLongPtrW(window, word, 0);
}

}  // namespace qrn::com
