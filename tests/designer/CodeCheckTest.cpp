// What the designer finds in code that cannot run, line by line.
#include <gtest/gtest.h>

#include "host/designer/model/CodeCheck.h"
#include "host/designer/model/CodePart.h"
#include "tests/designer/kit/Forms.h"

namespace qrn::test {
namespace {

using namespace designer;

constexpr char kCheckedControls[] =
    "   Begin VB.CommandButton cmd \n      Index           =   0\n   End\n"
    "   Begin VB.CommandButton ok_now \n   End\n   Begin ODD.Thing odd \n   End\n";

// "line: reason" with lines of the code from 0, each with a semicolon behind it.
std::string Found(const std::string& code) {
  const auto design = Designed(FormWith(kCheckedControls, code));
  std::string text;
  for (const form::Mistake& mistake : CheckCode(*design)) {
    text += std::to_string(CodePart(*design).CodeLine(mistake.line)) + ": " + mistake.reason + "; ";
  }
  return text;
}

TEST(CodeCheck, TellsWhatCannotRunWhereItStands) {
  const std::string count = " is a handler of an event with ";
  struct Case {
    const char* name;
    std::string code;
    std::string found;
  } const cases[] = {
      {"nothing", "", ""},
      {"all is well", "Private Sub Form_Load()\n  Dim a As Integer\nEnd Sub\n", ""},
      {"an event's arguments are missing", "Sub x()\nEnd Sub\nSub Form_Unload()\nEnd Sub\n",
       "2: Form_Unload" + count + "1 parameters, not 0; "},
      {"an array's index is missing", "Sub cmd_Click()\nEnd Sub\n",
       "0: cmd_Click" + count + "1 parameters, not 0; "},
      {"an array's index is there", "Sub CMD_click(Index As Integer)\nEnd Sub\n", ""},
      {"a name with a bar", "Sub ok_now_Click(a)\nEnd Sub\n",
       "0: ok_now_Click" + count + "0 parameters, not 1; "},
      {"of a class that is not known", "Sub odd_Click(a, b, c)\nEnd Sub\n", ""},
      {"no event", "Sub ok_now_Later(a)\nEnd Sub\n", ""},
  };
  for (const Case& row : cases) EXPECT_EQ(Found(row.code), row.found) << row.name;
}

TEST(CodeCheck, KeepsTheOrderOfTheLines) {
  const std::string found = Found(
      "Sub cmd_Click()\n  GoTo 10\nEnd Sub\n\nSub Form_Load(a)\n  On Error GoTo bad\nEnd Sub\n");
  std::string lines;
  for (size_t at = 0; at < found.size(); at = found.find("; ", at) + 2) lines += found[at];
  EXPECT_EQ(lines, "0145");
}

}  // namespace
}  // namespace qrn::test
