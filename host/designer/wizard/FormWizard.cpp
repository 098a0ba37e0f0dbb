#include "host/designer/wizard/FormWizard.h"

// clang-format off
#include <windows.h>
#include <commctrl.h>
#include <commdlg.h>
// clang-format on

#include <filesystem>

#include "com/Text.h"
#include "host/designer/wizard/WizardPage.h"
#include "host/form/FilePath.h"

namespace qrn::designer {
namespace {

constexpr DWORD kLabel = SS_LEFT;
constexpr DWORD kField = WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL;
constexpr DWORD kButton = WS_TABSTOP | BS_PUSHBUTTON;
constexpr DWORD kTicks =
    WS_BORDER | WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_NOCOLUMNHEADER;

enum ItemId : WORD {
  kDirectoryId = 100,
  kBrowseDirectoryId,
  kTablesId,
  kFieldsId,
  kUpId,
  kDownId,
  kAllId,
  kNothingId,
  kKeysId,
  kDetailId,
  kGridId,
  kFileId,
  kBrowseFileId,
  kPicturesId,
  kBrowsePicturesId,
  kJapaneseId,
  kEnglishId,
  kLabelId = 0xFFFF
};

class DirectoryPage final : public WizardPage {
 public:
  DirectoryPage(WizardChoices& choices, Language language)
      : WizardPage(choices, language, WizardText::DirectoryTitle, WizardText::DirectoryHint) {}

 private:
  std::vector<DialogPiece> Pieces() const override {
    return {
        {L"Static", kLabel, 0, 6, kPiecesWidth, 10, kLabelId, Say(WizardText::Directory)},
        {L"Edit", kField, 0, 18, 200, 14, kDirectoryId, {}},
        {L"Button", kButton, 206, 18, 58, 14, kBrowseDirectoryId, Say(WizardText::Browse)},
    };
  }
  DWORD Buttons() const override { return PSWIZB_NEXT; }
  void OnCommand(int id, int) override {
    if (id == kBrowseDirectoryId) BrowseFolder(kDirectoryId, WizardText::BrowseDirectory);
  }
  bool Leave() override {
    const std::string directory = Text(kDirectoryId);
    if (choices_.PutDirectory(directory)) return true;
    Tell(Say(WizardText::NoDictionary, {directory}));
    SetFocus(Item(kDirectoryId));
    SendMessageW(Item(kDirectoryId), EM_SETSEL, 0, -1);
    return false;
  }
};

class TablePage final : public WizardPage {
 public:
  TablePage(WizardChoices& choices, Language language)
      : WizardPage(choices, language, WizardText::TableTitle, WizardText::TableHint) {}

 private:
  std::vector<DialogPiece> Pieces() const override {
    return {
        {L"Static", kLabel, 0, 0, kPiecesWidth, 10, kLabelId, Say(WizardText::Table)},
        {L"ListBox",
         WS_BORDER | WS_TABSTOP | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT,
         0,
         12,
         kPiecesWidth,
         136,
         kTablesId,
         {}},
    };
  }
  std::wstring Line(size_t place) const {
    const newform::Table& table = choices_.Table(place);
    return Say(WizardText::TableLine, {table.name, std::to_string(table.fields.size()),
                                       std::to_string(table.keys.size())});
  }
  void Enter() override {
    HWND list = Item(kTablesId);
    SendMessageW(list, LB_RESETCONTENT, 0, 0);
    for (const size_t place : choices_.tables()) {
      const LRESULT line =
          SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Line(place).c_str()));
      if (place == choices_.table()) SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(line), 0);
    }
  }
  void OnCommand(int id, int notice) override {
    if (id == kTablesId && notice == LBN_DBLCLK) {
      PropSheet_PressButton(GetParent(window()), PSBTN_NEXT);
    }
  }
  bool Leave() override {
    const LRESULT line = SendMessageW(Item(kTablesId), LB_GETCURSEL, 0, 0);
    if (line < 0) return false;
    choices_.PutTable(choices_.tables()[static_cast<size_t>(line)]);
    return true;
  }
};

class FieldsPage final : public WizardPage {
 public:
  FieldsPage(WizardChoices& choices, Language language)
      : WizardPage(choices, language, WizardText::FieldsTitle, WizardText::FieldsHint) {}

