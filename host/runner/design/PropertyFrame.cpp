#include "host/runner/design/PropertyFrame.h"

// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

#include "com/Handles.h"
#include "com/WindowObject.h"
#include "host/runner/InputEvents.h"
#include "host/runner/WindowClass.h"

namespace qrn::host {
namespace {

constexpr wchar_t kPagesFrame[] = L"QrnPropertyFrame";
// Of a screen of 96 pixels an inch.
constexpr int kMargin = 8;
constexpr int kButtonWidth = 80;
constexpr int kButtonHeight = 24;
constexpr int kTabsHeight = 32;
constexpr int kApplyId = 3;
constexpr int kTabsId = 10;
constexpr SIZE kLeastRoom{240, 120};

struct ButtonRow {
  int id;
  const wchar_t* text;
};

constexpr ButtonRow kButtons[] = {
    {IDOK, L"OK"}, {IDCANCEL, L"キャンセル"}, {kApplyId, L"適用(&A)"}};

// The sizes above on the screen that there is.
struct Sizes {
  int margin = Scaled(kMargin);
  int width = Scaled(kButtonWidth);
  int height = Scaled(kButtonHeight);
  int tabs = Scaled(kTabsHeight);

  static int Scaled(int pixels) {
    return MulDiv(pixels, GetDeviceCaps(com::WindowDc(nullptr).get(), LOGPIXELSX), 96);
  }
};

}  // namespace

PropertyFrame::PropertyFrame(std::span<IUnknown* const> objects, ControlClasses& classes)
    : pages_(objects, classes, [this] { ShowDirty(); }) {}

PropertyFrame::~PropertyFrame() {
  pages_.Close();
  if (window_) DestroyWindow(window_);
}

HWND PropertyFrame::MakeChild(const wchar_t* className, const wchar_t* text, DWORD style,
                              RECT place, int id) {
  HWND child = CreateWindowExW(0, className, text, WS_CHILD | WS_VISIBLE | style, place.left,
                               place.top, place.right - place.left, place.bottom - place.top,
                               window_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                               GetModuleHandleW(nullptr), nullptr);
  SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(HandleOf(font_.get())), FALSE);
  return child;
}

void PropertyFrame::MakeTabs(const RECT& place) {
  tabs_ = MakeChild(WC_TABCONTROLW, L"", WS_CLIPSIBLINGS | WS_TABSTOP, place, kTabsId);
  for (size_t i = 0; i < pages_.count(); ++i) {
    std::wstring title = pages_.Title(i);
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = title.data();
    SendMessageW(tabs_, TCM_INSERTITEMW, i, reinterpret_cast<LPARAM>(&item));
  }
  area_ = place;
  TabCtrl_AdjustRect(tabs_, FALSE, &area_);
}

void PropertyFrame::MakeButtons(POINT rightTop) {
  const Sizes sizes;
  const int count = static_cast<int>(std::size(kButtons));
  LONG left = rightTop.x - count * sizes.width - (count - 1) * sizes.margin;
  for (const ButtonRow& row : kButtons) {
    const RECT place{left, rightTop.y, left + sizes.width, rightTop.y + sizes.height};
    const DWORD face = row.id == IDOK ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
    MakeChild(L"Button", row.text, face | WS_TABSTOP, place, row.id);
    left += sizes.width + sizes.margin;
  }
}

// The buttons stand before the tabs: that is the order of the Tab key.
void PropertyFrame::MakeWindows(HWND owner, const std::wstring& title) {
  RegisterWindowClass(kPagesFrame, &PropertyFrame::Procedure,
                      reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1));
  const INITCOMMONCONTROLSEX common{sizeof common, ICC_TAB_CLASSES};
  InitCommonControlsEx(&common);
  const SIZE room = pages_.Room(kLeastRoom);
  const Sizes sizes;
  // About what the tabs take; AdjustRect corrects it once they stand.
  const RECT tabs{sizes.margin, sizes.margin, 2 * sizes.margin + room.cx,
                  sizes.margin + room.cy + sizes.tabs};
  RECT outer{0, 0, tabs.right + sizes.margin, tabs.bottom + sizes.height + 2 * sizes.margin};
  const DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
  AdjustWindowRectEx(&outer, style, FALSE, WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT);
  RECT above{};
  if (owner) GetWindowRect(owner, &above);
  window_ =
      CreateWindowExW(WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT, kPagesFrame, title.c_str(), style,
                      above.left + 24, above.top + 24, outer.right - outer.left,
                      outer.bottom - outer.top, owner, nullptr, GetModuleHandleW(nullptr), this);
  MakeButtons({tabs.right, tabs.bottom + sizes.margin});
  MakeTabs(tabs);
}

