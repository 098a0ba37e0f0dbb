#include "host/runner/design/Designer.h"

#include <windowsx.h>

#include "host/runner/InputEvents.h"

namespace qrn::host {
namespace {

constexpr int kOutlineGap = 2;  // pixels between a control and the frame around it

bool IsSystemKey(UINT message) noexcept {
  return message >= WM_SYSKEYDOWN && message <= WM_SYSDEADCHAR;
}

bool IsBorderMouse(UINT message) noexcept {
  return message >= WM_NCMOUSEMOVE && message <= WM_NCXBUTTONDBLCLK;
}

bool IsPress(UINT message) noexcept {
  return message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN;
}

bool AsksForPages(const MSG& message) noexcept {
  return message.message == WM_RBUTTONUP ||
         (message.message == WM_KEYDOWN && message.wParam == VK_F4);
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

void Designer::Select(FormControl* control) {
  if (selected_ == control) return;
  selected_ = control;
  window_.Repaint();
}

void Designer::Outline(HDC dc) const noexcept {
  if (!selected_ || selected_->container()) return;
  RECT frame = selected_->Place();
  InflateRect(&frame, kOutlineGap, kOutlineGap);
  FrameRect(dc, &frame, GetSysColorBrush(COLOR_HIGHLIGHT));
}

void Designer::Choose(const MSG& press) {
  const Com<FormControl> control(controls_.At(ScreenPointOf(press)));
  Select(control.get());
  if (control && control->CanTakeFocus()) control->TakeFocus();
}

bool Designer::TakeInput(const MSG& message) {
  if (IsSystemKey(message.message)) {
    // Alt+F4 and the window's menu stay the user's, keys of captions do not.
    DefWindowProcW(window_.get(), message.message, message.wParam, message.lParam);
    return true;
  }
  if (IsPress(message.message)) Choose(message);
  if (AsksForPages(message) && selected_) askForPages_(*selected_);
  if (IsBorderMouse(message.message)) return message.hwnd != window_.get();
  return IsKeyMessage(message.message) || IsMouseMessage(message.message);
}

}  // namespace qrn::host
