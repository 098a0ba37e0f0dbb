// The process's way to the input method, beside the registry of its controls.
#pragma once

#include "ole/ImeApi.h"

namespace qrn {

// Found at first use, which the module makes its load.
ole::ImeApi& TheInputMethod();

// The input method of a control with an `IMEMode`: its own mode while it has the focus, the one
// before that afterwards. Mode 0 leaves the input method alone.
class InputMethodOnFocus {
 public:
  void Enter(HWND window, int32_t mode) noexcept;
  void Leave(HWND window, int32_t mode) noexcept;

 private:
  int outside_ = 0;  // the mode before the focus came
};

}  // namespace qrn
