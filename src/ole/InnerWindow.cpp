#include "ole/InnerWindow.h"

#include <windowsx.h>

#include "ole/VisibleControl.h"

namespace qrn::ole {
namespace {

constexpr wchar_t kOwner[] = L"QRNBT350.Inner";

bool IsOfMouse(UINT id) noexcept { return id >= WM_MOUSEMOVE && id <= WM_RBUTTONUP; }

}  // namespace

InnerWindow::InnerWindow(VisibleControl& control, HWND window)
    : control_(control), window_(window) {
  SetPropW(window, kOwner, this);
  original_ = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure)));
}

void InnerWindow::Leave() noexcept {
  const HWND window = std::exchange(window_, nullptr);
  if (!window) return;
  RemovePropW(window, kOwner);
  SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(original_));
}

LRESULT CALLBACK InnerWindow::Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
  auto* self = static_cast<InnerWindow*>(GetPropW(window, kOwner));
  return self ? self->Dispatch({window, id, wParam, lParam})
              : DefWindowProcW(window, id, wParam, lParam);
}

// Handlers of the application may end the control's windows, and this object with them.
LRESULT InnerWindow::Dispatch(const Message& message) {
  const Com<IUnknown> alive(&control_.Outer());
  const WNDPROC original = original_;
  if (message.id == WM_NCDESTROY) Leave();
  Message told = message;
  bool ends = false;
  Guard([&] {
    ends = window_ && TellControl(told);
    return S_OK;
  });
  if (ends) return told.result;
  if (!IsWindow(message.window)) return 0;
  return CallWindowProcW(original, message.window, message.id, message.wParam, message.lParam);
}

// A list that drops down lies outside the control: its mouse is none of the control's.
bool InnerWindow::TellControl(Message& message) {
  if (message.id == WM_GETOBJECT) return control_.OnContainedMessage(message);
  const HWND contained = control_.contained();
  if (!IsOfMouse(message.id) || !IsChild(contained, message.window)) return false;
  POINT place{GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
  MapWindowPoints(message.window, contained, &place, 1);
  Message moved{contained, message.id, message.wParam, MAKELPARAM(place.x, place.y)};
  return control_.OnContainedMessage(moved);
}

}  // namespace qrn::ole
