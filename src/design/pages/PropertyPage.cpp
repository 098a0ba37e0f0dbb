#include "design/pages/PropertyPage.h"

#include "com/Guard.h"
#include "com/Module.h"
#include "com/Text.h"
#include "design/pages/PageFont.h"
#include "design/pages/PageKeys.h"

namespace qrn::design {
namespace {

using com::Com;
using com::Guard;

constexpr UINT kHelpFileText = 133;

LPOLESTR HelpFile() {
  wchar_t name[64] = L"";
  LoadStringW(com::ModuleInstance(), kHelpFileText, name, 64);
  return com::CopyToTaskMemory(name);
}

SIZE SizeOf(HWND window) noexcept {
  RECT place{};
  GetWindowRect(window, &place);
  return {place.right - place.left, place.bottom - place.top};
}

}  // namespace

// Its window hears no more of the page, which has no references to count.
PropertyPage::~PropertyPage() {
  if (!window_) return;
  SetWindowLongPtrW(window_, DWLP_USER, 0);
  DestroyWindow(window_);
}

void* PropertyPage::Find(REFIID id) noexcept {
  return id == __uuidof(IPropertyPage) ? static_cast<IPropertyPage*>(this) : Object::Find(id);
}

STDMETHODIMP PropertyPage::SetPageSite(IPropertyPageSite* site) {
  site_ = Com<IPropertyPageSite>(site);
  return S_OK;
}

HWND PropertyPage::MakeDialog(HWND parent, PropertyPage* page) const noexcept {
  return CreateDialogParamW(com::ModuleInstance(), MAKEINTRESOURCEW(layout_.dialog), parent,
                            &Procedure, reinterpret_cast<LPARAM>(page));
}

STDMETHODIMP PropertyPage::Activate(HWND parent, LPCRECT place, BOOL) {
  if (!place) return E_POINTER;
  if (window_) return E_UNEXPECTED;
  return Guard([&]() -> HRESULT {
    window_ = MakeDialog(parent, this);
    if (!window_) return E_FAIL;
    ShowObjects();
    return Move(place);
  });
}

STDMETHODIMP PropertyPage::Deactivate() {
  if (!window_) return E_UNEXPECTED;
  DestroyWindow(window_);
  return S_OK;
}

// Of a dialog that nobody sees; none can be made without a parent.
SIZE PropertyPage::Measure() const noexcept {
  if (sizePx_.cx != 0) return sizePx_;
  const HWND dialog = MakeDialog(GetDesktopWindow(), nullptr);
  const SIZE size = dialog ? SizeOf(dialog) : SIZE{};
  if (dialog) DestroyWindow(dialog);
  return size;
}

STDMETHODIMP PropertyPage::GetPageInfo(PROPPAGEINFO* info) {
  if (!info) return E_POINTER;
  *info = PROPPAGEINFO{};
  info->cb = sizeof *info;
  info->pszTitle = com::CopyToTaskMemory(com::AsWide(layout_.title).data());
  info->pszHelpFile = HelpFile();
  info->size = Measure();
  return info->pszTitle && info->pszHelpFile ? S_OK : E_OUTOFMEMORY;
}

STDMETHODIMP PropertyPage::SetObjects(ULONG count, IUnknown** objects) {
  if (count > 0 && !objects) return E_POINTER;
  return Guard([&] {
    objects_.Set(count, objects);
    if (window_ && count > 0) ShowObjects();
    return S_OK;
  });
}

void PropertyPage::ShowObjects() {
  dialog_ = std::make_shared<PageDialog>(window_, layout_, objects_.Form());
  dialog_->Open(objects_);
  dirty_ = false;
}

STDMETHODIMP PropertyPage::Show(UINT command) {
  if (!window_) return E_UNEXPECTED;
  ShowWindow(window_, static_cast<int>(command));
  return S_OK;
}

STDMETHODIMP PropertyPage::Move(LPCRECT place) {
  if (!place) return E_POINTER;
  if (!window_) return E_UNEXPECTED;
  MoveWindow(window_, place->left, place->top, place->right - place->left,
             place->bottom - place->top, TRUE);
  return S_OK;
}

// The objects may run handlers, which may end the page's window or give it other objects.
STDMETHODIMP PropertyPage::Apply() {
  if (!dialog_) return S_OK;
  const Com<IUnknown> alive(this);
  return Guard([&] {
    const PageObjects objects = objects_;
    for (const PropertyValue& value : dialog_->Values()) objects.Put(value.property, value.value);
    dirty_ = false;
    return S_OK;
  });
}

STDMETHODIMP PropertyPage::TranslateAccelerator(MSG* message) {
  if (!message) return E_POINTER;
  const Com<IUnknown> alive(this);
  return RunPageKey(window_, *message) ? S_OK : S_FALSE;
}

STDMETHODIMP PropertyPage::EditProperty(DISPID property) {
  if (!window_) return E_UNEXPECTED;
  return Guard([&] {
    for (const PageControl& row : layout_.controls) {
      if (objects_.IdOf(row.property) != property) continue;
      SetFocus(GetDlgItem(window_, row.id));
      return S_OK;
    }
    return E_INVALIDARG;
  });
}

void PropertyPage::TellSite(DWORD status) {
  const Com<IPropertyPageSite> site = site_;
  if (site) site->OnStatusChange(status);
}

// The mark is told once, that there is something to look at each time.
void PropertyPage::MarkDirty() {
  const bool first = !std::exchange(dirty_, true);
  if (first) TellSite(PROPPAGESTATUS_DIRTY);
  TellSite(PROPPAGESTATUS_DIRTY | PROPPAGESTATUS_VALIDATE);
}

bool PropertyPage::OnMessage(UINT message, WPARAM wParam, LPARAM) {
  switch (message) {
    case WM_COMMAND:
      if (const auto inside = dialog_;
          inside && inside->OnCommand(LOWORD(wParam), HIWORD(wParam))) {
        MarkDirty();
      }
      return true;
    case WM_SETFONT:
      sizePx_ = GiveFont(window_, reinterpret_cast<HFONT>(wParam), Measure());
      return true;
    case WM_NCDESTROY:
      window_ = nullptr;
      dialog_.reset();
      sizePx_ = {};
      dirty_ = false;
      return false;
    default:
      return false;
  }
}

// A dialog without a page is one that is measured.
INT_PTR CALLBACK PropertyPage::Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(dialog, DWLP_USER, lParam);
    return FALSE;
  }
  auto* page = reinterpret_cast<PropertyPage*>(GetWindowLongPtrW(dialog, DWLP_USER));
  if (!page) return FALSE;
  const Com<IUnknown> alive(page);
  bool done = false;
  Guard([&] {
    done = page->OnMessage(message, wParam, lParam);
    return S_OK;
  });
  return done ? TRUE : FALSE;
}

}  // namespace qrn::design
