// Keys and mouse buttons as Visual Basic's events tell them: Shift 1, Ctrl 2, Alt 4 added up;
// buttons left 1, right 2, middle 4.
#pragma once

#include <windows.h>

#include <cstdint>

#include "host/runner/RaisedArguments.h"

namespace qrn::host {

inline bool IsKeyMessage(UINT message) noexcept {
  return message >= WM_KEYFIRST && message <= WM_KEYLAST;
}
inline bool IsMouseMessage(UINT message) noexcept {
  return message >= WM_MOUSEFIRST && message <= WM_MOUSELAST;
}

// Those whose lParam is a point of the window's client area; a wheel's is not.
inline bool IsPointMessage(UINT message) noexcept {
  return message >= WM_MOUSEFIRST && message <= WM_MBUTTONDBLCLK;
}

// What is held down now.
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

// The event of a message and, for a button's, the button; 0: those held.
struct InputEvent {
  UINT message;
  const wchar_t* event;
  int16_t button = 0;
};

inline constexpr InputEvent kMouseEvents[] = {
    {WM_LBUTTONDOWN, L"MouseDown", 1}, {WM_LBUTTONUP, L"MouseUp", 1},
    {WM_RBUTTONDOWN, L"MouseDown", 2}, {WM_RBUTTONUP, L"MouseUp", 2},
    {WM_MBUTTONDOWN, L"MouseDown", 4}, {WM_MBUTTONUP, L"MouseUp", 4},
    {WM_MOUSEMOVE, L"MouseMove"}};

inline constexpr InputEvent kKeyEvents[] = {
    {WM_KEYDOWN, L"KeyDown"}, {WM_KEYUP, L"KeyUp"}, {WM_CHAR, L"KeyPress"}};

// Raises the event of a mouse message through `raise(event, arguments)`, if it has one; `x` and `y`
// are in the units that the event counts in.
template <class Raise>
void RaiseMouseEvent(UINT message, WPARAM mouseKeys, double x, double y, Raise raise) {
  for (const InputEvent& row : kMouseEvents) {
    if (row.message != message) continue;
    const int16_t button = row.button != 0 ? row.button : ButtonsHeld(mouseKeys);
    RaisedArguments arguments{ByValue(button), ByValue(KeyModifiers()),
                              ByValue(static_cast<float>(x)), ByValue(static_cast<float>(y))};
    raise(row.event, arguments.get());
  }
}

// The same of a key message. The result is the key or character as the handler left it, 0 if it
// took it away; `key` itself where the message has no event.
template <class Raise>
WPARAM RaiseKeyEvent(UINT message, WPARAM key, Raise raise) {
  for (const InputEvent& row : kKeyEvents) {
    if (row.message != message) continue;
    int16_t changed = static_cast<int16_t>(key);
    int16_t shift = KeyModifiers();
    RaisedArguments pressed{ByReference(changed)};
    RaisedArguments moved{ByReference(changed), ByReference(shift)};
    raise(row.event, message == WM_CHAR ? pressed.get() : moved.get());
    return static_cast<uint16_t>(changed);
  }
  return key;
}

}  // namespace qrn::host
