#include "host/designer/wizard/WizardPage.h"

#include <ole2.h>
#include <shlobj.h>

#include "com/Com.h"
#include "com/Guard.h"
#include "com/Text.h"
#include "com/WindowText.h"

namespace qrn::designer {

HPROPSHEETPAGE WizardPage::Handle() {
  template_.clear();
  template_.emplace_back(kPageWidth, kPageHeight, Pieces());
  titleText_ = Say(title_);
  hintText_ = Say(hint_);
  PROPSHEETPAGEW page{};
  page.dwSize = sizeof page;
  page.dwFlags = PSP_DLGINDIRECT | PSP_USETITLE | PSP_USEHEADERTITLE | PSP_USEHEADERSUBTITLE;
  page.hInstance = GetModuleHandleW(nullptr);
  page.pResource = template_.front().get();
  page.pfnDlgProc = &WizardPage::Procedure;
  page.lParam = reinterpret_cast<LPARAM>(this);
  const std::wstring caption = Say(WizardText::Title);
  page.pszTitle = caption.c_str();
  page.pszHeaderTitle = titleText_.c_str();
  page.pszHeaderSubTitle = hintText_.c_str();
  return CreatePropertySheetPageW(&page);
}

std::string WizardPage::Text(int id) const { return com::Utf8(com::TextOfWindow(Item(id))); }

void WizardPage::PutText(int id, const std::string& utf8) {
  SetWindowTextW(Item(id), com::Wide(utf8).c_str());
}

bool WizardPage::Tell(const std::wstring& text, UINT kind) const {
  const int answer =
      MessageBoxW(GetParent(window_), text.c_str(), Say(WizardText::Title).c_str(), kind);
  return answer == IDOK || answer == IDYES;
}

void WizardPage::BrowseFolder(int id, WizardText hint) {
  const std::wstring text = Say(hint);
  BROWSEINFOW request{};
  request.hwndOwner = GetParent(window_);
  request.lpszTitle = text.c_str();
  request.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
  const com::TaskMemory<ITEMIDLIST> chosen(SHBrowseForFolderW(&request));
  wchar_t path[MAX_PATH] = L"";
  if (chosen && SHGetPathFromIDListW(chosen.get(), path)) SetWindowTextW(Item(id), path);
}

INT_PTR WizardPage::Answer(LONG_PTR result) const {
  SetWindowLongPtrW(window_, DWLP_MSGRESULT, result);
  return TRUE;
}

INT_PTR WizardPage::OnSheet(const NMHDR& notice) {
  switch (notice.code) {
    case PSN_SETACTIVE:
      PropSheet_SetWizButtons(GetParent(window_), Buttons());
      Enter();
      return Answer(0);
    case PSN_WIZNEXT:
      return Answer(Leave() ? 0 : -1);
    case PSN_WIZFINISH:
      return Answer(Leave() ? FALSE : TRUE);
    default:
      OnNotice(notice);
      return FALSE;
  }
}

INT_PTR WizardPage::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_INITDIALOG:
      Begin();
      return TRUE;
    case WM_COMMAND:
      OnCommand(LOWORD(wParam), HIWORD(wParam));
      return TRUE;
    case WM_NOTIFY:
      return OnSheet(*reinterpret_cast<const NMHDR*>(lParam));
    default:
      return FALSE;
  }
}

INT_PTR CALLBACK WizardPage::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    const auto* page = reinterpret_cast<const PROPSHEETPAGEW*>(lParam);
    reinterpret_cast<WizardPage*>(page->lParam)->window_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, page->lParam);
  }
  auto* page = reinterpret_cast<WizardPage*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  INT_PTR result = FALSE;
  if (page) {
    com::Guard([&]() -> HRESULT {
      result = page->OnMessage(message, wParam, lParam);
      return S_OK;
    });
  }
  return result;
}

void MakeTickList(HWND list) {
  ListView_SetExtendedListViewStyle(list, LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT);
  RECT client{};
  GetClientRect(list, &client);
  LVCOLUMNW column{};
  column.mask = LVCF_WIDTH;
  column.cx = client.right - GetSystemMetrics(SM_CXVSCROLL);
  SendMessageW(list, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
}

void ShowTicks(HWND list, const std::vector<WizardChoices::Item>& items) {
  ListView_DeleteAllItems(list);
  for (size_t at = 0; at < items.size(); ++at) {
    std::wstring name = com::Wide(items[at].name);
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = static_cast<int>(at);
    item.pszText = name.data();
    SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    ListView_SetCheckState(list, static_cast<int>(at), items[at].chosen);
  }
}

bool TickChanged(const NMHDR& notice, size_t* at, bool* ticked) {
  if (notice.code != static_cast<UINT>(LVN_ITEMCHANGED)) return false;
  const auto& change = reinterpret_cast<const NMLISTVIEW&>(notice);
  const UINT before = change.uOldState & LVIS_STATEIMAGEMASK;
  const UINT now = change.uNewState & LVIS_STATEIMAGEMASK;
  if (change.iItem < 0 || before == 0 || now == 0 || before == now) return false;
  *at = static_cast<size_t>(change.iItem);
  *ticked = now == INDEXTOSTATEIMAGEMASK(2);
  return true;
}

}  // namespace qrn::designer
