// The text of a window, as code page 932 bytes, and the window that it stands in.
#pragma once

#include <cstddef>
#include <span>

namespace qrn {

using WindowHandle = void*;  // an HWND on Windows

// Stores the window's text with a NUL, cut at a character where it does not fit; returns its length
// in bytes. No such window: 0 and an empty text.
size_t ReadWindowText(WindowHandle window, std::span<char> out) noexcept;

// False when there is no such window.
bool WriteWindowText(WindowHandle window, const char* text) noexcept;

// The window that `window` lies in, or a form's owner; null for none.
WindowHandle ParentOfWindow(WindowHandle window) noexcept;

#ifndef _WIN32
// Where there are no windows, a handle is the address of one of these.
struct TextWindow {
  char text[256] = "";
  TextWindow* parent = nullptr;
};
#endif

}  // namespace qrn
