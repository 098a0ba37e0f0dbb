#include "host/runner/design/PropertyPages.h"

// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

#include <algorithm>
#include <vector>

#include "host/container/Fonts.h"
#include "host/runner/InputEvents.h"
#include "host/runner/WindowClass.h"
#include "host/runner/design/PropertyPageSite.h"

namespace qrn::host {
namespace {

constexpr wchar_t kPagesClass[] = L"QrnPropertyFrame";
constexpr int kMargin = 8;
constexpr int kButtonWidth = 80;
constexpr int kButtonHeight = 24;
constexpr int kApplyId = 3;
constexpr int kTabsId = 10;

struct ButtonRow {
  int id;
  const wchar_t* text;
};

constexpr ButtonRow kButtons[] = {
    {IDOK, L"OK"}, {IDCANCEL, L"キャンセル"}, {kApplyId, L"適用(&A)"}};

struct Page {
  Com<IPropertyPage> page;
  Com<PropertyPageSite> site;
  std::wstring title;
  SIZE size{};
  bool active = false;
};

class PropertyFrame {
 public:
  PropertyFrame(IUnknown* control, ControlClasses& classes);
  ~PropertyFrame();

  bool HasPages() const noexcept { return !pages_.empty(); }
  void Run(HWND owner, const std::wstring& title);

