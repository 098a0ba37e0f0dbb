// The property list on the screen, worked by key and mouse.
#include <gtest/gtest.h>

#include "host/designer/panes/PropertyPane.h"
// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

#include <fstream>
#include <thread>

#include "com/Text.h"
#include "host/form/KeyNames.h"
#include "host/user/Dialogs.h"
#include "host/user/UserInput.h"
#include "platform/CodePage.h"
#include "tests/designer/kit/Actions.h"
#include "tests/designer/kit/Forms.h"
#include "tests/designer/panes/PaneHost.h"
#include "tests/support/SmallBitmap.h"
#include "tests/support/TempFolder.h"

namespace qrn::test {
namespace {

using namespace designer;

constexpr char kShown[] =
    "   Begin VB.TextBox t \n      Text            =   \"表\"\n      Width           =   900\n   "
    "End\n"
    "   Begin VB.TextBox u \n      Text            =   \"ソ\"\n      Width           =   900\n   "
    "End\n"
    "   Begin QRNBTRLib.QRNBtr db \n      DDFDir          =   \".\"\n   End\n"
    "   Begin LIB.Box box \n      DbTable         =   \"Customers\"\n"
    "      Mode            =   1\n   End\n";

// Ids of the pane's windows.
enum RowId { kObjectList = 10, kRows = 11, kField = 20, kChoice = 21 };

class PropertyPaneTest : public testing::Test {
 protected:
  PropertyPaneTest() {
    host_.Hold(std::make_unique<PropertyPane>(host_, host_.Frame()));
    host_.Select({"t"});
  }

  HWND Rows() const { return host_.Child(kRows); }
  std::string Cell(size_t row, int column) const {
    wchar_t text[260] = L"";
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = 260;
    SendMessageW(Rows(), LVM_GETITEMTEXTW, row, reinterpret_cast<LPARAM>(&item));
    return com::Utf8(text);
  }
  // Of the row of that name; the number of rows if there is none.
  size_t RowOf(const std::string& name) const {
    const auto count = static_cast<size_t>(ListView_GetItemCount(Rows()));
    size_t row = 0;
    while (row < count && Cell(row, 0) != name) ++row;
    return row;
  }
  std::string Shown(const std::string& name) const { return Cell(RowOf(name), 1); }
  void GoTo(const std::string& name) {
    const auto row = static_cast<int>(RowOf(name));
    ASSERT_LT(row, ListView_GetItemCount(Rows())) << name;
    ListView_SetItemState(Rows(), row, LVIS_SELECTED, LVIS_SELECTED);
    host_.pane().TakeFocus();
    host_.Pump();
  }
  std::string Chosen() const {
    return Cell(static_cast<size_t>(ListView_GetNextItem(Rows(), -1, LVNI_SELECTED)), 0);
  }
  // In the middle of a row's name.
  POINT NameOf(const std::string& name) const {
    RECT place{LVIR_LABEL, 0, 0, 0};
    SendMessageW(Rows(), LVM_GETITEMRECT, RowOf(name), reinterpret_cast<LPARAM>(&place));
    POINT at{place.left + 20, (place.top + place.bottom) / 2};
    ClientToScreen(Rows(), &at);
    return at;
  }
  std::string ValueOf(const std::string& control, const std::string& property) {
    return LineValue(host_.design(), control, property);
  }