 private:
  std::vector<DialogPiece> Pieces() const override {
    return {
        {L"Static", kLabel, 0, 0, 200, 10, kLabelId, Say(WizardText::Fields)},
        {WC_LISTVIEWW, kTicks, 0, 12, 200, 130, kFieldsId, {}},
        {L"Button", kButton, 206, 12, 58, 14, kUpId, Say(WizardText::Up)},
        {L"Button", kButton, 206, 30, 58, 14, kDownId, Say(WizardText::Down)},
        {L"Button", kButton, 206, 54, 58, 14, kAllId, Say(WizardText::All)},
        {L"Button", kButton, 206, 72, 58, 14, kNothingId, Say(WizardText::Nothing)},
    };
  }
  void Begin() override { MakeTickList(Item(kFieldsId)); }
  void Enter() override { Show(0); }
  void Show(size_t chosen) {
    isShowing_ = true;
    ShowTicks(Item(kFieldsId), choices_.fields());
    isShowing_ = false;
    constexpr UINT kChosen = LVIS_SELECTED | LVIS_FOCUSED;
    ListView_SetItemState(Item(kFieldsId), static_cast<int>(chosen), kChosen, kChosen);
    ListView_EnsureVisible(Item(kFieldsId), static_cast<int>(chosen), FALSE);
  }
  void OnNotice(const NMHDR& notice) override {
    size_t at = 0;
    bool ticked = false;
    if (!isShowing_ && TickChanged(notice, &at, &ticked)) choices_.ChooseField(at, ticked);
  }
  void OnCommand(int id, int notice) override {
    if (notice != BN_CLICKED) return;
    const int chosen = ListView_GetNextItem(Item(kFieldsId), -1, LVNI_SELECTED);
    const auto at = static_cast<size_t>(chosen < 0 ? 0 : chosen);
    if (id == kUpId || id == kDownId) Show(choices_.MoveField(at, id == kUpId ? -1 : 1));
    if (id != kAllId && id != kNothingId) return;
    for (size_t i = 0; i < choices_.fields().size(); ++i) choices_.ChooseField(i, id == kAllId);
    Show(at);
  }
  bool Leave() override {
    for (const WizardChoices::Item& field : choices_.fields()) {
      if (field.chosen) return true;
    }
    Tell(Say(WizardText::NoField));
    return false;
  }

  bool isShowing_ = false;
};

class KeysPage final : public WizardPage {
 public:
  KeysPage(WizardChoices& choices, Language language)
      : WizardPage(choices, language, WizardText::KeysTitle, WizardText::KeysHint) {}

 private:
  std::vector<DialogPiece> Pieces() const override {
    return {
        {L"Static", kLabel, 0, 0, 128, 10, kLabelId, Say(WizardText::Keys)},
        {WC_LISTVIEWW, kTicks, 0, 12, 128, 130, kKeysId, {}},
        {L"Static", kLabel, 136, 0, 128, 10, kLabelId, Say(WizardText::Detail)},
        {L"ComboBox", WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST, 136, 12, 128, 120, kDetailId, {}},
        {L"Button", WS_TABSTOP | BS_AUTOCHECKBOX, 136, 36, 128, 12, kGridId, Say(WizardText::Grid)},
    };
  }
  void Begin() override { MakeTickList(Item(kKeysId)); }
  void Enter() override {
    isShowing_ = true;
    ShowTicks(Item(kKeysId), choices_.keys());
    isShowing_ = false;
    ShowDetails();
    EnableWindow(Item(kGridId), choices_.CanHaveGrid());
    CheckDlgButton(window(), kGridId, choices_.grid() ? BST_CHECKED : BST_UNCHECKED);
  }
  void ShowDetails() {
    HWND box = Item(kDetailId);
    SendMessageW(box, CB_RESETCONTENT, 0, 0);
    SendMessageW(box, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Say(WizardText::NoDetail).c_str()));
    LRESULT chosen = 0;
    for (const std::string& name : choices_.details()) {
      const LRESULT line =
          SendMessageW(box, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(com::Wide(name).c_str()));
      if (name == choices_.detail()) chosen = line;
    }
    SendMessageW(box, CB_SETCURSEL, static_cast<WPARAM>(chosen), 0);
    EnableWindow(box, !choices_.details().empty());
  }
  void OnNotice(const NMHDR& notice) override {
    size_t at = 0;
    bool ticked = false;
    if (!isShowing_ && TickChanged(notice, &at, &ticked)) choices_.ChooseKey(at, ticked);
  }
  void OnCommand(int id, int notice) override {
    if (id == kGridId) choices_.PutGrid(IsDlgButtonChecked(window(), kGridId) == BST_CHECKED);
    if (id != kDetailId || notice != CBN_SELCHANGE) return;
    const LRESULT line = SendMessageW(Item(kDetailId), CB_GETCURSEL, 0, 0);
    choices_.PutDetail(line <= 0 ? std::string()
                                 : choices_.details()[static_cast<size_t>(line - 1)]);
  }

  bool isShowing_ = false;
};

class FilePage final : public WizardPage {
 public:
  FilePage(WizardChoices& choices, Language language, std::optional<WizardOutcome>& outcome)
      : WizardPage(choices, language, WizardText::FileTitle, WizardText::FileHint),
        outcome_(outcome) {}

