#include "ole/Window.h"

#include "com/WindowObject.h"
#include "ole/Control.h"

namespace qrn::ole {
namespace {

constexpr int kObjectWord = 0;  // of the words that its class adds
constexpr wchar_t kClassName[] = L"QRNBT350.Control";

bool EnsureClass(WNDPROC procedure) noexcept {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  if (GetClassInfoExW(ModuleInstance(), kClassName, &description)) return true;
  description = WNDCLASSEXW{};
  description.style = CS_DBLCLKS;
  description.lpfnWndProc = procedure;
  description.hCursor = LoadCursorA(nullptr, IDC_ARROW);
  description.cbWndExtra = sizeof(void*);  // its ControlWindow
  description.lpszClassName = kClassName;
  return RegisterModuleClass(description) != 0;
}

}  // namespace

bool ControlWindow::Create(HWND parent, const RECT& place) noexcept {
  if (!EnsureClass(&ControlWindow::Procedure)) return false;
  const DWORD style = WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | control_.ExtraWindowStyle();
  CreateWindowExW(0, kClassName, nullptr, style, place.left, place.top, place.right - place.left,
                  place.bottom - place.top, parent, nullptr, ModuleInstance(), this);
  return window_ != nullptr;
}

void ControlWindow::Destroy() noexcept {
  if (window_) DestroyWindow(window_);
}

bool ControlWindow::HasFocus() const noexcept {
  const HWND focus = GetFocus();
  return window_ && focus && (focus == window_ || IsChild(window_, focus));
}

void ControlWindow::GiveFocusAway() noexcept {
  if (HasFocus()) SetFocus(GetParent(window_));
}

void ControlWindow::Move(const RECT& place, const RECT& clip) noexcept {
  if (!window_) return;
  RECT shown{};
  IntersectRect(&shown, &place, &clip);
  const bool whole = EqualRect(&shown, &place) || IsRectEmpty(&clip);
  OffsetRect(&shown, -place.left, -place.top);
  // The window owns its region once it is set.
  SetWindowRgn(window_, whole ? nullptr : CreateRectRgnIndirect(&shown), TRUE);
  SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT CALLBACK ControlWindow::Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
  auto* self = com::WindowObject<ControlWindow>(window, id, lParam, kObjectWord);
  if (!self) return DefWindowProcW(window, id, wParam, lParam);
  if (id == WM_NCCREATE) self->window_ = window;
  Message message{window, id, wParam, lParam};
  return self->Dispatch(message);
}

LRESULT ControlWindow::Dispatch(Message& message) noexcept {
  const Com<IUnknown> alive(&control_.Outer());
  bool handled = false;
  const HRESULT result = Guard([&] {
    handled = control_.OnWindowMessage(message) || ServiceMessage(message);
    return S_OK;
  });
  if (FAILED(result) && message.id == WM_CREATE) {
    message.result = -1;  // half a window is none
    handled = true;
  }
  if (!handled) {
    message.result = DefWindowProcW(message.window, message.id, message.wParam, message.lParam);
  }
  if (message.id == WM_NCDESTROY) {
    com::ForgetWindowObject(message.window, kObjectWord);
    window_ = nullptr;
  }
  return message.result;
}

// What every control does with messages that it does not handle itself.
bool ControlWindow::ServiceMessage(Message& message) {
  switch (message.id) {
    case WM_PAINT: {
      const Paint paint(message.window);
      RECT client{};
      GetClientRect(message.window, &client);
      control_.OnDraw(paint.dc(), client);
      return true;
    }
    case WM_MOUSEACTIVATE:
      if (control_.UserMode()) control_.inPlace().Activate(true);
      return false;
    case WM_SETFOCUS:
      control_.FocusCame();
      return false;
    case WM_KILLFOCUS:
      control_.FocusWent(reinterpret_cast<HWND>(message.wParam));
      return false;
    default:
      return false;
  }
}

}  // namespace qrn::ole
