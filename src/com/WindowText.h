// The text of a window, wide.
#pragma once

#include <windows.h>

#include <string>

namespace qrn::com {

// Empty without a window.
std::wstring TextOfWindow(HWND window);

}  // namespace qrn::com
