// Forms with furniture alone: handlers, keys, several forms.
#include <gtest/gtest.h>
#include <windows.h>

#include "host/container/Text.h"
#include "host/runner/Form.h"
#include "tests/qrnform/FormRun.h"

namespace qrn::tests {
namespace {

const std::string kTwoTexts = Piece("VB.TextBox txtOne", 0) +
                              Piece("VB.Label lblTwo", 1, " Caption = \"次(&T)\"\n") +
                              Piece("VB.TextBox txtTwo", 2);
const std::string kButtons =
    Piece("VB.CommandButton cmdOk", 1, " Caption = \"確定(&K)\"\n Default = -1\n") +
    Piece("VB.CommandButton cmdNo", 2, " Caption = \"中止\"\n Cancel = -1\n") +
    Piece("VB.TextBox txtOne", 0);
const std::string kArray = Piece("VB.CommandButton cmdNum", 0, " Caption = \"一\"\n Index = 1\n") +
                           Piece("VB.CommandButton cmdNum", 1, " Caption = \"五\"\n Index = 5\n");
const std::string kFrame =
    Holder("VB.Frame fraBox", 0,
           Piece("VB.TextBox txtIn", 0) + Piece("VB.Label lblIn", 1, " Caption = \"押す\"\n"));

const FormCase kFormCases[] = {
    {"a handler changes and drops what is typed", kTwoTexts,
     "Private Sub txtOne_KeyPress(KeyAscii As Integer)\n"
     "  If KeyAscii = Asc(\"x\") Then KeyAscii = 0\n"
     "  If KeyAscii = Asc(\"y\") Then KeyAscii = Asc(\"Y\")\n"
     "End Sub\n",
     "type \"axbyc\"\nprint txtOne.Text\n", "abYc\n"},
    {"kanji are typed as they are", kTwoTexts, "", "type \"漢字ｱ表\"\nprint txtOne.Text\n",
     "漢字ｱ表\n"},
    {"tab goes round, shift turns it, a label's key hands on", kTwoTexts,
     "Private Sub txtTwo_GotFocus()\n  Print \"two\"\nEnd Sub\n"
     "Private Sub txtOne_LostFocus()\n  Print \"left one\"\nEnd Sub\n",
     "key Tab\nkey Tab\nprint ActiveControl.Name\nkey Shift+Tab\nprint ActiveControl.Name\n"
     "key Tab\nkey Alt+T\nprint ActiveControl.Name\n",
     "left one\ntwo\ntxtOne\nleft one\ntwo\ntxtTwo\nleft one\ntwo\ntxtTwo\n"},
    {"enter and escape press their buttons, so does a caption's key", kButtons,
     "Private Sub cmdOk_Click()\n  Print \"ok \" & txtOne.Text\nEnd Sub\n"
     "Private Sub cmdNo_Click()\n  Print \"no\"\nEnd Sub\n",
     "type \"a\"\nkey Enter\nfocus txtOne\nkey Escape\nkey Alt+K\nclick cmdNo\n",
     "ok a\nno\nok a\nno\n"},
    {"elements of an array tell their index", kArray,
     "Private Sub cmdNum_Click(Index As Integer)\n"
     "  Print Index; cmdNum(Index).Caption; cmdNum.Count\nEnd Sub\n",
     "click cmdNum(5)\nclick cmdNum(1)\n", " 5 五 2 \n 1 一 2 \n"},
    {"what lies in a frame has the form as its parent", kFrame,
     "Private Sub lblIn_Click()\n  Print txtIn.Parent.Name, txtIn.Container.Name\nEnd Sub\n",
     "click lblIn\n", "frmTest       fraBox\n"},
    {"places are twips", kFrame,
     "Private Sub Form_Load()\n  txtIn.Left = 600: txtIn.Move 600, 450, 1500\n"
     "  Print txtIn.Left; txtIn.Top; txtIn.Width; txtIn.Height\nEnd Sub\n",
     "", " 600  450  1500  400 \n"},
    {"variables keep their types, functions their names", kTwoTexts,
     "Private total As Integer\n"
     "Private Sub txtOne_Change()\n  total = total + 7 / 2\n"
     "  Print total; Left(txtOne.Text, 1); Format(1234.5, \"#,##0.00\")\nEnd Sub\n",
     "type \"ab\"\n", " 4 a1,234.50\n 8 a1,234.50\n"},
    {"a box waits for its answer", kArray,
     "Private Sub cmdNum_Click(Index As Integer)\n"
     "  If MsgBox(\"よいですか\", vbYesNo) = vbYes Then Print \"yes\" Else Print \"no\"\nEnd Sub\n",
     "click cmdNum(1)\nmessage \"よいですか\" Yes\nclick cmdNum(1)\nmessage \"よいですか\" No\n",
     "yes\nno\n"},
    {"a form can refuse to close", kTwoTexts,
     "Private tries As Integer\n"
     "Private Sub Form_Unload(Cancel As Integer)\n  tries = tries + 1\n  Print \"unload\"; tries\n"
     "  Cancel = (tries < 2)\nEnd Sub\n",
     "close\nwait 100\nprint txtOne.Visible\nclose\nwait 100\n", "unload 1 \nTrue\nunload 2 \n"},
    {"a form goes inside an event of what lies on it", kButtons,
     "Private Sub cmdOk_Click()\n  Unload Me\n  Print \"gone\"\nEnd Sub\n",
     "click cmdOk\nwait 200\n", "gone\n"},
    {"controls are walked and found by name and place", kButtons,
     "Private Sub Form_Load()\n  Dim c As Control\n  For Each c In Controls\n    Print c.Name;\n"
     "  Next c\n  Print Controls(0).Name; Controls(\"cmdNo\").Caption; Controls.Count\nEnd Sub\n",
     "", "cmdOkcmdNotxtOnecmdOk中止 3 \n"},
    {"sizes and places beyond all screens are taken", kFrame,
     "Private Sub Form_Load()\n  txtIn.Left = 1E+300: txtIn.Width = 1E+200\n"
     "  txtIn.Left = -1E+300: Print \"still here\"\nEnd Sub\n",
     "", "still here\n"},
    {"a form's keys come first where it asks for them", kTwoTexts,
     "Private Sub Form_Load()\n  KeyPreview = True\nEnd Sub\n"
     "Private Sub Form_KeyPress(KeyAscii As Integer)\n"
     "  If KeyAscii = Asc(\"q\") Then KeyAscii = 0\nEnd Sub\n",
     "type \"aqb\"\nprint txtOne.Text\n", "ab\n"},
};

class Forms : public testing::TestWithParam<FormCase> {};

// The last one cannot be read, but nobody names it.
TEST(FormsBeside, AreFoundWhereCodeNamesThem) {
  const std::string first = FormText("", "Private Sub Form_Load()\n  FRMOTHER.Tell\nEnd Sub\n");
  const std::string other =
      FormText("", "Public Sub Tell()\n  Print \"frmLast\"; frmThird.Name\nEnd Sub\n", "frmOther");
  const std::string third = FormText("", "", "frmThird");
  const std::string last = FormText("", "Public Sub A()\n  GoTo 5\nEnd Sub\n", "frmLast");
  const RunResult result = RunForms({{first, other, third, last}, "", false, 1});
  EXPECT_EQ(result.failure + result.told, "");
  EXPECT_EQ(result.printed, "frmLastfrmThird\n");
}

TEST(FormsBeside, ThatCannotBeReadAreToldOf) {
  const std::string first = FormText("", "Private Sub Form_Load()\n  frmOther.Show\nEnd Sub\n");
  const RunResult result = RunForms(
      {{first, FormText("", "Public Sub A()\n  GoTo 5\nEnd Sub\n", "frmOther")}, "", false, 1});
  EXPECT_NE(result.failure.find("form2.frm:11: "), std::string::npos) << result.failure;
}

TEST_P(Forms, DoWhatTheirCodeSays) { ExpectForm(GetParam()); }

INSTANTIATE_TEST_SUITE_P(Furniture, Forms, testing::ValuesIn(kFormCases));

struct MouseCase {
  const char* name;
  const char* control;  // whose window gets the message
  POINT point;
  UINT messages[2];
  const wchar_t* heard;
};

constexpr MouseCase kMouseCases[] = {
    {"a label in a frame is clicked, not the frame",
     "fraBox",
     {10, 50},
     {WM_LBUTTONDOWN, WM_LBUTTONUP},
     L"label "},
    {"beside it the frame is", "fraBox", {200, 90}, {WM_LBUTTONDOWN, WM_LBUTTONUP}, L"frame "},
    {"furniture hears the middle button", "txtIn", {5, 5}, {WM_MBUTTONDOWN, WM_MBUTTONUP}, L"4 "},
};

TEST(Mouse, IsHeardByTheInnermostPiece) {
  const std::string code =
      "Private Sub fraBox_Click()\n  Tag = Tag & \"frame \"\nEnd Sub\n"
      "Private Sub lblIn_Click()\n  Tag = Tag & \"label \"\nEnd Sub\n"
      "Private Sub txtIn_MouseDown(Button As Integer, Shift As Integer, X As Single, Y As Single)\n"
      "  Tag = Tag & Button & \" \"\nEnd Sub\n";
  for (const MouseCase& given : kMouseCases) {
    OpenForms forms({FormText(kFrame, code)}, false);
    HWND window = forms.first().Find(host::Wide(given.control))->Window();
    for (const UINT message : given.messages) {
      SendMessageW(window, message, 0, MAKELPARAM(given.point.x, given.point.y));
    }
    EXPECT_EQ(forms.first().look().tag, given.heard) << given.name;
  }
}

TEST(Companions, HoldTextsUnderBothNotations) {
  const std::string controls =
      Piece("VB.TextBox txtOne", 0, " MultiLine = -1\n Text = \"form1.frx\":0000\n") +
      Piece("VB.Label lblTwo", 1, " Caption = $\"form1.frx\":0007\n");
  RunRequest request{{FormText(controls, "")}, "print txtOne.Text\nprint lblTwo.Caption\n"};
  request.companion = "\x06one\r\n1\x03two";
  const RunResult result = RunForms(request);
  EXPECT_EQ(result.failure, "");
  EXPECT_EQ(result.printed, "one\r\n1\ntwo\n");
}

TEST(SeveralForms, ShowEachOtherAndShareWhatIsPublic) {
  const std::string first =
      FormText(kButtons,
               "Private Sub cmdOk_Click()\n  frmOther.Ask \"何\"\n  frmOther.Show vbModal\n"
               "  Print frmOther.Answer\nEnd Sub\n");
  const std::string second = FormText(
      Piece("VB.CommandButton cmdDone", 0),
      "Public Answer As String\nPublic Sub Ask(Text As String)\n  Caption = Text\nEnd Sub\n"
      "Private Sub cmdDone_Click()\n  Answer = Caption & \"!\"\n  Unload Me\nEnd Sub\n",
      "frmOther");
  const RunResult result =
      RunForms({{first, second}, "click cmdOk\nclick frmOther.cmdDone\nwait 100\n"});
  EXPECT_EQ(result.failure, "");
  EXPECT_EQ(result.printed, "何!\n");
  EXPECT_EQ(result.left, 0);
}

TEST(Faults, AreCountedAndTheFormGoesOn) {
  const RunResult result =
      RunForms({{FormText(kButtons,
                          "Private Sub cmdOk_Click()\n  Dim a As Integer\n  Print 1 / a\nEnd Sub\n"
                          "Private Sub cmdNo_Click()\n  Print \"still here\"\nEnd Sub\n")},
                "click cmdOk\nclick cmdNo\n"});
  EXPECT_EQ(result.failure, "");
  EXPECT_EQ(result.faults, 1);
  EXPECT_EQ(result.printed, "still here\n");
}

struct FaultCase {
  const char* name;
  const char* code;  // on line 12 of the file
  const char* told;
};

// The words of some are the system's own, in its language.
const FaultCase kFaultCases[] = {
    {"a name that nothing declares", "nowhere = 1", "form1.frm:12: error "},
    {"a member of nothing", "Dim o: Set o = Nothing: o.Text = 1", "form1.frm:12: error "},
    {"a member of an unknown control", "edtNone.Text = 1", "form1.frm:12: error "},
    {"a division by zero", "Me.Tag = 1 / 0", "form1.frm:12: error 11: "},
};

TEST(Faults, OfRunningCodeAreNoSyntaxErrors) {
  for (const FaultCase& given : kFaultCases) {
    const RunResult result =
        RunForms({{FormText("", "Option Explicit\nPrivate Sub Form_Load()\n  " +
                                    std::string(given.code) + "\nEnd Sub\n")}});
    EXPECT_EQ(result.failure, "") << given.name;
    EXPECT_EQ(result.faults, 1) << given.name;
    EXPECT_EQ(result.told.substr(0, std::string(given.told).size()), given.told) << given.name;
    EXPECT_EQ(result.told.find("syntax"), std::string::npos) << given.name << ": " << result.told;
  }
}

TEST(Faults, OfReadingCodeAreToldBeforeTheFormComes) {
  const RunResult result =
      RunForms({{FormText("", "Private Sub Form_Load()\n  x = = 1\nEnd Sub\n")}});
  EXPECT_NE(result.told.find("form1.frm:11: error 1002: syntax error"), std::string::npos)
      << result.told;
  EXPECT_EQ(result.failure, "form1.frm: the form's code cannot be run");
}

TEST(Scripts, StopAtTheFirstStepThatFails) {
  const RunResult result =
      RunForms({{FormText(kTwoTexts, "")},
                "type \"a\"\nexpect txtOne.Text = \"b\"\nprint \"not reached\"\n"});
  EXPECT_EQ(result.failure, "script:2: expected txtOne.Text = \"b\", it is \"a\"");
  EXPECT_EQ(result.printed, "");
}

struct StepCase {
  const char* name;
  const char* script;
  const char* failure;
};

constexpr char kAsking[] =
    "Private Sub cmdAsk_Click()\n"
    "  If MsgBox(\"よいか\", vbOKCancel, \"問\") = vbOK Then Print \"ok\" Else Print \"no\"\n"
    "End Sub\n";

const std::string kReaches =
    Piece("VB.CommandButton cmdAsk", 0) + Piece("VB.CommandButton cmdOff", 1, " Enabled = 0\n") +
    Piece("VB.CommandButton cmdGone", 2, " Visible = 0\n") +
    Piece("VB.Label lblOff", 3, " Enabled = 0\n") + Piece("VB.TextBox txtOne", 4) +
    Piece("QRNBTRLib.QRNBtn btnOff", 5, " Enabled = 0\n") +
    Holder("VB.Frame fra", 6, " Enabled = 0\n" + Piece("VB.CommandButton cmdIn", 0));

const StepCase kStepCases[] = {
    {"a box that the step waits for is answered",
     "click cmdAsk\nmessage \"よいか\" Cancel\n"
     "click txtOne\ntype \"a\"\nexpect txtOne.Text = \"a\"\n",
     ""},
    {"a key may answer a box", "click cmdAsk\nkey Enter\nwait 100\n", ""},
    {"a click beside a box", "click cmdAsk\nclick txtOne\n",
     "script:2: the box \"よいか\" (title \"問\") is in the way"},
    {"typing beside a box", "click cmdAsk\n\ntype \"a\"\n",
     "script:3: the box \"よいか\" (title \"問\") is in the way"},
    {"a focus beside a box", "click cmdAsk\nfocus txtOne\n",
     "script:2: the box \"よいか\" (title \"問\") is in the way"},
    {"a box at the end", "# asks\nclick cmdAsk\n",
     "script:2: nobody answers the box \"よいか\" (title \"問\")"},
    {"a disabled button", "click cmdOff\n", "script:1: cmdOff is disabled"},
    {"a disabled button of the module", "dblclick btnOff\n", "script:1: btnOff is disabled"},
    {"a disabled label", "click lblOff\n", "script:1: lblOff is disabled"},
    {"a button in a disabled frame", "click cmdIn\n", "script:1: cmdIn is disabled"},
    {"a hidden button", "click cmdGone\n", "script:1: cmdGone is hidden"},
    {"a button outside the screen", "set frmTest.Left = -9000\nclick cmdAsk\n",
     "script:2: cmdAsk lies outside the screen"},
    {"pages of a control without any", "pages cmdAsk\n", "script:1: cmdAsk has no property pages"},
    {"a picture in no folder", "shot no/such/x.png\n",
     "script:1: no/such/x.png: the picture cannot be saved"},
};

TEST(Scripts, FailWhereAUserCouldDoNothing) {
  for (const StepCase& given : kStepCases) {
    const RunResult result = RunForms({{FormText(kReaches, kAsking)}, given.script});
    EXPECT_EQ(result.failure, given.failure) << given.name;
    EXPECT_EQ(result.left, 0) << given.name;
  }
}

// What is left to read then is nobody's, so nobody is waited for.
TEST(Scripts, EndAsSoonAsTheirProgramDoes) {
  const ULONGLONG start = GetTickCount64();
  const RunResult result = RunForms({{FormText(kTwoTexts, "")}, "close\nwait 1\nwait 1\n"});
  EXPECT_EQ(result.failure, "");
  EXPECT_LT(GetTickCount64() - start, 3000u);
}

const StepCase kStartCases[] = {
    {"answered", "message \"一\" OK\nmessage \"二\" Yes\nexpect frmTest.Tag = \"6\"\n", ""},
    {"answered only in part", "message \"一\" OK\nexpect frmTest.Tag = \"6\"\n",
     "script:2: nobody answers the box \"二\" (title \"問\") that comes before the form"},
    {"not answered by an empty script", "", "nobody answers the box \"一\" (title \"問\")"},
    {"answered and nothing else to do", "message \"一\" OK\nmessage \"二\" No\n", ""},
};

TEST(Scripts, AnswerBoxesOfTheStart) {
  for (const StepCase& given : kStartCases) {
    const RunResult result =
        RunForms({{FormText("",
                            "Private Sub Form_Load()\n  MsgBox \"一\", vbOKOnly, \"問\"\n"
                            "  Me.Tag = MsgBox(\"二\", vbYesNo, \"問\")\nEnd Sub\n")},
                  given.script});
    EXPECT_EQ(result.failure, given.failure) << given.name;
    EXPECT_EQ(result.left, 0) << given.name;
  }
}

TEST(Scripts, PlayBeforeAModalFormOfTheStart) {
  const std::string first = FormText(
      "", "Private Sub Form_Load()\n  frmOther.Show vbModal\n  Print \"loaded\"\nEnd Sub\n");
  const std::string second =
      FormText(Piece("VB.CommandButton cmdDone", 0),
               "Private Sub cmdDone_Click()\n  Unload Me\nEnd Sub\n", "frmOther");
  const RunResult result =
      RunForms({{first, second}, "click frmOther.cmdDone\nexpect frmTest.Visible = True\n"});
  EXPECT_EQ(result.failure, "");
  EXPECT_EQ(result.printed, "loaded\n");
  EXPECT_EQ(result.left, 0);
}

}  // namespace
}  // namespace qrn::tests