 private:
  void AddPage(IUnknown* control, ControlClasses& classes, const GUID& id);
  void MakeWindows(HWND owner, const std::wstring& title);
  HWND MakeChild(const wchar_t* className, const wchar_t* text, DWORD style, RECT place, int id);
  void ShowPage(size_t place);
  void OnCommand(int id);
  bool Apply();
  void ShowDirty();
  void HandKeyboardOn();
  bool OfferToPage(MSG& message);
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  std::vector<Page> pages_;
  size_t shown_ = 0;
  HWND window_ = nullptr;
  HWND tabs_ = nullptr;
  HWND last_ = nullptr;  // had the keyboard when another window came in front
  Com<IFontDisp> font_ = DefaultFont();
  RECT area_{};  // of a page, in the frame's client area
  bool closed_ = false;
};

PropertyFrame::PropertyFrame(IUnknown* control, ControlClasses& classes) {
  const Com<ISpecifyPropertyPages> specify = Query<ISpecifyPropertyPages>(control);
  CAUUID ids{};
  if (!specify || FAILED(specify->GetPages(&ids))) return;
  const com::TaskMemory<GUID> memory(ids.pElems);
  for (ULONG i = 0; i < ids.cElems; ++i) AddPage(control, classes, ids.pElems[i]);
}

PropertyFrame::~PropertyFrame() {
  for (Page& page : pages_) {
    page.site->Detach();
    if (page.active) page.page->Deactivate();
    page.page->SetObjects(0, nullptr);
    page.page->SetPageSite(nullptr);
  }
  if (window_) DestroyWindow(window_);
}

void PropertyFrame::AddPage(IUnknown* control, ControlClasses& classes, const GUID& id) {
  Page entry;
  entry.page = Query<IPropertyPage>(classes.Make(id));
  if (!entry.page) return;
  entry.site = MakeCom<PropertyPageSite>([this] { ShowDirty(); });
  entry.page->SetPageSite(entry.site.get());
  entry.page->SetObjects(1, &control);
  PROPPAGEINFO info{};
  info.cb = sizeof info;
  if (FAILED(entry.page->GetPageInfo(&info))) {
    entry.page->SetPageSite(nullptr);
    return;
  }
  const com::TaskMemory<OLECHAR> title(info.pszTitle);
  const com::TaskMemory<OLECHAR> doc(info.pszDocString);
  const com::TaskMemory<OLECHAR> help(info.pszHelpFile);
  entry.title = info.pszTitle ? info.pszTitle : L"";
  entry.size = info.size;
  pages_.push_back(std::move(entry));
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

void PropertyFrame::MakeWindows(HWND owner, const std::wstring& title) {
  RegisterWindowClass(kPagesClass, &PropertyFrame::Procedure,
                      reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1));
  SIZE largest{240, 120};
  for (const Page& page : pages_) {
    largest.cx = std::max(largest.cx, page.size.cx);
    largest.cy = std::max(largest.cy, page.size.cy);
  }
  RECT tabs{0, 0, largest.cx, largest.cy};
  TabCtrl_AdjustRect(nullptr, TRUE, &tabs);
  const INITCOMMONCONTROLSEX common{sizeof common, ICC_TAB_CLASSES};
  InitCommonControlsEx(&common);
  // The tabs' rows are 24 pixels high whatever the font; AdjustRect corrects it once they stand.
  const RECT tabPlace{kMargin, kMargin, kMargin + largest.cx + 8, kMargin + largest.cy + 32};
  RECT outer{0, 0, tabPlace.right + kMargin, tabPlace.bottom + kButtonHeight + 2 * kMargin};
  const DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
  AdjustWindowRectEx(&outer, style, FALSE, WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT);
  RECT above{};
  if (owner) GetWindowRect(owner, &above);
  window_ =
      CreateWindowExW(WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT, kPagesClass, title.c_str(), style,
                      above.left + 24, above.top + 24, outer.right - outer.left,
                      outer.bottom - outer.top, owner, nullptr, GetModuleHandleW(nullptr), this);
  tabs_ = MakeChild(WC_TABCONTROLW, L"", WS_CLIPSIBLINGS | WS_TABSTOP, tabPlace, kTabsId);
  for (size_t i = 0; i < pages_.size(); ++i) {
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = pages_[i].title.data();
    SendMessageW(tabs_, TCM_INSERTITEMW, i, reinterpret_cast<LPARAM>(&item));
  }
  area_ = tabPlace;
  TabCtrl_AdjustRect(tabs_, FALSE, &area_);
  LONG right = tabPlace.right;
  for (size_t i = std::size(kButtons); i > 0; --i) {
    const RECT place{right - kButtonWidth, tabPlace.bottom + kMargin, right,
                     tabPlace.bottom + kMargin + kButtonHeight};
    const DWORD face = kButtons[i - 1].id == IDOK ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
    MakeChild(L"Button", kButtons[i - 1].text, face | WS_TABSTOP, place, kButtons[i - 1].id);
    right -= kButtonWidth + kMargin;
  }
}

void PropertyFrame::ShowPage(size_t place) {
  if (place >= pages_.size()) return;
  if (pages_[shown_].active) pages_[shown_].page->Show(SW_HIDE);
  shown_ = place;
  Page& page = pages_[place];
  if (!page.active) {
    page.active = SUCCEEDED(page.page->Activate(window_, &area_, FALSE));
    if (page.active) page.page->Move(&area_);
  }
  if (page.active) page.page->Show(SW_SHOWNORMAL);
  ShowDirty();
}

void PropertyFrame::ShowDirty() {
  const bool dirty = std::any_of(pages_.begin(), pages_.end(), [](const Page& page) {
    return page.active && page.page->IsPageDirty() == S_OK;
  });
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
  bool all = true;
  for (const Page& page : pages_) {
    if (!page.active || page.page->IsPageDirty() != S_OK) continue;
    all = SUCCEEDED(page.page->Apply()) && all;
  }
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
  if (message == WM_NCCREATE) {
    const auto* created = reinterpret_cast<const CREATESTRUCTW*>(lParam);
    static_cast<PropertyFrame*>(created->lpCreateParams)->window_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created->lpCreateParams));
  }
  auto* frame = reinterpret_cast<PropertyFrame*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (!frame || message == WM_NCDESTROY) return DefWindowProcW(window, message, wParam, lParam);
  LRESULT result = 0;
  Guard([&]() -> HRESULT {
    result = frame->OnMessage(message, wParam, lParam);
    return S_OK;
  });
  return result;
}

bool PropertyFrame::OfferToPage(MSG& message) {
  return IsKeyMessage(message.message) && pages_[shown_].active &&
         pages_[shown_].page->TranslateAccelerator(&message) == S_OK;
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
    if (got < 0 || OfferToPage(message) || IsDialogMessageW(window_, &message)) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  if (owner) EnableWindow(owner, TRUE);
}

}  // namespace

bool ShowPropertyPages(HWND owner, const std::wstring& controlName, IUnknown* control,
                       ControlClasses& classes) {
  PropertyFrame frame(control, classes);
  if (!frame.HasPages()) return false;
  frame.Run(owner, controlName + L" プロパティ");
  return true;
}

bool HasPropertyPages(IUnknown* control, ControlClasses& classes) {
  return PropertyFrame(control, classes).HasPages();
}

}  // namespace qrn::host
