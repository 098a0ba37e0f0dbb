// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

#include "com/WindowText.h"
#include "host/runner/Form.h"
#include "host/runner/InputEvents.h"
#include "host/runner/Painting.h"
#include "host/runner/furniture/Furniture.h"

namespace qrn::host {
namespace {

constexpr wchar_t kPieceProperty[] = L"QrnFurniture";
constexpr UINT_PTR kSubclassId = 1;

}  // namespace

WindowPiece* WindowPiece::Of(HWND window) noexcept {
  return static_cast<WindowPiece*>(GetPropW(window, kPieceProperty));
}

void WindowPiece::Detach() noexcept {
  Destroy();
  Furniture::Detach();
}

bool WindowPiece::Create() {
  const WindowKind kind = Kind();
  const RECT place = Place();
  DWORD style = kind.style | WS_CHILD | WS_CLIPSIBLINGS;
  if (visible()) style |= WS_VISIBLE;
  if (!look().enabled) style |= WS_DISABLED;
  window_ = CreateWindowExW(kind.extended, kind.className, WindowTitle().c_str(), style, place.left,
                            place.top, place.right - place.left, place.bottom - place.top,
                            ParentWindow(), nullptr, GetModuleHandleW(nullptr), nullptr);
  if (!window_) return false;
  SetPropW(window_, kPieceProperty, this);
  SetWindowSubclass(window_, &WindowPiece::SubclassProcedure, kSubclassId,
                    reinterpret_cast<DWORD_PTR>(this));
  SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(FontHandle()), FALSE);
  OnCreated();
  return true;
}

void WindowPiece::Destroy() noexcept {
  if (HWND closing = std::exchange(window_, nullptr)) {
    RemovePropW(closing, kPieceProperty);
    RemoveWindowSubclass(closing, &WindowPiece::SubclassProcedure, kSubclassId);
    DestroyWindow(closing);
  }
}

bool WindowPiece::TakeFocus() {
  if (!CanTakeFocus()) return false;
  return CameBy([this] { return ::SetFocus(window_), true; });
}

HBRUSH WindowPiece::OnColours(HDC dc) {
  SetTextColor(dc, ColourOf(look().foreColor));
  SetBkColor(dc, ColourOf(look().backColor));
  if (!background_) background_.reset(CreateSolidBrush(ColourOf(look().backColor)));
  return background_.get();
}

void WindowPiece::OnLook() {
  if (!window_) return;
  background_.reset();
  EnableWindow(window_, look().enabled);
  SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(FontHandle()), TRUE);
  InvalidateRect(window_, nullptr, TRUE);
  form().keyboard().Keep();
}

void WindowPiece::OnText() {
  if (!window_) return;
  SetWindowTextW(window_, look().text.c_str());
  InvalidateRect(window_, nullptr, TRUE);
}

void WindowPiece::OnMoved() {
  if (!window_) return;
  const RECT place = Place();
  SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void WindowPiece::OnShown() {
  if (window_) ShowWindow(window_, visible() ? SW_SHOWNA : SW_HIDE);
}

std::wstring WindowPiece::WindowText() const { return com::TextOfWindow(window_); }

std::optional<LRESULT> WindowPiece::OnKey(UINT message, WPARAM wParam, LPARAM lParam) {
  const WPARAM left = RaiseKeyEvent(
      message, wParam,
      [this](const wchar_t* event, DISPPARAMS& arguments) { Raise(event, arguments); });
  if (left == wParam) return std::nullopt;
  return left == 0 || !window_ ? 0 : DefSubclassProc(window_, message, left, lParam);
}

std::optional<LRESULT> WindowPiece::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_SETFOCUS:
      form().OnFocus(*this);
      return std::nullopt;
    case WM_KEYDOWN:
    case WM_KEYUP:
    case WM_CHAR:
      return OnKey(message, wParam, lParam);
    default:
      RaiseMouse(message, wParam,
                 {static_cast<int16_t>(LOWORD(lParam)), static_cast<int16_t>(HIWORD(lParam))});
      return std::nullopt;
  }
}

LRESULT CALLBACK WindowPiece::SubclassProcedure(HWND window, UINT message, WPARAM wParam,
                                                LPARAM lParam, UINT_PTR, DWORD_PTR data) {
  const Com<WindowPiece> piece(reinterpret_cast<WindowPiece*>(data));
  std::optional<LRESULT> done;
  Guard([&]() -> HRESULT {
    if (piece->window_) done = piece->OnMessage(message, wParam, lParam);
    return S_OK;
  });
  return done ? *done : DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace qrn::host
