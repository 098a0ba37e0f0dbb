#include "host/runner/FormWindow.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "com/WindowObject.h"
#include "host/runner/WindowClass.h"

namespace qrn::host {
namespace {

constexpr wchar_t kFormClass[] = L"QrnForm";

struct BorderRow {
  DWORD style;
  DWORD extended;
};

// By FormBorder.
constexpr BorderRow kBorders[] = {
    {WS_POPUP, 0},
    {WS_OVERLAPPED | WS_CAPTION, 0},
    {WS_OVERLAPPED | WS_CAPTION | WS_THICKFRAME, 0},
    {WS_POPUP | WS_CAPTION, WS_EX_DLGMODALFRAME},
    {WS_POPUP | WS_CAPTION, WS_EX_TOOLWINDOW},
    {WS_POPUP | WS_CAPTION | WS_THICKFRAME, WS_EX_TOOLWINDOW},
};

BorderRow StylesOf(const FormLook& look) noexcept {
  BorderRow styles = kBorders[static_cast<int>(look.border)];
  const bool sizable = look.border == FormBorder::Sizable;
  if (look.border != FormBorder::None && look.controlBox) styles.style |= WS_SYSMENU;
  if (sizable && look.controlBox && look.maxButton) styles.style |= WS_MAXIMIZEBOX;
  if (sizable && look.controlBox && look.minButton) styles.style |= WS_MINIMIZEBOX;
  if (look.showInTaskbar) styles.extended |= WS_EX_APPWINDOW;
  styles.style |= WS_CLIPCHILDREN;
  styles.extended |= WS_EX_CONTROLPARENT;
  return styles;
}

// The window's rectangle for a client area at the form's place.
RECT OuterPlace(const FormLook& look, const BorderRow& styles) noexcept {
  RECT place = look.client.Pixels();
  AdjustWindowRectEx(&place, styles.style, FALSE, styles.extended);
  if (look.start == StartPosition::Manual) return place;
  const int width = place.right - place.left;
  const int height = place.bottom - place.top;
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  const bool centred = look.start != StartPosition::SystemDefault;
  const int divisor = centred ? 2 : 6;
  const LONG left = work.left + std::max<LONG>(0, (work.right - work.left - width) / divisor);
  const LONG top = work.top + std::max<LONG>(0, (work.bottom - work.top - height) / divisor);
  return {left, top, left + width, top + height};
}

}  // namespace

FormWindow::~FormWindow() {
  if (window_) com::ForgetWindowObject(window_);
  Close();
}

void FormWindow::Make(const FormLook& look, HWND parent) {
  RegisterWindowClass(kFormClass, &FormWindow::Procedure);
  BorderRow styles = StylesOf(look);
  if (parent) styles.style = (styles.style & ~WS_POPUP) | WS_CHILD | WS_CLIPSIBLINGS;
  const RECT place = OuterPlace(look, styles);
  window_ =
      CreateWindowExW(styles.extended, kFormClass, look.caption.c_str(), styles.style, place.left,
                      place.top, place.right - place.left, place.bottom - place.top, parent,
                      nullptr, GetModuleHandleW(nullptr), this);
  if (!window_) throw std::runtime_error("the form's window cannot be made");
  if (!look.enabled) EnableWindow(window_, FALSE);
  if (const Com<IPicture> icon = Query<IPicture>(look.icon)) {
    OLE_HANDLE handle = 0;
    icon->get_Handle(&handle);
    SendMessageW(window_, WM_SETICON, ICON_SMALL, static_cast<LPARAM>(handle));
  }
  frame_ = MakeCom<InPlaceFrame>(window_);
}

void FormWindow::Close() noexcept {
  if (frame_) frame_->Detach();
  frame_.reset();
  EndModal();
  if (window_) DestroyWindow(window_);
  window_ = nullptr;
}

void FormWindow::Show(int windowState) noexcept {
  constexpr int kShows[] = {SW_SHOW, SW_SHOWMINIMIZED, SW_SHOWMAXIMIZED};
  if (!window_) return;
  ShowWindow(window_, kShows[windowState]);
  // One that was shown before is not activated by that.
  if (windowState != 1 && GetActiveWindow() != window_) SetForegroundWindow(window_);
}

void FormWindow::Hide() noexcept {
  EndModal();
  if (window_) ShowWindow(window_, SW_HIDE);
}

RECT FormWindow::Place() const noexcept {
  RECT place{};
  GetWindowRect(window_, &place);
  return place;
}

void FormWindow::MoveTo(const RECT& place) noexcept {
  SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void FormWindow::Repaint() noexcept {
  if (window_) InvalidateRect(window_, nullptr, FALSE);
}

void FormWindow::BeModal(const std::vector<HWND>& others) {
  modal_ = true;
  for (HWND other : others) {
    if (other == window_ || !IsWindowEnabled(other)) continue;
    waiting_.push_back(other);
    EnableWindow(other, FALSE);
  }
}

void FormWindow::EndModal() noexcept {
  modal_ = false;
  for (HWND other : std::exchange(waiting_, {})) EnableWindow(other, TRUE);
}

LRESULT CALLBACK FormWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* self = com::WindowObject<FormWindow>(window, message, lParam);
  if (!self) return DefWindowProcW(window, message, wParam, lParam);
  if (message == WM_NCCREATE) self->window_ = window;
  const Com<IUnknown> alive = self->owner_.Life();
  if (message == WM_NCDESTROY) {
    com::ForgetWindowObject(window);
    self->window_ = nullptr;
    return DefWindowProcW(window, message, wParam, lParam);
  }
  LRESULT result = 0;
  const HRESULT code = Guard([&]() -> HRESULT {
    const std::optional<LRESULT> done = self->owner_.OnWindowMessage(message, wParam, lParam);
    result = done ? *done : DefWindowProcW(window, message, wParam, lParam);
    return S_OK;
  });
  return SUCCEEDED(code) ? result : 0;
}

}  // namespace qrn::host