  PaneHost host_{kShown};
};

TEST_F(PropertyPaneTest, TakesWhatIsTyped) {
  struct Case {
    const char* property;
    const char* typed;
    const char* key;  // that ends the typing
    const char* value;
  } const cases[] = {
      {"Text", "あ\"い", "Enter", "\"あ\"\"い\""},
      {"MaxLength", "12", "Down", "12"},
      {"Locked", "t", "Up", "-1 'True"},
      {"Alignment", "2", "Tab", "2 'Center"},
      {"BackColor", "vbInfoBackground", "Enter", "&H80000018&"},
      {"Left", "12.5", "PageDown", "12.5"},
      {"Name", "edtCode", "Enter", ""},
  };
  for (const Case& row : cases) {
    GoTo(row.property);
    host_.Type(row.typed);
    host_.Key(row.key);
    const std::string name = host_.design().Name(host_.design().Primary());
    EXPECT_EQ(ValueOf(name, row.property), row.value) << row.property;
  }
  EXPECT_TRUE(Lines(host_.design(), "edtCode").starts_with("Begin VB.TextBox edtCode|"));
  EXPECT_EQ(host_.TakeTold(), "");
  EXPECT_EQ(host_.design().history().StepCount(), std::size(cases));
}

TEST_F(PropertyPaneTest, RefusesAndLeavesWhatWasTyped) {
  GoTo("MaxLength");
  host_.Type("x");
  host_.Key("Down");
  EXPECT_EQ(host_.TakeTold(), "MaxLength には整数を入力してください。\n");
  EXPECT_EQ(Chosen(), "MaxLength");
  EXPECT_EQ(host_.Text(kField), "x");
  EXPECT_FALSE(host_.pane().Settle());
  EXPECT_NE(host_.TakeTold(), "");
  // Another row by the mouse: the same.
  host_.Click(NameOf("Locked"));
  EXPECT_NE(host_.TakeTold(), "");
  EXPECT_EQ(Chosen() + "=" + host_.Text(kField), "MaxLength=x");
  host_.Key("Escape");
  EXPECT_EQ(host_.Text(kField), "0");
  EXPECT_TRUE(host_.pane().Settle());
  EXPECT_EQ(host_.Saved(), FormWith(kShown));
}

TEST_F(PropertyPaneTest, GoesToTheNextValueByDoubleClick) {
  host_.Select({"box"});
  host_.Click(NameOf("Visible"), true);
  EXPECT_EQ(ValueOf("box", "Visible"), "0 'False");
  host_.Click(NameOf("Visible"), true);
  EXPECT_EQ(ValueOf("box", "Visible"), "");
}

TEST_F(PropertyPaneTest, ResetsAndWalksByKeys) {
  GoTo("Text");
  host_.Key("Ctrl+Delete");
  EXPECT_EQ(ValueOf("t", "Text"), "");
  host_.Key("Ctrl+Shift+T");
  EXPECT_EQ(Chosen(), "ToolTipText");
  host_.Key("Ctrl+Home");
  EXPECT_EQ(Chosen(), "Name");
  host_.Key("Up");
  EXPECT_EQ(Chosen(), "Name");
  host_.Select({"box"});
  host_.Key("Up");
  host_.Key("F2");
  EXPECT_EQ(host_.TakeTold(), "pages of box\n");
}

TEST_F(PropertyPaneTest, WritesTextsOfSeveralLines) {
  GoTo("Text");
  host_.Type("one");
  host_.Key("Ctrl+Enter");
  host_.Type("two");
  host_.Key("Enter");
  EXPECT_EQ(host_.design().TextValue(host_.design().Primary(), "Text"), "one\r\ntwo");
  EXPECT_EQ(Shown("Text"), "one\xC2\xB6two");
  host_.Key("Ctrl+Home");
  EXPECT_EQ(host_.design().history().StepCount(), 1u);
}

TEST_F(PropertyPaneTest, KeepsItsPlace) {
  GoTo("Visible");
  const int top = ListView_GetTopIndex(Rows());
  EXPECT_GT(top, 0);
  host_.Select({"t", "u"});  // two rows less
  host_.Select({"t"});
  EXPECT_EQ(Chosen(), "Visible");
  EXPECT_EQ(ListView_GetTopIndex(Rows()), top);
}

// Presses OK in the next dialog, once `act` has done something to it.
std::thread Answer(std::function<void(HWND)> act) {
  return std::thread([act = std::move(act)] {
    HWND box = nullptr;
    for (int tries = 0; !box && tries < 200; ++tries) {
      Sleep(20);
      box = host::FrontBox();
    }
    if (!box) return;
    Sleep(200);
    act(box);
    host::PressButton(box, GetDlgItem(box, IDOK));
  });
}

TEST_F(PropertyPaneTest, TakesWhatDialogsGive) {
  GoTo("Font");
  std::thread user = Answer([](HWND) {});
  host_.Key("F2");
  user.join();
  // Which one the dialog begins with is the system's choice: it may not have the form's.
  EXPECT_NE(Shown("Font").find(", "), std::string::npos) << Shown("Font");
  EXPECT_NE(
      Lines(host_.design(), "t").find("BeginProperty Font {0BE35203-8F91-11CE-9DE3-00AA004BB851}"),
      std::string::npos);
  host_.Key("Delete");
  EXPECT_EQ(Shown("Font"), "");
  GoTo("BackColor");
  user = Answer([](HWND) {});
  host_.Key("Ctrl+Enter");
  user.join();
  EXPECT_EQ(Shown("BackColor"), "&H00FFFFFF&");
}

// A file that is no picture changes nothing and is told.
TEST_F(PropertyPaneTest, TakesAPictureFromItsFile) {
  const TempFolder folder;
  std::ofstream(folder.Path("small.bmp"), std::ios::binary) << SmallBitmap();
  std::ofstream(folder.Path("none.bmp"), std::ios::binary) << "nothing";
  host_.Select({"box"});
  const auto load = [&](const char* file) {
    GoTo("Picture");
    std::thread user = Answer([path = com::Wide(folder.Path(file))](HWND box) {
      host::EnterText(host::ItemOf(box, 1148), path);
    });
    host_.Key("F2");
    user.join();
  };
  load("none.bmp");
  EXPECT_NE(host_.TakeTold().find("none.bmp"), std::string::npos);
  EXPECT_EQ(host_.Saved(), FormWith(kShown));
  load("small.bmp");
  EXPECT_EQ(host_.TakeTold(), "");
  EXPECT_EQ(Shown("Picture"), "(Picture)");
  EXPECT_NE(Actions::Images(host_.design()).companion.bytes.find(SmallBitmap()), std::string::npos);
}

// The first item of a row's menu, by the right button and keys.
TEST_F(PropertyPaneTest, ResetsByTheMenuOfARow) {
  GoTo("Text");  // scrolled into view
  std::thread user([] {
    Sleep(500);
    host::PressKey(*form::KeyChordOf("Down"));
    Sleep(100);
    host::PressKey(*form::KeyChordOf("Enter"));
  });
  host::ClickKind right;
  right.right = true;
  host::ClickMouse(NameOf("Text"), right);
  host_.Pump();
  user.join();
  host_.Pump();
  EXPECT_EQ(ValueOf("t", "Text"), "");
  host_.design().Undo();
  EXPECT_EQ(host_.Saved(), FormWith(kShown));
}

}  // namespace
}  // namespace qrn::test
