// The code on the screen, worked by key and mouse.
#include <gtest/gtest.h>

#include "host/designer/model/CodePart.h"
#include "host/designer/model/Names.h"
#include "host/designer/panes/CodePane.h"
#include "host/user/Dialogs.h"
#include "tests/designer/kit/Forms.h"
#include "tests/designer/panes/PaneHost.h"

namespace qrn::test {
namespace {

using namespace designer;

constexpr char kHandled[] =
    "   Begin VB.CommandButton cmd \n      Index           =   0\n   End\n"
    "   Begin VB.TextBox txt \n   End\n";

constexpr char kCode[] =
    "Option Explicit\n\nPrivate Sub cmd_Click(Index As Integer)\n    Print 1\nEnd Sub\n\n"
    "Private Sub txt_Change()\n    Print 2\nEnd Sub\n";

enum Id { kEditor = 10, kReason = 11, kPlace = 12, kObjects = 30, kEvents = 31 };

class CodePaneTest : public testing::Test {
 protected:
  CodePaneTest() {
    auto pane = MakeCodePane(host_, host_.Frame());
    pane_ = pane.get();
    host_.Hold(std::move(pane));
    pane_->TakeFocus();
    host_.Pump();
  }
  std::string Code() { return CodePart(host_.design()).Text(); }
  // Long enough for the code to be looked through.
  void Rest() {
    Sleep(450);
    host_.Pump();
  }

  // By the arrow keys, the first of which opens the list and chooses nothing.
  void Choose(Id box, const wchar_t* line) {
    HWND list = host_.Child(box);
    SetFocus(list);
    host_.Key("Down");
    host_.Key("Home");
    const LRESULT place = SendMessageW(list, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                       reinterpret_cast<LPARAM>(line));
    for (LRESULT at = 0; at < place; ++at) host_.Key("Down");
    host_.Key("Enter");
  }

  PaneHost host_{kHandled, kCode};
  CodePane* pane_ = nullptr;
};

TEST_F(CodePaneTest, PutsWhatIsTypedIntoTheForm) {
  pane_->GoToLine(3);
  host_.Key("End");
  host_.Key("Enter");
  host_.Type("x = \"表\"");
  host_.Key("Enter");
  host_.Key("Tab");
  host_.Type("y");
  EXPECT_NE(Code().find("    Print 1\n    x = \"表\"\n        y\nEnd Sub\n"), std::string::npos)
      << Code();
  EXPECT_EQ(host_.Text(kPlace), "6 行、10 桁");
  // A line is a step, whoever undoes it.
  host_.Key("Ctrl+Z");
  EXPECT_EQ(Code().find("y\n"), std::string::npos);
  while (host_.design().CanUndo()) host_.Key("Ctrl+Z");
  EXPECT_EQ(host_.Saved(), FormWith(kHandled, kCode));
  EXPECT_EQ(host_.Text(kEditor).find("x ="), std::string::npos);
  host_.Key("Ctrl+Y");
  EXPECT_NE(host_.Saved(), FormWith(kHandled, kCode));
}

TEST_F(CodePaneTest, KeepsBackWhatTheFileCannotHold) {
  host_.Type("'\xE2\x82\xAC");
  EXPECT_EQ(Code().find("\xE2\x82\xAC"), std::string::npos);
  EXPECT_NE(host_.Text(kReason), "");
  EXPECT_FALSE(pane_->Settle());
  EXPECT_NE(host_.TakeTold().find("\xE2\x82\xAC"), std::string::npos);
  host_.Key("Backspace");
  EXPECT_TRUE(pane_->Settle());
  EXPECT_EQ(host_.Text(kReason), "");
  EXPECT_TRUE(Code().starts_with("'Option")) << Code();
}

TEST_F(CodePaneTest, MakesHandlersWithTheirArguments) {
  pane_->Go("cmd", "MouseDown");
  host_.Pump();
  host_.Type("    a");
  EXPECT_NE(Code().find("Private Sub cmd_MouseDown(Index As Integer, Button As Integer, Shift As "
                        "Integer, X As Single, Y As Single)\n    a\nEnd Sub\n"),
            std::string::npos)
      << Code();
  const std::string code = Code();
  pane_->Go("txt", "Change");
  EXPECT_EQ(Code(), code);
  host_.Pump();
  EXPECT_EQ(host_.Text(kObjects) + "." + host_.Text(kEvents), "txt.Change");
  pane_->Go("nobody", "Click");
  EXPECT_EQ(host_.TakeTold(), "nobody にイベント Click はありません。\n");
}

TEST_F(CodePaneTest, ChoosesEventsFromItsLists) {
  EXPECT_EQ(host_.Text(kObjects), "(全般)");
  Choose(kObjects, L"txt");  // leads to the handler that stands
  EXPECT_EQ(host_.Text(kEvents), "Change");
  EXPECT_EQ(host_.Text(kPlace), "8 行、5 桁");
  EXPECT_EQ(Code(), kCode);
  Choose(kEvents, L"GotFocus");
  EXPECT_NE(Code().find("Private Sub txt_GotFocus()\n"), std::string::npos) << Code();
}

TEST_F(CodePaneTest, MarksWhatCannotRun) {
  pane_->GoToLine(7);
  host_.Key("End");
  host_.Key("Enter");
  host_.Type("GoTo 10");
  Rest();
  EXPECT_TRUE(host_.Text(kReason).starts_with("9 行: ")) << host_.Text(kReason);
  host_.Key("Ctrl+Home");
  EXPECT_TRUE(host_.Text(kReason).starts_with("9 行: ")) << host_.Text(kReason);
  host_.Key("F8");
  EXPECT_TRUE(host_.Text(kPlace).starts_with("9 行")) << host_.Text(kPlace);
  host_.Key("Ctrl+Z");
  Rest();
  EXPECT_EQ(host_.Text(kReason), "");
  // A control's other name leaves its handlers alone.
  EXPECT_FALSE(PutIndex(host_.design(), IdOf(host_.design(), "cmd"), std::nullopt));
  Rest();
  EXPECT_NE(host_.Text(kReason).find("cmd_Click"), std::string::npos) << host_.Text(kReason);
}

TEST_F(CodePaneTest, ShiftsLinesAndWalksProcedures) {
  host_.Key("Ctrl+A");
  host_.Key("Tab");
  EXPECT_TRUE(Code().starts_with("    Option Explicit\n\n    Private")) << Code();
  host_.Key("Shift+Tab");
  EXPECT_EQ(Code(), kCode);
  host_.Key("Ctrl+Home");
  host_.Key("Ctrl+Down");
  EXPECT_TRUE(host_.Text(kPlace).starts_with("3 行"));
  host_.Key("Ctrl+Down");
  host_.Key("Ctrl+Down");
  EXPECT_TRUE(host_.Text(kPlace).starts_with("7 行"));
  host_.Key("Ctrl+Up");
  EXPECT_TRUE(host_.Text(kPlace).starts_with("3 行"));
}

TEST_F(CodePaneTest, FindsByTheSystemsDialog) {
  host_.Key("Ctrl+F");
  host_.Type("PRINT");
  host_.Key("Enter");
  host_.Key("Escape");
  EXPECT_EQ(GetFocus(), host_.Child(kEditor));
  EXPECT_EQ(host_.Text(kPlace), "4 行、10 桁");
  host_.Key("F3");
  EXPECT_EQ(host_.Text(kPlace), "8 行、10 桁");
  host_.Key("F3");
  EXPECT_EQ(host_.Text(kPlace), "4 行、10 桁");
  EXPECT_EQ(Code(), kCode);
}

}  // namespace
}  // namespace qrn::test
