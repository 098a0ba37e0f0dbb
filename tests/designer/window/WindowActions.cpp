#include "tests/designer/window/WindowActions.h"

// clang-format off
#include <commctrl.h>
// clang-format on

#include <algorithm>
#include <iterator>

#include "host/container/Units.h"
#include "host/designer/window/Commands.h"

namespace qrn::test {

using namespace designer;

struct WindowActions::Row {
  const char* name;
  void (WindowActions::*act)();
};

const WindowActions::Row WindowActions::kRows[] = {
    {"click", &WindowActions::Click},
    {"click", &WindowActions::Click},
    {"drag", &WindowActions::Drag},
    {"drag", &WindowActions::Drag},
    {"drag", &WindowActions::Drag},
    {"draw", &WindowActions::Draw},
    {"draw", &WindowActions::Draw},
    {"put in the middle", &WindowActions::PutInMiddle},
    {"arrow", &WindowActions::Arrow},
    {"arrow", &WindowActions::Arrow},
    {"walk", &WindowActions::Walk},
    {"arrange", &WindowActions::Arrange},
    {"arrange", &WindowActions::Arrange},
    {"edit", &WindowActions::Edit},
    {"edit", &WindowActions::Edit},
    {"undo or redo", &WindowActions::Step},
    {"order of the Tab key", &WindowActions::TabOrder},
    {"property", &WindowActions::Property},
    {"property", &WindowActions::Property},
    {"reset", &WindowActions::ResetProperty},
    {"next value", &WindowActions::NextValue},
    {"code", &WindowActions::Code},
    {"handler", &WindowActions::Handler},
    {"pane", &WindowActions::Pane},
    {"splitter", &WindowActions::Splitter},
};

namespace {

constexpr WORD kArranging[] = {
    kAlignLeft, kAlignCentre, kAlignRight, kAlignTop,  kAlignMiddle,  kAlignBottom,
    kAlignGrid, kSameWidth,   kSameHeight, kSameBoth,  kSpaceAcross,  kSpaceDown,
    kToFront,   kToBack,      kCentreDown, kGridSnaps, kCentreAcross, kEditSelectAll};
constexpr WORD kEditing[] = {kEditCut, kEditCopy, kEditCopy, kEditPaste, kEditDelete};
constexpr WORD kPanes[] = {kViewCode,     kViewForm,  kViewProperties, kViewToolbox,
                           kViewNextPane, kViewWider, kViewNarrower,   kGridShown};
constexpr const wchar_t* kTyped[] = {
    L"",           L"0",      L"1",   L"-1",  L"True",  L"12.5", L"32768", L"cmdGo", L"表示ソ",
    L"a \"text\"", L"\x20AC", L"Sub", L"x y", L"&HFF&", L"600",  L"F",     L"t",     L"New"};
// More than these make the test slow, not harder.
constexpr size_t kMostControls = 40;

template <size_t Count, class Choose>
auto AnyOf(const Choose& choose, const auto(&rows)[Count]) {
  return rows[choose(static_cast<uint32_t>(Count))];
}

}  // namespace

// Keys that are held down while this lives, for messages that are posted.
class WindowActions::Held {
 public:
  Held(bool shift, bool control) {
    GetKeyboardState(before_);
    BYTE now[256];
    std::copy(std::begin(before_), std::end(before_), now);
    now[VK_SHIFT] = shift ? 0x80 : 0;
    now[VK_CONTROL] = control ? 0x80 : 0;
    SetKeyboardState(now);
  }
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;
  ~Held() { SetKeyboardState(before_); }

 private:
  BYTE before_[256]{};
};

void WindowActions::DoOne() {
  const Row& row = AnyOf(choose_, kRows);
  doing_ = row.name;
  (this->*row.act)();
  Pump();
}

void WindowActions::GiveUpTyping() {
  doing_ = "giving up";
  window_.properties().TakeFocus();
  if (HWND field = GetFocus()) Key(field, VK_ESCAPE);
  Command(kViewCode);
  const Held held(false, true);
  if (HWND field = GetFocus()) Key(field, 'Z');
  Command(kViewForm);
}

void WindowActions::Pump() {
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) window_.Take(message);
}

