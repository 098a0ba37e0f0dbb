// What a user does, one step a line.
#include <gtest/gtest.h>

#include "host/form/KeyNames.h"
#include "host/form/MemberPath.h"
#include "host/form/UserScript.h"

namespace qrn::form {
namespace {

// "click control=edtName right= x=3 y=4" without the verb's own word.
std::string Shown(const UserStep& step) {
  std::string text;
  for (const auto& [name, value] : step.arguments) {
    if (!text.empty()) text += ' ';
    text.append(name).append("=").append(value);
  }
  return text;
}

struct StepCase {
  const char* line;
  UserVerb verb;
  const char* expected;
};

// clang-format off
const StepCase kSteps[] = {
    {"click edtName", UserVerb::Click, "click=click control=edtName"},
    {"Click cmd(2) at 3 4 right ctrl", UserVerb::Click, "at=at click=click control=cmd(2) ctrl=ctrl right=right x=3 y=4"},
    {"dblclick Form2.edtName", UserVerb::DoubleClick, "control=Form2.edtName dblclick=dblclick"},
    {"drag grid1 from 1 2 to 30 2", UserVerb::Drag, "control=grid1 drag=drag from=from to=to x=1 x2=30 y=2 y2=2"},
    {"wheel lst Down times 3", UserVerb::Wheel, "control=lst times=3 way=Down wheel=wheel"},
    {"key Ctrl+Shift+F2 times 3", UserVerb::Key, "key=Ctrl+Shift+F2 times=3"},
    {"type \"表示 \"\"ソ\"\"\"", UserVerb::Type, "text=表示 \"ソ\" type=type"},
    {"wait 200", UserVerb::Wait, "number=200 wait=wait"},
    {"wait until a.Text = \"x y\" within 500", UserVerb::WaitUntil,
     "number=500 path=a.Text sign== until=until value=\"x y\" wait=wait within=within"},
    {"expect grid1.TextMatrix(1, 2) contains \"x\"", UserVerb::Expect,
     "expect=expect path=grid1.TextMatrix(1, 2) sign=contains value=\"x\""},
    {"set a.Value = True", UserVerb::Set, "==  path=a.Value set=set value=True"},
    {"call DoIt(1, \"a b\")", UserVerb::Call, "call=call path=DoIt(1, \"a b\")"},
    {"shot out.png of frmMain", UserVerb::Shot, "control=frmMain file=out.png of=of shot=shot"},
    {"shot \"my file.png\"", UserVerb::Shot, "file=my file.png shot=shot"},
    {"message \"VE802\" ok", UserVerb::Message, "button=ok message=message text=VE802"},
    {"dialog \"Btrieve\" choose 193 \"db1\"", UserVerb::DialogChoose,
     "choose=choose dialog=dialog id=193 text=db1 title=Btrieve"},
    {"dialog \"Btrieve\" click 193 \"db1\"", UserVerb::DialogClick,
     "click=click dialog=dialog id=193 line=db1 title=Btrieve"},
    {"dialog \"Btrieve\" click \"OK\"", UserVerb::DialogClick, "button=OK click=click dialog=dialog title=Btrieve"},
    {"menu \"File\" \"Open...\"", UserVerb::Menu, "item=Open... menu=File"},
    {"menu \"Format\" \"Align\" \"Left\"", UserVerb::Menu, "item=Align menu=Format sub=Left"},
    {"property DbField twice", UserVerb::Property, "name=DbField property=property twice=twice"},
    {"pace 500", UserVerb::Pace, "number=500 pace=pace"},
    {"close", UserVerb::Close, "close=close"},
    {"close frmOne", UserVerb::Close, "close=close form=frmOne"},
    {"show frmOne", UserVerb::Show, "form=frmOne show=show"},
};

const char* const kBadSteps[] = {
    "jump", "click", "click 5", "click a b", "click a at 1", "key Ctrl+", "key Hyper+A", "type abc",
    "wheel a", "wheel a along", "type \"abc", "type \"a\"b\"", "expect a =", "expect a.b ? 5", "set a.b = x", "wait soon",
    "menu \"File\"", "property", "pace", "dialog \"x\" click", "message \"x\"", "message \"x\" Maybe", "message \"x\" OK|Cancel", "message \"x\" |", "shot", "expect a(1 = 5", "expect a.(1) = 5",
};
// clang-format on

TEST(UserScript, StepsAreRead) {
  for (const StepCase& c : kSteps) {
    Mistakes mistakes;
    const std::vector<UserStep> steps = ReadUserScript({c.line}, mistakes);
    ASSERT_EQ(steps.size(), 1u) << c.line << mistakes.Text(" script");
    EXPECT_EQ(steps[0].verb, c.verb) << c.line;
    std::string expected = c.expected;
    if (expected.starts_with("==")) expected = "=== " + expected.substr(4);
    EXPECT_EQ(Shown(steps[0]), expected) << c.line;
  }
}

TEST(UserScript, WhatIsNoStepIsToldWithHowItIsWritten) {
  for (const char* line : kBadSteps) {
    Mistakes mistakes;
    EXPECT_TRUE(ReadUserScript({"", "# nothing", line}, mistakes).empty()) << line;
    ASSERT_EQ(mistakes.List().size(), 1u) << line;
    EXPECT_EQ(mistakes.List()[0].line, 3);
  }
  Mistakes mistakes;
  ReadUserScript({"dblclick 5"}, mistakes);
  ReadUserScript({"message \"x\" Maybe"}, mistakes);
  EXPECT_EQ(mistakes.Text("s"),
            "s:1: expected is 'dblclick <control> [at <x:number> <y:number>]'\n"
            "s:1: expected is 'message <text> <button:OK|Cancel|Abort|Retry|Ignore|Yes|No>'");
}

TEST(KeyNames, ChordsAreRead) {
  EXPECT_EQ(KeyChordOf("Tab"), (KeyChord{0x09, false, false, false}));
  EXPECT_EQ(KeyChordOf("ctrl+alt+shift+f12"), (KeyChord{0x7B, true, true, true}));
  EXPECT_EQ(KeyChordOf("Alt+s"), (KeyChord{'S', false, false, true}));
  for (const char* bad : {"", "+", "F0", "F25", "Tab+A", "Ctrl", "Ctrl+Alt", "ss", "表"}) {
    EXPECT_FALSE(KeyChordOf(bad)) << bad;
  }
}

TEST(MemberPath, HoldsNamesAndArguments) {
  const auto path = MemberPathOf("frm.grid1.TextMatrix(1, \"a\"\"b\", True, -0.5).Caption");
  ASSERT_TRUE(path);
  ASSERT_EQ(path->size(), 4u);
  const std::vector<ScriptValue> expected = {1, std::string("a\"b"), true, -0.5};
  EXPECT_EQ((*path)[2].arguments, expected);
  EXPECT_EQ(ValueText(expected[3]) + ValueText(expected[2]) + ValueText(expected[0]), "-0.5True1");
  for (const char* bad : {"", ".", "a.", "a..b", "a(", "a(1", "a(x)", "5", "a b", "a(1,)"}) {
    EXPECT_FALSE(MemberPathOf(bad)) << bad;
  }
}

}  // namespace
}  // namespace qrn::form
