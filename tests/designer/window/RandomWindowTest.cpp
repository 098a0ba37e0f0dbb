// Whatever is done before the designer's window can be undone and redone, and the form on the
// screen is the form in the file.
#include <gtest/gtest.h>
#include <ole2.h>
// clang-format off
#include <commctrl.h>
// clang-format on

#include <atomic>
#include <cstdio>
#include <fstream>
#include <random>
#include <thread>

#include "com/Module.h"
#include "host/container/Units.h"
#include "host/designer/model/Places.h"
#include "host/designer/window/Commands.h"
#include "host/designer/window/DesignWindow.h"
#include "host/user/Dialogs.h"
#include "tests/designer/kit/Actions.h"
#include "tests/designer/kit/Forms.h"
#include "tests/support/Pinned.h"
#include "tests/support/Setting.h"
#include "tests/support/TempFolder.h"

namespace qrn::test {
namespace {

using namespace designer;

// Answers every box, dialog and frame of property pages that comes while it lives, as somebody does
// who does not want to be asked.
class BoxAnswerer : Pinned {
 public:
  BoxAnswerer() : thread_([this] { Run(); }) {}
  ~BoxAnswerer() {
    ended_ = true;
    thread_.join();
  }

 private:
  void Run() {
    for (; !ended_; Sleep(20)) {
      HWND box = host::FrontBox();
      if (!box) box = FindWindowW(L"QrnPropertyFrame", nullptr);
      if (!box) continue;
      HWND cancel = GetDlgItem(box, IDCANCEL);
      PostMessageW(box, WM_COMMAND, cancel ? IDCANCEL : IDOK, 0);
    }
  }

  std::atomic<bool> ended_ = false;
  std::thread thread_;
};

constexpr WORD kOnTheForm[] = {
    kAlignLeft,  kAlignCentre,  kAlignRight, kAlignTop,      kAlignMiddle, kAlignBottom, kAlignGrid,
    kSameWidth,  kSameHeight,   kSameBoth,   kSpaceAcross,   kSpaceDown,   kToFront,     kToBack,
    kCentreDown, kCentreAcross, kGridSnaps,  kEditSelectAll, kEditCut,     kEditCopy,    kEditPaste,
    kEditDelete, kEditUndo,     kEditUndo,   kEditRedo};
constexpr WORD kAnywhere[] = {kViewCode,     kViewForm,  kViewProperties, kViewToolbox,
                              kViewNextPane, kViewWider, kViewNarrower,   kGridShown};
constexpr WORD kOnTheSurface[] = {VK_LEFT, VK_RIGHT, VK_UP,     VK_DOWN,
                                  VK_TAB,  VK_TAB,   VK_ESCAPE, VK_RETURN};
constexpr WORD kEndsOfAField[] = {VK_RETURN, VK_DOWN, VK_UP, VK_ESCAPE, VK_TAB, VK_DELETE};
constexpr WORD kInTheCode[] = {VK_TAB, VK_RETURN, VK_BACK, VK_F8, VK_DELETE};
constexpr const wchar_t* kTyped[] = {
    L"",           L"0",      L"1",   L"-1",  L"True",  L"12.5", L"32768", L"cmdGo", L"表示ソ",
    L"a \"text\"", L"\x20AC", L"Sub", L"x y", L"&HFF&", L"600",  L"F",     L"t",     L"New"};
// More than these make the test slow, not harder.
constexpr size_t kMostControls = 40;
// Of the panes' windows.
constexpr int kRowsId = 11, kEditorId = 10;

// Keys that are held down while this lives, for messages that are posted.
class Held : Pinned {
 public:
  Held(bool shift, bool control) {
    GetKeyboardState(before_);
    BYTE now[256];
    std::copy(std::begin(before_), std::end(before_), now);
    now[VK_SHIFT] = shift ? 0x80 : 0;
    now[VK_CONTROL] = control ? 0x80 : 0;
    SetKeyboardState(now);
  }
  ~Held() { SetKeyboardState(before_); }

