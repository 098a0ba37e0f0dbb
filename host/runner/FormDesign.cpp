// A form while it is designed: keys and mouse choose a control and ask for its property pages. None
// of them reaches a control.
#include <windows.h>
#include <windowsx.h>

#include "host/runner/Designer.h"
#include "host/runner/Form.h"

namespace qrn::host {
namespace {

constexpr int kOutlineGap = 2;  // pixels between a control and the frame around it

bool IsKey(UINT message) noexcept { return message >= WM_KEYFIRST && message <= WM_KEYLAST; }

bool IsSystemKey(UINT message) noexcept {
  return message >= WM_SYSKEYDOWN && message <= WM_SYSDEADCHAR;
}

bool IsMouse(UINT message) noexcept { return message >= WM_MOUSEFIRST && message <= WM_MOUSELAST; }

bool IsBorderMouse(UINT message) noexcept {
  return message >= WM_NCMOUSEMOVE && message <= WM_NCXBUTTONDBLCLK;
}

bool IsPress(UINT message) noexcept {
  return message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN;
}

POINT ScreenPointOf(const MSG& message) noexcept {
  POINT point{GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
  ClientToScreen(message.hwnd, &point);
  return point;
}

}  // namespace

bool IsDesignerKey(const form::KeyChord& chord) noexcept {
  if (chord.virtualKey == VK_SPACE) return chord.alt;
  return chord.virtualKey == VK_F4 || chord.virtualKey == VK_F10;
}

// By place and not by window: disabled ones and pieces without a window are chosen too.
FormControl* Form::ControlUnder(POINT screen) const noexcept {
  FormControl* found = nullptr;
  for (const Com<FormControl>& control : controls_) {
    const HWND holder = control->ParentWindow();
    POINT point = screen;
    const RECT place = control->Place();
    if (!control->visible() || !IsWindowVisible(holder) || !ScreenToClient(holder, &point) ||
        !PtInRect(&place, point)) {
      continue;
    }
    if (!found || control->LiesIn(*found)) found = control.get();
  }
  return found;
}

void Form::Select(FormControl* control) {
  if (selected_ == control) return;
  selected_ = control;
  if (window_) InvalidateRect(window_, nullptr, FALSE);
}

void Form::OutlineSelected(HDC dc) const noexcept {
  if (!selected_ || selected_->container()) return;
  RECT frame = selected_->Place();
  InflateRect(&frame, kOutlineGap, kOutlineGap);
  FrameRect(dc, &frame, GetSysColorBrush(COLOR_HIGHLIGHT));
}

bool Form::TakeDesignInput(const MSG& message) {
  if (IsSystemKey(message.message)) {
    // Alt+F4 and the window's menu stay the user's, keys of captions do not.
    DefWindowProcW(window_, message.message, message.wParam, message.lParam);
    return true;
  }
  if (IsPress(message.message)) {
    const Com<FormControl> control(ControlUnder(ScreenPointOf(message)));
    Select(control.get());
    if (control && control->CanTakeFocus()) control->TakeFocus();
  }
  const bool wantsPages =
      message.message == WM_RBUTTONUP || (message.message == WM_KEYDOWN && message.wParam == VK_F4);
  if (wantsPages && selected_) PostShowPages(*selected_);
  if (IsBorderMouse(message.message)) return message.hwnd != window_;
  return IsKey(message.message) || IsMouse(message.message);
}

}  // namespace qrn::host
