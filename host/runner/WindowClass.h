// Window classes of the program's own.
#pragma once

#include <windows.h>

namespace qrn::host {

// Makes a class known to the system; a second time it is there already. `background` may be null:
// the window paints itself.
inline void RegisterWindowClass(const wchar_t* name, WNDPROC procedure,
                                HBRUSH background = nullptr) noexcept {
  WNDCLASSEXW kind{};
  kind.cbSize = sizeof kind;
  kind.style = CS_DBLCLKS;
  kind.lpfnWndProc = procedure;
  kind.hInstance = GetModuleHandleW(nullptr);
  kind.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
  kind.hIcon = LoadIconW(nullptr, reinterpret_cast<LPCWSTR>(IDI_APPLICATION));
  kind.hbrBackground = background;
  kind.lpszClassName = name;
  RegisterClassExW(&kind);
}

}  // namespace qrn::host
