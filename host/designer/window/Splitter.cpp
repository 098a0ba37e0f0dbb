#include "host/designer/window/Splitter.h"

#include <windowsx.h>

#include <stdexcept>
#include <utility>

#include "host/designer/panes/PaneWindow.h"
#include "host/runner/WindowClass.h"

namespace qrn::designer {
namespace {

constexpr wchar_t kSplitterClass[] = L"QrnDesignSplitter";
constexpr int kWidth = 5;

}  // namespace

Splitter::Splitter(HWND parent, std::function<void(int left)> moved) : moved_(std::move(moved)) {
  host::RegisterWindowClass(kSplitterClass, &Splitter::Procedure, GetSysColorBrush(COLOR_BTNFACE));
  window_ = CreateWindowExW(0, kSplitterClass, L"", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, 0, 0,
                            0, 0, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
  if (!window_) throw std::runtime_error("the designer's splitter cannot be made");
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

Splitter::~Splitter() {
  SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
  DestroyWindow(window_);
}

int Splitter::Width() noexcept { return Scaled(kWidth); }

void Splitter::Drag(int x) {
  POINT edge{x - heldAt_, 0};
  MapWindowPoints(window_, GetParent(window_), &edge, 1);
  moved_(edge.x);
}

LRESULT CALLBACK Splitter::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* self = reinterpret_cast<Splitter*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self && message == WM_LBUTTONDOWN) {
    self->heldAt_ = GET_X_LPARAM(lParam);
    return SetCapture(window), 0;
  }
  if (self && message == WM_MOUSEMOVE && GetCapture() == window) {
    return self->Drag(GET_X_LPARAM(lParam)), 0;
  }
  if (message == WM_LBUTTONUP && GetCapture() == window) return ReleaseCapture(), 0;
  if (message == WM_SETCURSOR) {
    return SetCursor(LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_SIZEWE))), TRUE;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace qrn::designer