void PropertyFrame::ShowPage(size_t place) {
  pages_.Show(place, window_, area_);
  ShowDirty();
}

// The keyboard goes along with the page.
void PropertyFrame::TurnPage(bool back) {
  const size_t count = pages_.count();
  const size_t place = (pages_.shown() + (back ? count - 1 : 1)) % count;
  TabCtrl_SetCurSel(tabs_, static_cast<int>(place));
  ShowPage(place);
  SetFocus(GetNextDlgTabItem(window_, nullptr, FALSE));
}

void PropertyFrame::ShowDirty() {
  const bool dirty = pages_.Dirty();
  HWND apply = window_ ? GetDlgItem(window_, kApplyId) : nullptr;
  // Pressed by a key it has the keyboard, which must not go with it.
  if (!dirty && apply && GetFocus() == apply) SetFocus(GetDlgItem(window_, IDOK));
  if (apply) EnableWindow(apply, dirty);
}

// The keyboard is on what had it before another window came in front, at first on the first stop.
void PropertyFrame::HandKeyboardOn() {
  const bool usable = IsChild(window_, last_) && IsWindowVisible(last_) && IsWindowEnabled(last_);
  SetFocus(usable ? last_ : GetNextDlgTabItem(window_, nullptr, FALSE));
}

bool PropertyFrame::Apply() {
  const bool all = pages_.Apply();
  ShowDirty();
  return all;
}

void PropertyFrame::OnCommand(int id) {
  if (id == kApplyId) Apply();
  if (id == IDCANCEL || (id == IDOK && Apply())) closed_ = true;
}

LRESULT PropertyFrame::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_COMMAND:
      OnCommand(LOWORD(wParam));
      return 0;
    case WM_NOTIFY:
      if (reinterpret_cast<const NMHDR*>(lParam)->code == static_cast<UINT>(TCN_SELCHANGE)) {
        ShowPage(static_cast<size_t>(TabCtrl_GetCurSel(tabs_)));
      }
      return 0;
    case WM_CLOSE:
      closed_ = true;
      return 0;
    case WM_ACTIVATE:
      if (LOWORD(wParam) == WA_INACTIVE) last_ = GetFocus();
      return DefWindowProcW(window_, message, wParam, lParam);
    case WM_SETFOCUS:
      HandKeyboardOn();
      return 0;
    case DM_GETDEFID:
      return MAKELRESULT(IDOK, DC_HASDEFID);
    default:
      return DefWindowProcW(window_, message, wParam, lParam);
  }
}

LRESULT CALLBACK PropertyFrame::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* frame = com::WindowObject<PropertyFrame>(window, message, lParam);
  if (!frame || message == WM_NCDESTROY) return DefWindowProcW(window, message, wParam, lParam);
  if (message == WM_NCCREATE) frame->window_ = window;
  LRESULT result = 0;
  Guard([&]() -> HRESULT {
    result = frame->OnMessage(message, wParam, lParam);
    return S_OK;
  });
  return result;
}

bool PropertyFrame::TakesKey(MSG& message) {
  if (!IsKeyMessage(message.message)) return false;
  const bool turns = message.message == WM_KEYDOWN && GetKeyState(VK_CONTROL) < 0;
  if (turns &&
      (message.wParam == VK_TAB || message.wParam == VK_NEXT || message.wParam == VK_PRIOR)) {
    TurnPage(message.wParam == VK_PRIOR || (message.wParam == VK_TAB && GetKeyState(VK_SHIFT) < 0));
    return true;
  }
  return pages_.TakesKey(message);
}

void PropertyFrame::Run(HWND owner, const std::wstring& title) {
  MakeWindows(owner, title);
  ShowPage(0);
  if (owner) EnableWindow(owner, FALSE);
  ShowWindow(window_, SW_SHOW);
  MSG message{};
  while (!closed_) {
    const BOOL got = GetMessageW(&message, nullptr, 0, 0);
    if (got == 0) {
      PostQuitMessage(static_cast<int>(message.wParam));
      break;
    }
    if (got < 0 || TakesKey(message) || IsDialogMessageW(window_, &message)) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  if (owner) EnableWindow(owner, TRUE);
}

}  // namespace qrn::host
