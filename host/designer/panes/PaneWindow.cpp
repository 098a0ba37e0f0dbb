#include "host/designer/panes/PaneWindow.h"

#include "com/Com.h"
#include "com/Guard.h"
#include "com/Text.h"
#include "com/WindowObject.h"
#include "com/WindowText.h"

namespace qrn::designer {
namespace {

constexpr wchar_t kPaneClass[] = L"QrnDesignerPane";

void RegisterPaneClass(WNDPROC procedure) noexcept {
  WNDCLASSEXW kind{};
  kind.cbSize = sizeof kind;
  kind.style = CS_DBLCLKS;
  kind.lpfnWndProc = procedure;
  kind.hInstance = GetModuleHandleW(nullptr);
  kind.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
  kind.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  kind.lpszClassName = kPaneClass;
  RegisterClassExW(&kind);
}

}  // namespace

void PaneWindow::Close() noexcept {
  if (!window_) return;
  com::ForgetWindowObject(window_);
  DestroyWindow(window_);
}

void PaneWindow::Make(HWND parent, DWORD style) {
  RegisterPaneClass(&PaneWindow::Procedure);
  CreateWindowExW(WS_EX_CONTROLPARENT, kPaneClass, L"", WS_CHILD | WS_CLIPCHILDREN | style, 0, 0, 0,
                  0, parent, nullptr, GetModuleHandleW(nullptr), this);
  if (!window_) throw com::Failure{E_FAIL};
}

SIZE PaneWindow::ClientSize() const noexcept {
  RECT client{};
  GetClientRect(window_, &client);
  return {client.right, client.bottom};
}

LRESULT CALLBACK PaneWindow::Procedure(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
  auto* pane = com::WindowObject<PaneWindow>(window, id, lParam);
  if (pane && id == WM_NCCREATE) pane->window_ = window;
  if (pane && id == WM_NCDESTROY) pane->window_ = nullptr;
  com::Message message{window, id, wParam, lParam};
  bool taken = false;
  if (pane && id != WM_NCCREATE && id != WM_CREATE && id != WM_NCDESTROY) {
    com::Guard([&]() -> HRESULT {
      taken = pane->OnMessage(message);
      return S_OK;
    });
  }
  return taken ? message.result : DefWindowProcW(window, id, wParam, lParam);
}

HWND MakeControl(HWND parent, const wchar_t* className, DWORD style, int id, HFONT font) {
  HWND control = CreateWindowExW(0, className, L"", WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0,
                                 parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                                 GetModuleHandleW(nullptr), nullptr);
  if (!control) throw com::Failure{E_FAIL};
  SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  return control;
}

void PlaceWindow(HWND window, const RECT& place) noexcept {
  SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void SetText(HWND window, const std::string& utf8) {
  SetWindowTextW(window, com::Wide(utf8).c_str());
}

std::string TextOf(HWND window) { return com::Utf8(com::TextOfWindow(window)); }

void AddLine(HWND comboBox, const std::string& utf8) {
  SendMessageW(comboBox, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(com::Wide(utf8).c_str()));
}

com::GdiFont BoldOf(HFONT font) noexcept {
  LOGFONTW look{};
  GetObjectW(font, sizeof look, &look);
  look.lfWeight = FW_BOLD;
  return com::GdiFont(CreateFontIndirectW(&look));
}

int LineHeight(HFONT font) noexcept {
  const com::WindowDc screen(nullptr);
  const com::Selected selected(screen.get(), font);
  TEXTMETRICW metrics{};
  GetTextMetricsW(screen.get(), &metrics);
  return metrics.tmHeight;
}

int Scaled(int pixels) noexcept {
  return MulDiv(pixels, GetDeviceCaps(com::WindowDc(nullptr).get(), LOGPIXELSY), 96);
}

bool LiesIn(HWND inner, HWND outer) noexcept { return inner == outer || IsChild(outer, inner); }

bool IsPressed(int virtualKey) noexcept { return GetKeyState(virtualKey) < 0; }

}  // namespace qrn::designer
