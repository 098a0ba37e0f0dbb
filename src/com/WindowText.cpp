#include "com/WindowText.h"

#include <algorithm>

namespace qrn::com {

std::wstring TextOfWindow(HWND window) {
  std::wstring text(static_cast<size_t>(std::max(GetWindowTextLengthW(window), 0)) + 1, L'\0');
  const int length = GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
  text.resize(static_cast<size_t>(std::max(length, 0)));
  return text;
}

}  // namespace qrn::com
