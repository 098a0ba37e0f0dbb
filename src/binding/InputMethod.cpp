#include "binding/InputMethod.h"

namespace qrn {

ole::ImeApi& TheInputMethod() {
  static ole::ImeApi api(ole::FindImeEntries());
  return api;
}

void InputMethodOnFocus::Enter(HWND window, int32_t mode) noexcept {
  if (mode == 0) return;
  TheInputMethod().Read(window, outside_);
  TheInputMethod().Apply(window, mode);
}

void InputMethodOnFocus::Leave(HWND window, int32_t mode) noexcept {
  if (mode != 0) TheInputMethod().Apply(window, outside_);
}

}  // namespace qrn
