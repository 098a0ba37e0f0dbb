#include <windows.h>

#include "platform/CodePage.h"
#include "platform/WindowText.h"

namespace qrn {

size_t ReadWindowText(WindowHandle window, std::span<char> out) noexcept {
  if (out.empty()) return 0;
  out[0] = '\0';
  if (!IsWindow(static_cast<HWND>(window))) return 0;
  const int length =
      GetWindowTextA(static_cast<HWND>(window), out.data(), static_cast<int>(out.size()));
  // The system cuts where the room ends, if need be inside a character.
  const size_t whole =
      CutAtCharacter({out.data(), out.size()}, length > 0 ? static_cast<size_t>(length) : 0);
  out[whole] = '\0';
  return whole;
}

bool WriteWindowText(WindowHandle window, const char* text) noexcept {
  return SetWindowTextA(static_cast<HWND>(window), text) != FALSE;
}

WindowHandle ParentOfWindow(WindowHandle window) noexcept {
  return GetParent(static_cast<HWND>(window));
}

}  // namespace qrn
