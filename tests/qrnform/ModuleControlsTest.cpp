// The module's controls on forms: persisted properties, events, the container as they see it.
#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which it needs.
#include <psapi.h>

#include <cstddef>

#include "tests/qrnform/FormRun.h"
#include "tests/support/DrawingObjects.h"

namespace qrn::tests {
namespace {

const std::string kEdit = Edit("edtOne", 0, " MaxLength = 6\n Text = \"始\"\n Alignment = 1\n") +
                          Piece("VB.TextBox txtTwo", 1);
const std::string kEditInFrame = Holder("VB.Frame fra", 0, Edit("edtOne", 0));
const std::string kOtherFrame =
    Holder("VB.Frame fraTwo", 3,
           Edit("edtThree", 0) + Piece("VB.Label lblThree", 1, " Caption = \"三\"\n"));
const std::string kButton =
    Piece("QRNBTRLib.QRNBtn btnOne", 0, " Caption = \"実行\"\n ConfirmMsg = \"よろしいですか\"\n");

const FormCase kModuleCases[] = {
    {"properties come from the file", kEdit, "",
     "print edtOne.Text\nprint edtOne.MaxLength\nprint edtOne.Alignment\nprint edtOne.TabStop\n",
     "始\n6\n1\nTrue\n"},
    {"constants of the library are known", kEdit,
     "Private Sub Form_Load()\n  If edtOne.Alignment = AlignRight Then Print \"right\"\nEnd Sub\n",
     "", "right\n"},
    {"a handler's change of a key counts", kEdit,
     "Private Sub edtOne_KeyPress(KeyAscii As Integer)\n"
     "  If KeyAscii = Asc(\"x\") Then KeyAscii = 0\nEnd Sub\n",
     "focus edtOne\nset edtOne.Text = \"\"\ntype \"axb\"\nprint edtOne.Text\n", "ab\n"},
    {"tab leaves for the next control and comes back", kEdit, "",
     "focus edtOne\nkey Tab\nprint ActiveControl.Name\nkey Shift+Tab\nprint ActiveControl.Name\n",
     "txtTwo\nedtOne\n"},
    {"members of the container stand beside its own", kEditInFrame,
     "Private Sub Form_Load()\n  edtOne.Tag = \"t\"\n"
     "  Print edtOne.Name; edtOne.Tag; edtOne.Parent.Name; edtOne.Left; (edtOne.hWnd <> 0)\nEnd "
     "Sub\n",
     "", "edtOnetfrmTest 100 True\n"},
    {"a change is told", kEdit,
     "Private Sub edtOne_Change()\n  Print \"now \" & edtOne.Text\nEnd Sub\n",
     "focus edtOne\nkey End\ntype \"1\"\n", "now 始1\n"},
    {"a question declined still clicks", kButton,
     "Private Sub btnOne_Click()\n  Print \"clicked\"\nEnd Sub\n",
     "click btnOne\nmessage \"よろしいですか\" Cancel\nwait 100\n", "clicked\n"},
    {"the module's own message is read and answered", kButton,
     "Private Sub btnOne_Click()\n  Print \"clicked\"\nEnd Sub\n",
     "click btnOne\nmessage \"よろしいですか\" OK\n"
     "message \"VE802 DbSourceまたはDbTableﾌﾟﾛﾊﾟﾃｨが不正です。\" OK\nwait 100\n",
     "clicked\n"},
    {"a form goes inside a control's event", kEdit,
     "Private Sub edtOne_Change()\n  Unload Me\nEnd Sub\n"
     "Private Sub Form_Unload(Cancel As Integer)\n  Print \"unload\"\nEnd Sub\n",
     "focus edtOne\ntype \"1\"\nwait 200\n", "unload\n"},
};

class ModuleControls : public testing::TestWithParam<FormCase> {};

TEST_P(ModuleControls, LiveOnForms) { ExpectForm(GetParam()); }

INSTANTIATE_TEST_SUITE_P(Forms, ModuleControls, testing::ValuesIn(kModuleCases));

TEST(ModuleControls, ComeAgainWhenAFormIsLoadedAgain) {
  const std::string first =
      FormText(Piece("VB.CommandButton cmd", 0),
               "Private Sub cmd_Click()\n  Dim i As Integer\n  For i = 1 To 20\n    Load frmOther\n"
               "    frmOther.edtOne.Text = \"x\"\n    Unload frmOther\n  Next i\n"
               "  Print frmOther.edtOne.Text\nEnd Sub\n");
  const RunResult result =
      RunForms({{first, FormText(kEdit, "", "frmOther")}, "click cmd\nwait 100\n"});
  EXPECT_EQ(result.failure, "");
  EXPECT_EQ(result.printed, "始\n");
  EXPECT_EQ(result.left, 0);
}

int Windows() {
  int count = 0;
  EnumThreadWindows(
      GetCurrentThreadId(), [](HWND, LPARAM to) { return ++*reinterpret_cast<int*>(to), TRUE; },
      reinterpret_cast<LPARAM>(&count));
  return count;
}

// Memory that is in use; Wine counts no other kind.
size_t OwnBytes() {
  PROCESS_MEMORY_COUNTERS counters{};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
  return counters.WorkingSetSize;
}

constexpr int kLives = 200;

RunResult LoadOften(int times) {
  const std::string code =
      "Private Sub Form_Load()\n  Dim i As Integer\n  For i = 1 To " + std::to_string(times) +
      "\n    Load frmOther\n    Unload frmOther\n  Next i\n  Print \"done\"\nEnd Sub\n";
  return RunForms(
      {{FormText(kButton, code), FormText(kEdit + kOtherFrame + kButton, "", "frmOther")}, ""});
}

TEST(ModuleControls, LeaveNothingBehindHoweverOftenAFormIsLoaded) {
  // What the script engine holds until its procedure ends is given back then: as much each time.
  EXPECT_EQ(LoadOften(kLives).printed, "done\n");
  const long long objects = test::DrawingObjects();
  const int windows = Windows();
  const size_t bytes = OwnBytes();
  ASSERT_GT(objects, 0);
  ASSERT_GT(bytes, 0u);
  const RunResult result = LoadOften(kLives);
  EXPECT_EQ(result.printed, "done\n");
  EXPECT_EQ(result.left, 0);
  EXPECT_EQ(test::DrawingObjects(), objects);
  EXPECT_EQ(Windows(), windows);
  // Room for what heaps keep; a control that leaks takes more at each load.
  EXPECT_LT(OwnBytes(), bytes + kLives * 500);
}

TEST(ModuleControls, AreDesignedWhereNoCodeRuns) {
  const RunResult result =
      RunForms({{FormText(kEdit, "Private Sub Form_Load()\n  Print \"code\"\nEnd Sub\n")},
                "print edtOne.Text\n",
                true});
  EXPECT_EQ(result.failure, "");
  EXPECT_EQ(result.printed, "始\n");
  EXPECT_EQ(result.left, 0);
}

}  // namespace
}  // namespace qrn::tests
