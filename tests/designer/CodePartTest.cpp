// The code behind a form in the designer.
#include <gtest/gtest.h>

#include "host/designer/model/CodePart.h"
#include "host/designer/model/Controls.h"
#include "host/designer/model/Names.h"
#include "tests/designer/kit/Actions.h"
#include "tests/designer/kit/Forms.h"

namespace qrn::test {
namespace {

using namespace designer;

constexpr char kControls[] =
    "   Begin VB.CommandButton cmd \n      Index           =   0\n   End\n"
    "   Begin VB.CommandButton cmd \n      Index           =   1\n   End\n"
    "   Begin LIB.Box box \n   End\n   Begin VB.TextBox 文字 \n   End\n";

constexpr char kCode[] =
    "Option Explicit\n\nPrivate Sub cmd_Click _\n    (Index As Integer)\n  If a Then End\nEnd Sub\n"
    "' About the form.\n' Two lines.\nPublic Static Function Form_Load() As Long\nEnd Function\n"
    "Property Get Size() As Long\nEnd Property\nSub Open_()\n";

TEST(CodePart, KnowsItsProcedures) {
  const auto design = Designed(FormWith(kControls, kCode));
  CodePart code(*design);
  std::string text;
  for (const CodeProcedure& procedure : code.Procedures()) {
    text += procedure.name + " " + std::to_string(procedure.firstLine) + "-" +
            std::to_string(procedure.lastLine) + ", ";
  }
  EXPECT_EQ(text, "cmd_Click 2-5, Form_Load 8-9, Size 10-11, Open_ 12-12, ");
  EXPECT_EQ(code.Find("CMD", "click"), 2);
  EXPECT_EQ(code.Find("box", "Change"), -1);
}

TEST(CodePart, CountsTheFilesLines) {
  const auto design = Designed(FormWith(kControls, kCode));
  CodePart code(*design);
  EXPECT_EQ(code.FileLine(0), 19);
  EXPECT_EQ(code.CodeLine(19), 0);
  EXPECT_EQ(code.CodeLine(18), -1);
  EXPECT_EQ(code.CodeLine(19 + code.LineCount()), -1);
}

TEST(CodePart, KnowsWhoseHandlerAProcedureIs) {
  const auto design = Designed(
      FormWith(std::string(kControls) + "   Begin VB.CommandButton ok_now \n   End\n", kCode));
  const CodePart code(*design);
  struct Case {
    const char* procedure;
    const char* place;
  } const cases[] = {
      {"form_load", "Form.Load"},
      {"CMD_click", "cmd.Click"},
      {"ok_now_Click", "ok_now.Click"},
      {"文字_Change", "文字.Change"},
      {"cmd_Later", ""},
      {"Open_", ""},
      {"x", ""},
  };
  for (const Case& row : cases) {
    const auto place = code.HandledBy(row.procedure);
    EXPECT_EQ(place ? place->object + "." + place->event : "", row.place) << row.procedure;
  }
}

TEST(CodePart, WritesFirstLinesWithTheRightArguments) {
  const auto design = Designed(FormWith(kControls));
  CodePart code(*design);
  struct Case {
    const char* object;
    const char* event;
    const char* line;
  } const cases[] = {
      {"form", "load", "Private Sub Form_Load()"},
      {"Form", "Unload", "Private Sub Form_Unload(Cancel As Integer)"},
      {"Form", "QueryUnload",
       "Private Sub Form_QueryUnload(Cancel As Integer, UnloadMode As Integer)"},
      {"cmd", "Click", "Private Sub cmd_Click(Index As Integer)"},
      {"CMD", "mousedown",
       "Private Sub cmd_MouseDown(Index As Integer, Button As Integer, Shift As Integer, X As "
       "Single, Y As Single)"},
      {"box", "SetData", "Private Sub box_SetData(Cancel As Boolean, ByVal Field As String)"},
      {"文字", "Change", "Private Sub 文字_Change()"},
      {"box", "Click", ""},
      {"nobody", "Click", ""},
  };
  for (const Case& row : cases) EXPECT_EQ(code.FirstLine(row.object, row.event), row.line);
}

TEST(CodePart, PutsNewProceduresInTheAlphabetsOrder) {
  struct Case {
    const char* what;
    const char* code;
    const char* object;
    const char* event;
    const char* after;
    int line;
  } const cases[] = {
      {"into nothing", "", "Form", "Load", "Private Sub Form_Load()\n\nEnd Sub\n", 1},
      {"behind declarations", "Option Explicit\n", "Form", "Load",
       "Option Explicit\n\nPrivate Sub Form_Load()\n\nEnd Sub\n", 3},
      {"before a later one and what is said of it",
       "Sub a()\nEnd Sub\n\n' Of z.\nSub z()\nEnd Sub\n", "Form", "Load",
       "Sub a()\nEnd Sub\n\nPrivate Sub Form_Load()\n\nEnd Sub\n\n' Of z.\nSub z()\nEnd Sub\n", 4},
      {"behind a last line without an end", "Sub a()\nEnd Sub", "box", "Change",
       "Sub a()\nEnd Sub\n\nPrivate Sub box_Change()\n\nEnd Sub\n", 4},
      {"where it stands", "Sub FORM_LOAD()\nx = 1\nEnd Sub\n", "Form", "Load",
       "Sub FORM_LOAD()\nx = 1\nEnd Sub\n", 1},
  };
  for (const Case& row : cases) {
    const auto design = Designed(FormWith(kControls, row.code));
    CodePart code(*design);
    int line = 0;
    EXPECT_FALSE(code.FindOrMake(row.object, row.event, &line)) << row.what;
    EXPECT_EQ(code.Text(), row.after) << row.what;
    EXPECT_EQ(line, row.line) << row.what;
    if (design->CanUndo()) design->Undo();
    EXPECT_EQ(Actions::Saved(*design), FormWith(kControls, row.code)) << row.what;
  }
}

TEST(CodePart, ChangesTheLinesThatDifferAlone) {
  const std::string odd = "\x81\x20";  // no character; systems show it differently
  const std::string mixed = FormWith(kControls) + "one\rtwo\nthree\r\n" + odd;
  const std::string shown = FileText().Decode(odd);
  const struct {
    std::string text;
    const char* bytes;
  } cases[] = {
      {"one\ntwo\nthree\n" + shown, "one\rtwo\nthree\r\n\x81\x20"},
      {"one\r\ntwo\rthree\n" + shown, "one\rtwo\nthree\r\n\x81\x20"},
      {"one\n2\nthree\n" + shown, "one\r2\r\nthree\r\n\x81\x20"},
      {"zero\none\ntwo\nthree\n" + shown, "zero\r\none\rtwo\nthree\r\n\x81\x20"},
      {"one\ntwo\nthree\n表\n", "one\rtwo\nthree\r\n\x95\x5C\r\n"},
      {"", ""},
  };
  for (const auto& row : cases) {
    const auto design = Designed(mixed);
    CodePart code(*design);
    EXPECT_FALSE(code.PutText(row.text)) << row.text;
    const std::string saved = Actions::Saved(*design);
    EXPECT_EQ(saved.substr(FormWith(kControls).size()), row.bytes) << row.text;
  }
}

TEST(CodePart, BeginsBehindAFormThatEndsTheFile) {
  const auto design = Designed("VERSION 5.00\r\nBegin VB.Form F \r\nEnd");
  EXPECT_FALSE(CodePart(*design).PutText("x = 1"));
  EXPECT_EQ(Actions::Saved(*design), "VERSION 5.00\r\nBegin VB.Form F \r\nEnd\r\nx = 1");
  design->Undo();
  EXPECT_EQ(Actions::Saved(*design), "VERSION 5.00\r\nBegin VB.Form F \r\nEnd");
}

}  // namespace
}  // namespace qrn::test
