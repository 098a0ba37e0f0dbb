// What is wrong with a form is said with file, line and reason.
#include <gtest/gtest.h>

#include "tests/qrnform/FormRun.h"

namespace qrn::tests {
namespace {

struct RefusalCase {
  const char* name;
  const char* controls;  // from line 8 of the file
  const char* code;
  const char* told;
};

const RefusalCase kRefusals[] = {
    {"a menu", "Begin VB.Menu mnuFile\n Caption = \"x\"\nEnd\n", "",
     "form1.frm:8: mnuFile: menus cannot be had: put buttons on the form"},
    {"a property that a label has not", "Begin VB.Label lbl\n Password = 1\nEnd\n", "",
     "form1.frm:9: a Label has no property Password"},
    {"a value of the wrong kind", "Begin VB.Label lbl\n Alignment = \"x\"\nEnd\n", "",
     "form1.frm:9: Alignment needs a whole number"},
    {"a value out of bounds", "Begin VB.Label lbl\n Alignment = 7\nEnd\n", "",
     "form1.frm:9: Alignment needs a whole number from 0 to 2"},
    {"a library nobody named", "Begin NoLib.Thing a\nEnd\n", "",
     "form1.frm:8: NoLib.Thing is not known: no Object line of the form names a library NoLib"},
    {"a class the library has not", "Begin QRNBTRLib.QRNNothing a\nEnd\n", "",
     "form1.frm:8: QRNBTRLib has no control QRNNothing"},
    {"a property the control has not", "Begin QRNBTRLib.QRNEdit a\n Colour = 1\nEnd\n", "",
     "form1.frm:9: the control has no property Colour"},
    {"a control in a label", "Begin VB.Label a\nBegin VB.Label b\nEnd\nEnd\n", "",
     "form1.frm:9: a cannot hold other controls"},
    {"a name twice", "Begin VB.Label a\nEnd\nBegin VB.Label A\nEnd\n", "",
     "form1.frm:10: the name A stands already on line 8"},
    {"a handler with too few parameters", "Begin QRNBTRLib.QRNEdit a\nEnd\n",
     "Private Sub a_KeyPress()\nEnd Sub\n",
     "form1.frm:12: a_KeyPress is a handler of an event with 1 parameters, not 0"},
    {"a statement that cannot be had", "", "Private Sub x()\n  GoTo y\nEnd Sub\n",
     "form1.frm:11: jumps cannot be had: use If, Do, Exit Do, Exit For or Exit Sub"},
};

class Refusals : public testing::TestWithParam<RefusalCase> {};

TEST_P(Refusals, NameFileLineAndReason) {
  const RefusalCase& given = GetParam();
  const RunResult result = RunForms({{FormText(given.controls, given.code)}, ""});
  std::string told = result.failure;
  while (!told.empty() && told.back() == '\n') told.pop_back();
  EXPECT_EQ(told, given.told) << given.name;
  EXPECT_EQ(result.left, 0) << given.name;
}

INSTANTIATE_TEST_SUITE_P(Forms, Refusals, testing::ValuesIn(kRefusals));

}  // namespace
}  // namespace qrn::tests