 private:
  BYTE before_[256]{};
};

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

// Somebody before the window, who does one thing at a time, chosen by numbers: presses of the mouse
// and of keys where they would go, commands of the menus, typing in the panes. All of it goes
// through the window's messages; it may be refused or change nothing.
class User {
 public:
  // `choose` gives a number from 0 to below its argument.
  User(DesignWindow& window, Choose choose) : window_(window), choose_(std::move(choose)) {}

  const char* DoOne();
  // Gives up what stands typed and was refused.
  void GiveUpTyping() {
    window_.properties().TakeFocus();
    if (HWND field = GetFocus()) Key(field, VK_ESCAPE);
    Command(kViewCode);
    const Held held(false, true);
    if (HWND field = GetFocus()) Key(field, 'Z');
    Command(kViewForm);
  }
  // Lets the window have what waits for it.
  void Pump() {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) window_.Take(message);
  }
  void Command(WORD command) {
    PostMessageW(window_.Frame(), WM_COMMAND, command, 0);
    Pump();
  }
  // Drags the bar beside the properties so many pixels to the right.
  void DragSplitter(int by) {
    HWND bar = FindWindowExW(window_.Frame(), nullptr, L"QrnDesignSplitter", nullptr);
    PostMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 50));
    Pump();
    PostMessageW(bar, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(2 + by, 50));
    PostMessageW(bar, WM_LBUTTONUP, 0, MAKELPARAM(2, 50));
    Pump();
  }

 private:
  Design& design() { return window_.design(); }
  bool Chance(uint32_t oneIn) { return choose_(oneIn) == 0; }
  template <size_t Count>
  auto AnyOf(const auto(&rows)[Count]) {
    return rows[choose_(static_cast<uint32_t>(Count))];
  }
  HWND Form() const { return window_.program()->forms().front()->Window(); }
  POINT AnyPoint() {
    RECT client{};
    GetClientRect(Form(), &client);
    return {static_cast<LONG>(choose_(static_cast<uint32_t>(client.right + 20))) - 10,
            static_cast<LONG>(choose_(static_cast<uint32_t>(client.bottom + 20))) - 10};
  }
  HWND Child(const wchar_t* className, int id) const {
    Search search{className, id};
    EnumChildWindows(window_.Frame(), &Look, reinterpret_cast<LPARAM>(&search));
    return search.found;
  }
  void Mouse(UINT message, POINT onForm, WPARAM held) {
    PostMessageW(Form(), message, held, MAKELPARAM(onForm.x, onForm.y));
    Pump();
  }
  void Key(HWND window, WORD key) {
    PostMessageW(window, WM_KEYDOWN, key, 1);
    PostMessageW(window, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
    Pump();
  }
  void Type(HWND field, const std::wstring& text) {
    for (const wchar_t character : text) PostMessageW(field, WM_CHAR, character, 1);
    Pump();
  }
  void ClickAt(POINT point) {
    Mouse(WM_LBUTTONDOWN, point, MK_LBUTTON);
    Mouse(WM_LBUTTONUP, point, 0);
  }

  void Click() {
    const Held held(Chance(3), Chance(5));
    ClickAt(AnyPoint());
  }
  // A handle where there is one, else whatever lies at a point.
  void Drag() {
    const Held held(Chance(6), Chance(4));
    POINT from = AnyPoint();
    const auto handle = static_cast<Handle>(choose_(kHandleCount));
    const ControlId pulled = design().Primary();
    const auto place = pulled ? window_.surface().ScreenHandle(pulled, handle) : std::nullopt;
    if (place && Chance(2)) {
      from = *place;
      ScreenToClient(Form(), &from);
    }
    Mouse(WM_LBUTTONDOWN, from, MK_LBUTTON);
    for (uint32_t moves = 1 + choose_(3); moves > 0; --moves) {
      Mouse(WM_MOUSEMOVE, AnyPoint(), MK_LBUTTON);
    }
    if (Chance(8)) Key(window_.surface().Window(), VK_ESCAPE);
    Mouse(WM_LBUTTONUP, AnyPoint(), 0);
  }
  void Draw() {
    if (design().All().size() < kMostControls) {
      Command(static_cast<WORD>(kFirstTool + choose_(18)));
    }
    Drag();
  }
  void Press() {
    const Held held(Chance(3), Chance(3));
    const WORD key = AnyOf(kOnTheSurface);
    for (uint32_t times = 1 + choose_(3); times > 0; --times) Key(window_.surface().Window(), key);
  }
  void Arrange() {
    const WORD command = AnyOf(kOnTheForm);
    Command(kViewForm);
    if (command != kEditPaste || design().All().size() < kMostControls) Command(command);
  }
  void View() { Command(AnyOf(kAnywhere)); }
  void TabOrder() {
    Command(kTabOrder);
    for (uint32_t clicks = choose_(5); clicks > 0; --clicks) ClickAt(AnyPoint());
    Key(window_.surface().Window(), Chance(3) ? VK_ESCAPE : VK_RETURN);
  }
  // Of any row but those whose dialogs ask for files and fonts: what is typed goes where it does.
  void Property() {
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
    Type(field, AnyOf(kTyped));
    const Held held(false, Chance(4));
    Key(field, AnyOf(kEndsOfAField));
  }
  void Code() {
    Command(kViewCode);
    HWND editor = Child(L"Edit", kEditorId);
    const uint32_t at = choose_(static_cast<uint32_t>(GetWindowTextLengthW(editor)) + 1);
    SendMessageW(editor, EM_SETSEL, at, at + (Chance(3) ? choose_(20) : 0));
    Type(editor, AnyOf(kTyped));
    Key(editor, AnyOf(kInTheCode));
    if (Chance(2)) Command(kViewForm);
  }

  DesignWindow& window_;
  Choose choose_;
};

