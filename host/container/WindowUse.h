// Windows as their user meets them.
#pragma once

#include <windows.h>

namespace qrn::host {

// False if the window, or one that holds it, is disabled: neither keys nor mouse reach it.
inline bool AllEnabled(HWND window) noexcept {
  for (; window; window = GetAncestor(window, GA_PARENT)) {
    if (!IsWindowEnabled(window)) return false;
  }
  return true;
}

}  // namespace qrn::host
