#include "platform/CodePage.h"
#include "platform/WindowText.h"

namespace qrn {

size_t ReadWindowText(WindowHandle window, std::span<char> out) noexcept {
  if (window == nullptr) return CopyText(out, {});
  return CopyText(out, static_cast<const TextWindow*>(window)->text);
}

bool WriteWindowText(WindowHandle window, const char* text) noexcept {
  if (window == nullptr) return false;
  CopyText(static_cast<TextWindow*>(window)->text, text);
  return true;
}

WindowHandle ParentOfWindow(WindowHandle window) noexcept {
  return window != nullptr ? static_cast<const TextWindow*>(window)->parent : nullptr;
}

}  // namespace qrn
