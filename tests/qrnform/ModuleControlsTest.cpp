// The module's controls on forms: persisted properties, events, the container as they see it.
#include <gtest/gtest.h>
#include <windows.h>
// After windows.h, which it needs.
#include <psapi.h>

#include <cstddef>
#include <cstring>

#include "tests/qrnform/FormRun.h"

namespace qrn::tests {
namespace {

constexpr char kEdit[] =
    "Begin QRNBTRLib.QRNEdit edtOne\n Left = 100\n Top = 100\n Width = 2000\n Height = 400\n"
    " TabIndex = 0\n MaxLength = 6\n Text = \"始\"\n Alignment = 1\nEnd\n"
    "Begin VB.TextBox txtTwo\n Left = 100\n Top = 600\n Width = 2000\n Height = 400\n TabIndex = "
    "1\nEnd\n";
constexpr char kEditInFrame[] =
    "Begin VB.Frame fra\n Left = 100\n Top = 100\n Width = 4000\n Height = 2000\n"
    "Begin QRNBTRLib.QRNEdit edtOne\n Left = 300\n Top = 400\n Width = 2000\n Height = 400\nEnd\n"
    "End\n";
constexpr char kEditInFrame2[] =
    "Begin VB.Frame fraTwo\n Left = 100\n Top = 1000\n Width = 4000\n Height = 2000\n"
    "Begin QRNBTRLib.QRNEdit edtThree\n Left = 300\n Top = 400\n Width = 2000\n Height = 400\nEnd\n"
    "Begin VB.Label lblThree\n Left = 300\n Top = 900\n Caption = \"三\"\nEnd\nEnd\n";
constexpr char kButton[] =
    "Begin QRNBTRLib.QRNBtn btnOne\n Left = 100\n Top = 100\n Width = 2000\n Height = 400\n"
    " Caption = \"実行\"\n ConfirmMsg = \"よろしいですか\"\nEnd\n";

struct ControlCase {
  const char* name;
  const char* controls;
  const char* code;
  const char* script;
  const char* printed;
};

const ControlCase kCases[] = {
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
     "", "edtOnetfrmTest 300 True\n"},
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

class ModuleControls : public testing::TestWithParam<ControlCase> {};

TEST_P(ModuleControls, LiveOnForms) {
  const ControlCase& given = GetParam();
  const RunResult result = RunForms({{FormText(given.controls, given.code)}, given.script});
  EXPECT_EQ(result.failure, "") << given.name;
  EXPECT_EQ(result.printed, given.printed) << given.name;
  EXPECT_EQ(result.faults, 0) << given.name;
  EXPECT_EQ(result.left, 0) << given.name;
}

INSTANTIATE_TEST_SUITE_P(Forms, ModuleControls, testing::ValuesIn(kCases));

TEST(ModuleControls, ComeAgainWhenAFormIsLoadedAgain) {
  const std::string first = FormText(
      "Begin VB.CommandButton cmd\n Left = 100\n Top = 100\n Width = 900\n Height = 400\nEnd\n",
      "Private Sub cmd_Click()\n  Dim i As Integer\n  For i = 1 To 20\n    Load frmOther\n"
      "    frmOther.edtOne.Text = \"x\"\n    Unload frmOther\n  Next i\n"
      "  Print frmOther.edtOne.Text\nEnd Sub\n");
  const RunResult result =
      RunForms({{first, FormText(kEdit, "", "frmOther")}, "click cmd\nwait 100\n"});
  EXPECT_EQ(result.failure, "");
  EXPECT_EQ(result.printed, "始\n");
  EXPECT_EQ(result.left, 0);
}

// Used slots of the process's table of drawing objects, and its windows.
int DrawingObjects() {
  constexpr size_t kTableOfBlock = 0xF8;  // where the process block points to the table
  constexpr size_t kSlots = 65536;
  constexpr size_t kSlotBytes = 24;
  constexpr size_t kTypeOfSlot = 14;
  const auto* block = reinterpret_cast<const std::byte*>(__readgsqword(0x60));
  const std::byte* table = nullptr;
  memcpy(&table, block + kTableOfBlock, sizeof table);
  int used = 0;
  for (size_t i = 0; table && i < kSlots; ++i) {
    uint16_t type = 0;
    memcpy(&type, table + i * kSlotBytes + kTypeOfSlot, sizeof type);
    used += type != 0;
  }
  return used;
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

constexpr int kLives = 1000;

RunResult LoadOften(int times) {
  const std::string code =
      "Private Sub Form_Load()\n  Dim i As Integer\n  For i = 1 To " + std::to_string(times) +
      "\n    Load frmOther\n    Unload frmOther\n  Next i\n  Print \"done\"\nEnd Sub\n";
  return RunForms({{FormText(kButton, code),
                    FormText(std::string(kEdit) + kEditInFrame2 + kButton, "", "frmOther")},
                   ""});
}

TEST(ModuleControls, LeaveNothingBehindHoweverOftenAFormIsLoaded) {
  // What the script engine holds until its procedure ends is given back then: as much each time.
  EXPECT_EQ(LoadOften(kLives).printed, "done\n");
  const int objects = DrawingObjects();
  const int windows = Windows();
  const size_t bytes = OwnBytes();
  ASSERT_GT(objects, 0);
  ASSERT_GT(bytes, 0u);
  const RunResult result = LoadOften(kLives);
  EXPECT_EQ(result.printed, "done\n");
  EXPECT_EQ(result.left, 0);
  EXPECT_EQ(DrawingObjects(), objects);
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