const char* User::DoOne() {
  // As often as they stand here.
  static constexpr struct {
    const char* name;
    void (User::*act)();
  } kRows[] = {
      {"click", &User::Click},        {"click", &User::Click},       {"drag", &User::Drag},
      {"drag", &User::Drag},          {"draw", &User::Draw},         {"draw", &User::Draw},
      {"key", &User::Press},          {"key", &User::Press},         {"command", &User::Arrange},
      {"command", &User::Arrange},    {"command", &User::Arrange},   {"view", &User::View},
      {"tab order", &User::TabOrder}, {"property", &User::Property}, {"property", &User::Property},
      {"code", &User::Code}};
  const auto row = AnyOf(kRows);
  (this->*row.act)();
  Pump();
  return row.name;
}

std::string Begun() {
  return "   Begin VB.TextBox t \n      Height          =   360\n      Left            =   600\n"
         "      TabIndex        =   0\n      Top             =   600\n      Width           =   "
         "1200\n"
         "   End\n"
         "   Begin VB.Frame f \n      Height          =   1800\n      Left            =   600\n"
         "      TabIndex        =   1\n      Top             =   1440\n      Width           =   "
         "3000\n"
         "      Begin VB.CommandButton cmd \n         Height          =   480\n"
         "         Left            =   240\n         TabIndex        =   2\n"
         "         Top             =   360\n         Width           =   960\n      End\n   End\n"
         "   Begin NoLib.Thing thg \n      Height          =   600\n      Left            =   "
         "3900\n"
         "      Top             =   600\n      Width           =   900\n      Zoom            =   "
         "3\n"
         "   End\n";
}

