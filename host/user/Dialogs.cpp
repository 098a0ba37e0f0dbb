#include "host/user/Dialogs.h"

// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

#include "host/container/Text.h"

namespace qrn::host {
namespace {

constexpr wchar_t kDialogClass[] = L"#32770";
constexpr int kMessageTextId = 0xFFFF;

template <class Wanted>
struct Search {
  Wanted wanted;
  HWND found = nullptr;

  static BOOL CALLBACK Look(HWND window, LPARAM self) {
    auto* search = reinterpret_cast<Search*>(self);
    if (!search->wanted(window)) return TRUE;
    search->found = window;
    return FALSE;
  }
};

template <class Wanted>
HWND FindTop(Wanted wanted) noexcept {
  const auto mine = [&](HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process == GetCurrentProcessId() && IsWindowVisible(window) && wanted(window);
  };
  Search<decltype(mine)> search{mine};
  EnumWindows(&Search<decltype(mine)>::Look, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

template <class Wanted>
HWND FindChild(HWND parent, Wanted wanted) noexcept {
  Search<Wanted> search{wanted};
  EnumChildWindows(parent, &Search<Wanted>::Look, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

std::wstring ClassOf(HWND window) {
  wchar_t name[64] = L"";
  GetClassNameW(window, name, 64);
  return name;
}

bool IsClass(HWND window, const wchar_t* name) { return SameName(ClassOf(window), name); }

// A message box has nothing but words, an icon and buttons.
bool IsPartOfMessage(HWND child) { return IsClass(child, L"Static") || IsClass(child, L"Button"); }

struct ButtonName {
  const wchar_t* name;
  int id;
};

constexpr ButtonName kButtonNames[] = {
    {L"OK", IDOK},         {L"Cancel", IDCANCEL}, {L"Abort", IDABORT}, {L"Retry", IDRETRY},
    {L"Ignore", IDIGNORE}, {L"Yes", IDYES},       {L"No", IDNO}};

struct ListKind {
  const wchar_t* className;
  UINT select;
  UINT current;
  UINT length;
  UINT text;
  WORD notice;
};

constexpr ListKind kLists[] = {
    {L"ComboBox", CB_FINDSTRINGEXACT, CB_GETCURSEL, CB_GETLBTEXTLEN, CB_GETLBTEXT, CBN_SELCHANGE},
    {L"ListBox", LB_FINDSTRINGEXACT, LB_GETCURSEL, LB_GETTEXTLEN, LB_GETTEXT, LBN_SELCHANGE}};

const ListKind* ListKindOf(HWND item) {
  for (const ListKind& kind : kLists) {
    if (IsClass(item, kind.className)) return &kind;
  }
  return nullptr;
}

void Notify(HWND item, WORD notice) noexcept {
  SendMessageW(GetParent(item), WM_COMMAND,
               MAKEWPARAM(static_cast<WORD>(GetDlgCtrlID(item)), notice),
               reinterpret_cast<LPARAM>(item));
}

}  // namespace

std::wstring WithoutMarks(std::wstring text) {
  // A Japanese face ends with its key in parentheses: "適用(&A)".
  if (const size_t mark = text.find(L"(&"); mark != std::wstring::npos) text.erase(mark);
  std::erase(text, L'&');
  while (!text.empty() && text.back() == L' ') text.pop_back();
  return text;
}

HWND FrontBox() noexcept {
  return FindTop([](HWND window) { return IsClass(window, kDialogClass); });
}

HWND FrontMessage() noexcept {
  return FindTop([](HWND window) {
    return IsClass(window, kDialogClass) && GetDlgItem(window, kMessageTextId) &&
           !FindChild(window, [](HWND child) { return !IsPartOfMessage(child); });
  });
}

HWND WindowTitled(const std::wstring& title) noexcept {
  return FindTop([&](HWND window) { return TextOfWindow(window) == title; });
}

std::wstring TextOfWindow(HWND window) {
  const auto length = static_cast<size_t>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0));
  std::wstring text(length + 1, L'\0');
  text.resize(static_cast<size_t>(
      SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
  return text;
}

std::wstring BoxText(HWND box) {
  HWND words = GetDlgItem(box, kMessageTextId);
  return words ? TextOfWindow(words) : std::wstring();
}

HWND ButtonOf(HWND box, const std::wstring& name) noexcept {
  HWND byFace = FindChild(box, [&](HWND child) {
    return IsClass(child, L"Button") && SameName(WithoutMarks(TextOfWindow(child)), name);
  });
  if (byFace) return byFace;
  for (const ButtonName& row : kButtonNames) {
    if (SameName(row.name, name)) return GetDlgItem(box, row.id);
  }
  return nullptr;
}

void PressButton(HWND box, HWND button) noexcept {
  HWND parent = GetParent(button);
  PostMessageW(parent ? parent : box, WM_COMMAND,
               MAKEWPARAM(static_cast<WORD>(GetDlgCtrlID(button)), BN_CLICKED),
               reinterpret_cast<LPARAM>(button));
}

HWND ItemOf(HWND box, int id) noexcept {
  return FindChild(box, [id](HWND child) { return GetDlgCtrlID(child) == id; });
}

void EnterText(HWND item, const std::wstring& text) noexcept {
  SendMessageW(item, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

bool ChooseLine(HWND item, const std::wstring& text) noexcept {
  const ListKind* kind = ListKindOf(item);
  if (!kind) return false;
  const LRESULT line = SendMessageW(item, kind->select, static_cast<WPARAM>(-1),
                                    reinterpret_cast<LPARAM>(text.c_str()));
  if (line < 0) return false;
  SendMessageW(item, kind->select == CB_FINDSTRINGEXACT ? CB_SETCURSEL : LB_SETCURSEL,
               static_cast<WPARAM>(line), 0);
  Notify(item, kind->notice);
  return true;
}

bool IsComboBox(HWND item) noexcept { return IsClass(item, L"ComboBox"); }

RECT LinePlace(HWND item, const std::wstring& text) noexcept {
  HWND list = item;
  if (IsComboBox(item)) {
    COMBOBOXINFO box{};
    box.cbSize = sizeof box;
    GetComboBoxInfo(item, &box);
    list = box.hwndList;
  }
  const LRESULT line = SendMessageW(list, LB_FINDSTRING, static_cast<WPARAM>(-1),
                                    reinterpret_cast<LPARAM>(text.c_str()));
  RECT place{};
  RECT client{};
  GetClientRect(list, &client);
  if (line < 0 || !IsWindowVisible(list)) return {};
  SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(&place));
  if (place.top < client.top || place.bottom > client.bottom) return {};
  MapWindowPoints(list, nullptr, reinterpret_cast<POINT*>(&place), 2);
  return place;
}

std::wstring ItemText(HWND item) {
  const ListKind* kind = ListKindOf(item);
  if (!kind) return TextOfWindow(item);
  const LRESULT line = SendMessageW(item, kind->current, 0, 0);
  if (line < 0) return L"";
  const auto place = static_cast<WPARAM>(line);
  std::wstring text(static_cast<size_t>(SendMessageW(item, kind->length, place, 0)) + 1, L'\0');
  text.resize(static_cast<size_t>(
      SendMessageW(item, kind->text, place, reinterpret_cast<LPARAM>(text.data()))));
  return text;
}

bool ChooseTab(HWND box, const std::wstring& title) {
  HWND tabs = FindChild(box, [](HWND child) { return IsClass(child, WC_TABCONTROLW); });
  if (!tabs) return false;
  const LRESULT count = SendMessageW(tabs, TCM_GETITEMCOUNT, 0, 0);
  for (LRESULT i = 0; i < count; ++i) {
    wchar_t text[128] = L"";
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = text;
    item.cchTextMax = 128;
    SendMessageW(tabs, TCM_GETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
    if (!SameName(item.pszText, title)) continue;
    SendMessageW(tabs, TCM_SETCURSEL, static_cast<WPARAM>(i), 0);
    NMHDR notice{tabs, static_cast<UINT_PTR>(GetDlgCtrlID(tabs)), static_cast<UINT>(TCN_SELCHANGE)};
    SendMessageW(GetParent(tabs), WM_NOTIFY, notice.idFrom, reinterpret_cast<LPARAM>(&notice));
    return true;
  }
  return false;
}

namespace {

// What stands before the key: "保存(&S)\tCtrl+S".
std::wstring WordsOfItem(HMENU menu, int place) {
  wchar_t text[256] = L"";
  GetMenuStringW(menu, static_cast<UINT>(place), text, 256, MF_BYPOSITION);
  const std::wstring words = text;
  return WithoutMarks(words.substr(0, words.find(L'\t')));
}

RECT PlaceOfItem(HWND window, HMENU menu, const std::wstring& words) {
  const int count = GetMenuItemCount(menu);
  for (int place = 0; place < count; ++place) {
    const UINT state = GetMenuState(menu, static_cast<UINT>(place), MF_BYPOSITION);
    if (WordsOfItem(menu, place) != words || (state & (MF_GRAYED | MF_DISABLED))) continue;
    RECT item{};
    GetMenuItemRect(window, menu, static_cast<UINT>(place), &item);
    return item;
  }
  return {};
}

}  // namespace

RECT BarItemPlace(HWND window, const std::wstring& words) noexcept {
  return PlaceOfItem(window, GetMenu(window), words);
}

RECT OpenItemPlace(const std::wstring& words) noexcept {
  constexpr wchar_t kMenuClass[] = L"#32768";
  constexpr UINT kGetMenu = 0x01E1;  // MN_GETHMENU
  RECT place{};
  FindTop([&](HWND window) {
    if (!IsClass(window, kMenuClass)) return false;
    const auto menu = reinterpret_cast<HMENU>(SendMessageW(window, kGetMenu, 0, 0));
    place = PlaceOfItem(window, menu, words);
    return !IsRectEmpty(&place);
  });
  return place;
}

}  // namespace qrn::host
