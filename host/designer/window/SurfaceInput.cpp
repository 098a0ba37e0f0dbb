// Mouse and keys on the surface.
#include <windowsx.h>

#include <algorithm>
#include <cstdlib>

#include "host/designer/model/TabOrder.h"
#include "host/designer/panes/PaneWindow.h"
#include "host/designer/window/Surface.h"
#include "host/runner/InputEvents.h"

namespace qrn::designer {
namespace {

// How near to the middle of a handle is on it, in twips.
int HeldReach() noexcept { return Scaled(4) * kTwipsPerPixel; }

bool IsDown(int key) noexcept { return GetKeyState(key) < 0; }

Held HeldNow() noexcept { return {IsDown(VK_SHIFT), IsDown(VK_CONTROL)}; }

bool IsBorderMouse(UINT message) noexcept {
  return message >= WM_NCMOUSEMOVE && message <= WM_NCXBUTTONDBLCLK;
}

POINT ScreenPointOf(const MSG& message) noexcept {
  POINT point{GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
  const bool isOnScreen = IsBorderMouse(message.message) || message.message == WM_MOUSEWHEEL ||
                          message.message == WM_MOUSEHWHEEL;
  if (!isOnScreen) ClientToScreen(message.hwnd, &point);
  return point;
}

// Presses on borders and title bars are presses on what they belong to.
struct BorderRow {
  UINT border;
  UINT message;
};
constexpr BorderRow kBorders[] = {
    {WM_NCLBUTTONDOWN, WM_LBUTTONDOWN}, {WM_NCLBUTTONDBLCLK, WM_LBUTTONDOWN},
    {WM_NCRBUTTONDOWN, WM_RBUTTONDOWN}, {WM_NCRBUTTONUP, WM_RBUTTONUP},
    {WM_LBUTTONDBLCLK, WM_LBUTTONDOWN}, {WM_NCMOUSEMOVE, WM_MOUSEMOVE}};

UINT PlainMouse(UINT message) noexcept {
  for (const BorderRow& row : kBorders) {
    if (row.border == message) return row.message;
  }
  return message;
}

LPCWSTR CursorOf(Handle handle) noexcept {
  // Clockwise from the top left corner; opposite ones have the same.
  static const LPCWSTR kCursors[] = {
      reinterpret_cast<LPCWSTR>(IDC_SIZENWSE), reinterpret_cast<LPCWSTR>(IDC_SIZENS),
      reinterpret_cast<LPCWSTR>(IDC_SIZENESW), reinterpret_cast<LPCWSTR>(IDC_SIZEWE)};
  return kCursors[static_cast<size_t>(handle) % 4];
}

}  // namespace

void Surface::SetPointer() noexcept {
  POINT screen{};
  GetCursorPos(&screen);
  LPCWSTR cursor = reinterpret_cast<LPCWSTR>(tool_ ? IDC_CROSS : IDC_ARROW);
  const ControlId primary = design_ ? design_->Primary() : 0;
  if (primary != 0 && !tool_ && !clicked_ && live_.Window()) {
    std::optional<Handle> handle = FormHandleAt(screen);
    if (primary != design_->form()) {
      handle = HandleAt(PlaceOnForm(*design_, primary), OnForm(screen), HeldReach());
      if (handle && !CanPull(*design_, primary, *handle)) handle.reset();
    }
    if (handle) cursor = CursorOf(*handle);
  }
  SetCursor(LoadCursorW(nullptr, cursor));
}

bool Surface::PreTranslate(const MSG& message) {
  HWND form = live_.Window();
  if (!form || !design_ || (message.hwnd != form && !IsChild(form, message.hwnd))) return false;
  if (host::IsKeyMessage(message.message)) {
    // A control that took the keyboard to itself gives it back.
    SetFocus(window_);
    PostMessageW(window_, message.message, message.wParam, message.lParam);
    return true;
  }
  const UINT mouse = PlainMouse(message.message);
  if (!host::IsMouseMessage(mouse) && !IsBorderMouse(message.message)) return false;
  OnMouse(mouse, message.wParam, ScreenPointOf(message));
  return true;
}

bool Surface::OnMouse(UINT message, WPARAM wParam, POINT screen) {
  if (!live_.Window()) return false;
  if (message == WM_LBUTTONDOWN) return OnPress(screen), true;
  if (message == WM_RBUTTONDOWN) return OnRightPress(screen), true;
  if (message == WM_RBUTTONUP) return owner_.OnContextMenu(screen), true;
  if (message == WM_MOUSEWHEEL || message == WM_MOUSEHWHEEL) {
    const bool across = message == WM_MOUSEHWHEEL || (GET_KEYSTATE_WPARAM(wParam) & MK_SHIFT) != 0;
    if (scroller_->OnWheel(GET_WHEEL_DELTA_WPARAM(wParam), across)) Arrange();
    return true;
  }
  if (message == WM_MOUSEMOVE && gesture_) return OnMove(screen), true;
  if (message == WM_LBUTTONUP && gesture_) return OnRelease(), true;
  return false;
}

bool Surface::IsTwice(POINT screen) {
  const auto now = static_cast<DWORD>(GetMessageTime());
  const bool isNear = std::abs(screen.x - pressed_.x) <= GetSystemMetrics(SM_CXDOUBLECLK) / 2 &&
                      std::abs(screen.y - pressed_.y) <= GetSystemMetrics(SM_CYDOUBLECLK) / 2;
  const bool twice = isNear && now - pressedAt_ <= GetDoubleClickTime();
  pressedAt_ = twice ? now - GetDoubleClickTime() - 1 : now;
  pressed_ = screen;
  return twice;
}

void Surface::OnPress(POINT screen) {
  SetFocus(window_);
  const Point point = OnForm(screen);
  const ControlId hit = ControlAt(*design_, point);
  if (clicked_) return ClickTabOrder(hit);
  const bool twice = IsTwice(screen);
  if (twice && !tool_) return owner_.OpenCode(hit);
  design_->Seal();
  gesture_.emplace(*design_, grid_);
  if (tool_) {
    gesture_->PressWith(*tool_, point);
  } else if (const auto handle = FormHandleAt(screen)) {
    gesture_->PressHandle(*handle, point);
  } else {
    gesture_->Press(point, HeldNow(), HeldReach());
  }
  SetCapture(window_);
}

void Surface::OnMove(POINT screen) {
  gesture_->To(OnForm(screen), HeldNow());
  ShowMarks();
}

void Surface::OnRelease() {
  Gesture gesture = std::move(*gesture_);
  gesture_.reset();
  ReleaseCapture();
  const Refusal refusal = gesture.Release();
  ShowMarks();
  if (tool_) {
    tool_.reset();
    owner_.OnToolDone();
  }
  owner_.Tell(refusal);
}

void Surface::CancelGesture() {
  if (!gesture_) return;
  gesture_.reset();
  ReleaseCapture();
  ShowMarks();
}

void Surface::OnRightPress(POINT screen) {
  SetFocus(window_);
  CancelGesture();
  const ControlId hit = ControlAt(*design_, OnForm(screen));
  if (!design_->IsSelected(hit)) Click(*design_, hit, false);
}

void Surface::BeginTabOrder() {
  CancelGesture();
  clicked_.emplace();
  SetFocus(window_);
  owner_.OnTabOrder(true);
  ShowMarks();
}

void Surface::ClickTabOrder(ControlId control) {
  const std::vector<ControlId> order = TabOrderOf(*design_);
  const bool has = std::find(order.begin(), order.end(), control) != order.end();
  if (!has) return EndTabOrder(true);
  std::erase(*clicked_, control);
  clicked_->push_back(control);
  if (clicked_->size() == order.size()) return EndTabOrder(true);
  ShowMarks();
}

void Surface::EndTabOrder(bool keep) {
  const std::vector<ControlId> clicked = *std::exchange(clicked_, std::nullopt);
  owner_.OnTabOrder(false);
  if (keep && !clicked.empty()) owner_.Tell(PutTabOrder(*design_, clicked));
  ShowMarks();
}

void Surface::OnEscape() {
  if (clicked_) return EndTabOrder(false);
  if (gesture_) return CancelGesture();
  if (tool_) {
    tool_.reset();
    return owner_.OnToolDone();
  }
  const ControlId primary = design_->Primary();
  const bool onForm = primary != 0 && primary != design_->form();
  design_->Select({onForm ? design_->Container(primary) : design_->form()});
}

bool Surface::OnArrow(WPARAM key) {
  struct ArrowRow {
    WPARAM key;
    int across;
    int down;
  };
  constexpr ArrowRow kArrows[] = {
      {VK_LEFT, -1, 0}, {VK_RIGHT, 1, 0}, {VK_UP, 0, -1}, {VK_DOWN, 0, 1}};
  for (const ArrowRow& row : kArrows) {
    if (row.key != key) continue;
    const Held held = HeldNow();
    if (held.shift) {
      owner_.Tell(Stretch(*design_, design_->selection(), row.across, row.down, grid_));
    } else if (held.control) {
      owner_.Tell(Nudge(*design_, design_->selection(), row.across, row.down, grid_));
    } else {
      SelectNext(*design_, row.across + row.down < 0);
    }
    return true;
  }
  return false;
}

bool Surface::OnKey(WPARAM key) {
  if (key == VK_ESCAPE) return OnEscape(), true;
  if (clicked_) {
    if (key == VK_RETURN) EndTabOrder(true);
    return true;
  }
  if (key == VK_TAB) return SelectNext(*design_, IsDown(VK_SHIFT)), true;
  if (key == VK_RETURN) {
    return owner_.OpenCode(design_->Primary() == 0 ? design_->form() : design_->Primary()), true;
  }
  return OnArrow(key);
}

LRESULT Surface::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  const UINT mouse = PlainMouse(message);
  if (host::IsMouseMessage(mouse) && !IsBorderMouse(message)) {
    const MSG asSent{window_, message, wParam, lParam, 0, {}};
    if (OnMouse(mouse, wParam, ScreenPointOf(asSent))) return 0;
  }
  if (message == WM_KEYDOWN && OnKey(wParam)) return 0;
  if (message == WM_SIZE) Arrange();
  if (message == WM_HSCROLL || message == WM_VSCROLL) {
    if (scroller_->OnBar(message == WM_HSCROLL ? SB_HORZ : SB_VERT, wParam)) Arrange();
    return 0;
  }
  if (message == WM_CAPTURECHANGED && reinterpret_cast<HWND>(lParam) != window_) CancelGesture();
  if (message == WM_SETCURSOR && LOWORD(lParam) == HTCLIENT) return SetPointer(), TRUE;
  if (message == WM_CONTEXTMENU) {
    // By key: beside what is selected.
    POINT screen{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    if (screen.x == -1 && screen.y == -1) {
      const RECT place =
          ScreenPlace(design_->Primary() == 0 ? design_->form() : design_->Primary());
      screen = {place.left, place.bottom};
    }
    owner_.OnContextMenu(screen);
    return 0;
  }
  return DefWindowProcW(window_, message, wParam, lParam);
}

}  // namespace qrn::designer