 private:
  std::vector<DialogPiece> Pieces() const override {
    constexpr DWORD kRadio = BS_AUTORADIOBUTTON;
    return {
        {L"Static", kLabel, 0, 0, kPiecesWidth, 10, kLabelId, Say(WizardText::File)},
        {L"Edit", kField, 0, 12, 200, 14, kFileId, {}},
        {L"Button", kButton, 206, 12, 58, 14, kBrowseFileId, Say(WizardText::Browse)},
        {L"Static", kLabel, 0, 38, kPiecesWidth, 10, kLabelId, Say(WizardText::Pictures)},
        {L"Edit", kField, 0, 50, 200, 14, kPicturesId, {}},
        {L"Button", kButton, 206, 50, 58, 14, kBrowsePicturesId, Say(WizardText::Browse)},
        {L"Static", kLabel, 0, 78, 80, 10, kLabelId, Say(WizardText::Speaks)},
        {L"Button", kRadio | WS_TABSTOP | WS_GROUP, 84, 77, 70, 12, kJapaneseId,
         Say(WizardText::Japanese)},
        {L"Button", kRadio, 158, 77, 70, 12, kEnglishId, Say(WizardText::English)},
    };
  }
  DWORD Buttons() const override { return PSWIZB_BACK | PSWIZB_FINISH; }
  void Begin() override {
    CheckRadioButton(window(), kJapaneseId, kEnglishId,
                     choices_.language() == Language::Japanese ? kJapaneseId : kEnglishId);
  }
  // A name that the user gave stays, that of another table does not.
  void Enter() override {
    if (Text(kFileId) == offered_) PutText(kFileId, offered_ = choices_.UsualFile());
  }
  void OnCommand(int id, int) override {
    if (id == kBrowseFileId) BrowseFile();
    if (id == kBrowsePicturesId) BrowseFolder(kPicturesId, WizardText::BrowsePictures);
  }
  void BrowseFile() {
    wchar_t path[MAX_PATH] = L"";
    const std::wstring filter = Say(WizardText::FormFiles) + std::wstring(L"\0*.frm\0", 7);
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = GetParent(window());
    dialog.lpstrFilter = filter.c_str();
    dialog.lpstrFile = path;
    dialog.nMaxFile = MAX_PATH;
    dialog.lpstrDefExt = L"frm";
    dialog.Flags = OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_EXPLORER;
    if (GetSaveFileNameW(&dialog)) SetWindowTextW(Item(kFileId), path);
  }
  bool Leave() override {
    choices_.PutPictures(Text(kPicturesId));
    const bool english = IsDlgButtonChecked(window(), kEnglishId) == BST_CHECKED;
    choices_.PutLanguage(english ? Language::English : Language::Japanese);
    const std::string file = choices_.WholeFile(Text(kFileId));
    if (file.empty()) return Tell(Say(WizardText::NoFile)), SetFocus(Item(kFileId)), false;
    std::error_code error;
    const bool isThere = std::filesystem::exists(form::PathOf(file), error);
    if (isThere && !Tell(Say(WizardText::Replace, {file}), MB_YESNO | MB_ICONQUESTION))
      return false;
    return Make(file, isThere);
  }
  // What is to be said of the form, besides that it was made, is said in a box.
  bool Make(const std::string& file, bool replace) {
    newform::OrderOutcome made = newform::CarryOut(choices_.Order(file, replace));
    std::wstring said;
    for (size_t at = 0; at + (made.done ? 1 : 0) < made.messages.size(); ++at) {
      said += com::Wide(made.messages[at]) + L"\n";
    }
    if (!said.empty()) Tell(said, made.done ? MB_ICONINFORMATION : MB_ICONEXCLAMATION);
    if (made.done) outcome_ = {file, std::move(made.messages)};
    return made.done;
  }

  std::optional<WizardOutcome>& outcome_;
  std::string offered_;
};

// Over the middle of its owner, where the system does not see to that.
int CALLBACK PlaceSheet(HWND sheet, UINT message, LPARAM) {
  HWND owner = GetWindow(sheet, GW_OWNER);
  if (message != PSCB_INITIALIZED || !owner) return 0;
  RECT around{};
  RECT place{};
  GetWindowRect(owner, &around);
  GetWindowRect(sheet, &place);
  SetWindowPos(sheet, nullptr, (around.left + around.right - (place.right - place.left)) / 2,
               (around.top + around.bottom - (place.bottom - place.top)) / 2, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  return 0;
}

}  // namespace

std::optional<WizardOutcome> RunFormWizard(HWND owner, Language language) {
  const INITCOMMONCONTROLSEX common{sizeof common, ICC_LISTVIEW_CLASSES | ICC_TAB_CLASSES};
  InitCommonControlsEx(&common);
  WizardChoices choices(language);
  std::optional<WizardOutcome> outcome;
  DirectoryPage directory(choices, language);
  TablePage table(choices, language);
  FieldsPage fields(choices, language);
  KeysPage keys(choices, language);
  FilePage file(choices, language, outcome);
  HPROPSHEETPAGE pages[] = {directory.Handle(), table.Handle(), fields.Handle(), keys.Handle(),
                            file.Handle()};
  PROPSHEETHEADERW sheet{};
  sheet.dwSize = sizeof sheet;
  sheet.dwFlags = PSH_WIZARD97 | PSH_HEADER | PSH_USECALLBACK;
  sheet.hwndParent = owner;
  sheet.hInstance = GetModuleHandleW(nullptr);
  sheet.nPages = static_cast<UINT>(std::size(pages));
  sheet.phpage = pages;
  sheet.pfnCallback = &PlaceSheet;
  PropertySheetW(&sheet);
  return outcome;
}

}  // namespace qrn::designer
