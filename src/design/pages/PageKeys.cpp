#include "design/pages/PageKeys.h"

namespace qrn::design {
namespace {

bool IsDown(int key) noexcept { return GetKeyState(key) < 0; }

bool IsPushButton(HWND control) noexcept {
  const LRESULT code = SendMessageW(control, WM_GETDLGCODE, 0, 0);
  return (code & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
}

bool ListIsOpen(HWND control) noexcept {
  return SendMessageW(control, CB_GETDROPPEDSTATE, 0, 0) != FALSE;
}

// Behind the last control, and before the first, the frame's own follow.
bool TabStaysInside(HWND page, HWND focus) noexcept {
  const HWND first = GetNextDlgTabItem(page, nullptr, FALSE);
  const HWND end = IsDown(VK_SHIFT) ? first : GetNextDlgTabItem(page, first, TRUE);
  return !IsDown(VK_CONTROL) && focus != end;
}

bool IsPages(HWND page, HWND focus, const MSG& message) noexcept {
  if (message.message == WM_CHAR || message.message == WM_KEYUP) return true;
  if (message.message != WM_KEYDOWN) return false;
  switch (message.wParam) {
    case VK_TAB:
      return TabStaysInside(page, focus);
    case VK_RETURN:
      return ListIsOpen(focus) || IsPushButton(focus);
    case VK_ESCAPE:
      return ListIsOpen(focus);
    case VK_F1:
      return false;
    default:
      return !IsDown(VK_CONTROL) || (message.wParam != VK_PRIOR && message.wParam != VK_NEXT);
  }
}

}  // namespace

bool RunPageKey(HWND page, MSG& message) noexcept {
  const HWND focus = GetFocus();
  if (!page || !IsChild(page, focus) || !IsPages(page, focus, message)) return false;
  return IsDialogMessageW(page, &message) != FALSE;
}

}  // namespace qrn::design