void WindowActions::Command(WORD command) {
  PostMessageW(window_.Frame(), WM_COMMAND, command, 0);
  Pump();
}

HWND WindowActions::Form() const { return window_.program()->forms().front()->Window(); }

POINT WindowActions::AnyPoint() {
  RECT client{};
  GetClientRect(Form(), &client);
  return {static_cast<LONG>(choose_(static_cast<uint32_t>(client.right + 20))) - 10,
          static_cast<LONG>(choose_(static_cast<uint32_t>(client.bottom + 20))) - 10};
}

void WindowActions::Mouse(UINT message, POINT onForm, WPARAM held) {
  PostMessageW(Form(), message, held, MAKELPARAM(onForm.x, onForm.y));
  Pump();
}

void WindowActions::Key(HWND window, WORD key) {
  PostMessageW(window, WM_KEYDOWN, key, 1);
  PostMessageW(window, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
  Pump();
}

void WindowActions::Type(HWND field, const std::wstring& text) {
  for (const wchar_t character : text) PostMessageW(field, WM_CHAR, character, 1);
  Pump();
}

void WindowActions::Click() {
  const Held held(Chance(3), Chance(5));
  const POINT point = AnyPoint();
  Mouse(WM_LBUTTONDOWN, point, MK_LBUTTON);
  Mouse(WM_LBUTTONUP, point, 0);
}

void WindowActions::Drag() {
  const Held held(Chance(6), Chance(4));
  // A handle where there is one, else whatever lies at a point.
  POINT from = AnyPoint();
  const auto handle = static_cast<Handle>(choose_(kHandleCount));
  const auto pulled = design().Primary()
                          ? window_.surface().ScreenHandle(design().Primary(), handle)
                          : std::nullopt;
  if (pulled && Chance(2)) {
    from = *pulled;
    ScreenToClient(Form(), &from);
  }
  Mouse(WM_LBUTTONDOWN, from, MK_LBUTTON);
  for (uint32_t moves = 1 + choose_(3); moves > 0; --moves) {
    Mouse(WM_MOUSEMOVE, AnyPoint(), MK_LBUTTON);
  }
  if (Chance(8)) Key(window_.surface().Window(), VK_ESCAPE);
  Mouse(WM_LBUTTONUP, AnyPoint(), 0);
}

void WindowActions::Draw() {
  if (design().All().size() >= kMostControls) return Drag();
  Command(static_cast<WORD>(kFirstTool + choose_(18)));
  Drag();
}

void WindowActions::PutInMiddle() {
  if (design().All().size() >= kMostControls) return Click();
  HWND bar = window_.toolbox().Window();
  RECT place{};
  SendMessageW(bar, TB_GETITEMRECT, choose_(18), reinterpret_cast<LPARAM>(&place));
  PostMessageW(bar, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(place.left + 3, place.top + 3));
  Pump();
}

void WindowActions::Arrow() {
  const Held held(Chance(3), Chance(2));
  constexpr WORD kArrows[] = {VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN};
  for (uint32_t times = 1 + choose_(4); times > 0; --times) {
    Key(window_.surface().Window(), AnyOf(choose_, kArrows));
  }
}

void WindowActions::Walk() {
  const Held held(Chance(2), false);
  Key(window_.surface().Window(), Chance(4) ? VK_ESCAPE : VK_TAB);
}

void WindowActions::Arrange() {
  Command(kViewForm);
  Command(AnyOf(choose_, kArranging));
}

void WindowActions::Edit() {
  Command(kViewForm);
  const WORD command = AnyOf(choose_, kEditing);
  if (command != kEditPaste || design().All().size() < kMostControls) Command(command);
}

void WindowActions::Step() {
  for (uint32_t times = 1 + choose_(3); times > 0; --times) {
    Command(Chance(3) ? kEditRedo : kEditUndo);
  }
}

void WindowActions::TabOrder() {
  Command(kTabOrder);
  for (uint32_t clicks = choose_(5); clicks > 0; --clicks) {
    const POINT point = AnyPoint();
    Mouse(WM_LBUTTONDOWN, point, MK_LBUTTON);
    Mouse(WM_LBUTTONUP, point, 0);
  }
  Key(window_.surface().Window(), Chance(3) ? VK_ESCAPE : VK_RETURN);
}

namespace {

struct Search {
  const wchar_t* className;
  int id;
  HWND found = nullptr;
};

BOOL CALLBACK Look(HWND window, LPARAM self) {
  auto& search = *reinterpret_cast<Search*>(self);
  wchar_t name[64] = L"";
  GetClassNameW(window, name, 64);
  if (GetDlgCtrlID(window) != search.id || lstrcmpiW(name, search.className) != 0) return TRUE;
  search.found = window;
  return FALSE;
}

// Of the panes' windows.
constexpr int kObjectsId = 10;
constexpr int kRowsId = 11;
constexpr int kEditorId = 10;

}  // namespace

HWND WindowActions::Child(const wchar_t* className, int id) const {
  Search search{className, id};
  EnumChildWindows(window_.Frame(), &Look, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

// Any row but those whose dialogs ask for files and fonts: what is typed goes where it does.
void WindowActions::Property() {
  HWND rows = Child(WC_LISTVIEWW, kRowsId);
  const int count = ListView_GetItemCount(rows);
  if (count == 0) return;
  const auto row = static_cast<int>(choose_(static_cast<uint32_t>(count)));
  constexpr UINT kChosen = LVIS_SELECTED | LVIS_FOCUSED;
  ListView_SetItemState(rows, row, kChosen, kChosen);
  window_.properties().TakeFocus();
  Pump();
  HWND field = GetFocus();
  if (!field || !IsChild(window_.properties().Window(), field)) return;
  Type(field, AnyOf(choose_, kTyped));
  constexpr WORD kEnds[] = {VK_RETURN, VK_DOWN, VK_UP, VK_ESCAPE, VK_TAB};
  Key(field, AnyOf(choose_, kEnds));
}

void WindowActions::ResetProperty() {
  Property();
  const Held held(false, true);
  if (HWND field = GetFocus()) Key(field, VK_DELETE);
}

void WindowActions::NextValue() {
  HWND rows = Child(WC_LISTVIEWW, kRowsId);
  const int count = ListView_GetItemCount(rows);
  if (count == 0) return;
  RECT place{LVIR_LABEL, 0, 0, 0};
  const auto row = static_cast<int>(choose_(static_cast<uint32_t>(count)));
  ListView_EnsureVisible(rows, row, FALSE);
  SendMessageW(rows, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
  const LPARAM at = MAKELPARAM(place.left + 5, (place.top + place.bottom) / 2);
  for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP}) {
    PostMessageW(rows, message, 0, at);
  }
  Pump();
}

void WindowActions::Code() {
  Command(kViewCode);
  HWND editor = Child(L"Edit", kEditorId);
  const auto length = static_cast<uint32_t>(GetWindowTextLengthW(editor));
  const uint32_t at = choose_(length + 1);
  SendMessageW(editor, EM_SETSEL, at, at + (Chance(3) ? choose_(20) : 0));
  Type(editor, AnyOf(choose_, kTyped));
  constexpr WORD kKeys[] = {VK_TAB, VK_RETURN, VK_BACK, VK_F8, VK_DELETE};
  Key(editor, AnyOf(choose_, kKeys));
  if (Chance(2)) Command(kViewForm);
}

void WindowActions::Handler() {
  Command(kViewForm);
  Key(window_.surface().Window(), VK_RETURN);
  if (Chance(2)) Command(kViewForm);
}

void WindowActions::Pane() { Command(AnyOf(choose_, kPanes)); }

void WindowActions::Splitter() { DragSplitter(static_cast<int>(choose_(400)) - 200); }

void WindowActions::DragSplitter(int by) {
  HWND bar = FindWindowExW(window_.Frame(), nullptr, L"QrnDesignSplitter", nullptr);
  PostMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 50));
  Pump();
  PostMessageW(bar, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(2 + by, 50));
  PostMessageW(bar, WM_LBUTTONUP, 0, MAKELPARAM(2, 50));
  Pump();
}

}  // namespace qrn::test