class DesignerWindow : public testing::Test {
 protected:
  DesignerWindow() {
    OleInitialize(nullptr);
    const std::filesystem::path own(com::PathOf(nullptr));
    classes_.AddModule((own.parent_path() / L"qrnbt350.ocx").wstring());
    std::ofstream(folder_.Path("form.frm"), std::ios::binary)
        << FormWith(Begun(), "Private Sub cmd_Click()\n    Print 1\nEnd Sub\n");
  }
  ~DesignerWindow() override { OleUninitialize(); }

  // Every control that has a place lies there on the screen.
  static void ExpectShown(DesignWindow& window) {
    const Design& design = window.design();
    for (const ControlId id : design.All()) {
      const host::FormControl* live = window.surface().Live(id);
      ASSERT_TRUE(live) << design.Name(id);
      if (!HasPlace(design, id)) continue;
      const Place place = PlaceOf(design, id);
      const RECT shown = live->Place();
      EXPECT_EQ(shown.left, host::ToPixels(place.left)) << design.Name(id);
      EXPECT_EQ(shown.top, host::ToPixels(place.top)) << design.Name(id);
    }
  }

  TempFolder folder_;
  host::ModuleClasses classes_;
  const uint32_t seed_ = Seed();
  std::mt19937 random_{seed_};
};

TEST_F(DesignerWindow, GivesTheFileBackWhenAllIsUndoneAndTheSameWhenItIsRedone) {
  std::printf("seed %u\n", static_cast<unsigned>(seed_));
  std::fflush(stdout);
  SCOPED_TRACE("seed " + std::to_string(seed_));
  const BoxAnswerer answerer;
  DesignWindow window(classes_, {form::Language::Japanese, false});
  window.Open(folder_.Path("form.frm"));
  window.Show();
  User user(window, [this](uint32_t limit) { return random_() % limit; });
  const std::string opened = Actions::Saved(window.design());
  const int count = static_cast<int>(Setting("QRN_ACTIONS", 250));
  for (int action = 0; action < count; ++action) {
    const char* const done = user.DoOne();
    if (action % 25 == 0) ExpectShown(window);
    ASSERT_FALSE(HasFailure()) << "after action " << action << ", " << done;
  }
  user.GiveUpTyping();
  Design& design = window.design();
  const auto walk = [&](WORD command, bool (Design::*can)() const) {
    for (size_t steps = design.history().StepCount(); steps > 0 && (design.*can)(); --steps) {
      user.Command(command);
    }
    ExpectShown(window);
  };
  walk(kEditRedo, &Design::CanRedo);
  const std::string done = Actions::Saved(design);
  EXPECT_GT(design.history().StepCount(), static_cast<size_t>(count / 10));
  walk(kEditUndo, &Design::CanUndo);
  EXPECT_EQ(Actions::Saved(design), opened);
  EXPECT_FALSE(design.IsDirty());
  walk(kEditRedo, &Design::CanRedo);
  EXPECT_EQ(Actions::Saved(design), done);
}

// By the bar and by keys, as far as something of the form and of the properties is left.
TEST_F(DesignerWindow, GivesThePropertiesTheWidthThatIsWanted) {
  DesignWindow window(classes_, {form::Language::Japanese, false});
  window.Open(folder_.Path("form.frm"));
  window.Show();
  User user(window, [](uint32_t) { return 0u; });
  user.Pump();
  const auto width = [](HWND part) {
    RECT place{};
    GetWindowRect(part, &place);
    return static_cast<int>(place.right - place.left);
  };
  HWND properties = window.properties().Window();
  const int before = width(properties);
  user.DragSplitter(-50);
  EXPECT_EQ(width(properties), before + 50);
  user.Command(kViewNarrower);
  EXPECT_LT(width(properties), before + 50);
  user.DragSplitter(-5000);
  EXPECT_GT(width(window.surface().Window()), 100);
  EXPECT_GT(width(properties), before);
  user.DragSplitter(5000);
  EXPECT_GT(width(properties), 100);
  EXPECT_LT(width(properties), before);
}

}  // namespace
}  // namespace qrn::test
