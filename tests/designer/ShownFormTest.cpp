// The form as the runner is given it while it is designed.
#include <gtest/gtest.h>

#include <algorithm>

#include "host/designer/model/ShownForm.h"
#include "tests/designer/kit/Forms.h"

namespace qrn::test {
namespace {

using namespace designer;

form::FormFile Shown(const std::string& lines) { return ShownForm(*Designed(FormWith(lines))); }

std::string Texts(const form::ControlNode& node, const char* property) {
  const form::Property* found = node.Find(property);
  const auto* text = found ? std::get_if<std::string>(&found->value) : nullptr;
  return text ? *text : "";
}

struct StandInCase {
  const char* what;
  const char* lines;
  const char* className;
  const char* caption;
};

const StandInCase kStandIns[] = {
    {"a known piece stands for itself", "   Begin VB.Label a \n      Caption = \"x\"\n   End\n",
     "Label", "x"},
    {"a piece that the runner does not have", "   Begin VB.Timer a \n   End\n", "Label",
     "Timer\r\na"},
    {"a class that nobody has", "   Begin NoLib.Thing a \n      Caption = \"x\"\n   End\n", "Label",
     "Thing\r\na"},
    {"one that holds others",
     "   Begin VB.PictureBox a \n      Begin VB.Label b \n      End\n   End\n", "Frame",
     "PictureBox\r\na"},
};

TEST(ShownForms, HaveABoxForWhatIsNotKnown) {
  for (const StandInCase& given : kStandIns) {
    const form::FormFile file = Shown(given.lines);
    ASSERT_EQ(file.form.children.size(), 1u) << given.what;
    const form::ControlNode& node = file.form.children[0];
    EXPECT_EQ(node.library + "." + node.className, std::string("VB.") + given.className)
        << given.what;
    EXPECT_EQ(node.name, "a") << given.what;
    EXPECT_EQ(Texts(node, "Caption"), given.caption) << given.what;
  }
}

TEST(ShownForms, ShowWhatIsHiddenAtRunTime) {
  const form::FormFile file = Shown(
      "   Enabled = 0\n   Visible = 0\n   WindowState = 1\n"
      "   Begin VB.Label a \n      Enabled = 0\n      Visible = 0\n   End\n"
      "   Begin VB.Menu mnuFile \n   End\n");
  for (const char* hiding : {"Enabled", "Visible", "WindowState"}) {
    EXPECT_EQ(file.form.Find(hiding), nullptr) << hiding;
  }
  ASSERT_EQ(file.form.children.size(), 1u);
  EXPECT_EQ(file.form.children[0].Find("Visible"), nullptr);
  EXPECT_NE(file.form.children[0].Find("Enabled"), nullptr);
}

// What the runner refuses, by its number, goes; in the end a form without anything is left.
TEST(ShownForms, LoseWhatIsRefused) {
  form::FormFile file = Shown(
      "   ScaleMode = 7\n   Begin VB.TextBox a \n      Text = \"x\"\n      Colour = 1\n   End\n");
  const auto refuse = [&file](int line) {
    form::Mistakes mistakes;
    mistakes.Add(line, "refused");
    return TakeOut(&file, mistakes);
  };
  EXPECT_TRUE(refuse(file.form.Find("ScaleMode")->line));
  EXPECT_EQ(file.form.Find("ScaleMode"), nullptr);
  EXPECT_TRUE(refuse(file.form.children[0].Find("Colour")->line));
  EXPECT_EQ(file.form.children[0].className, "TextBox");
  EXPECT_EQ(Texts(file.form.children[0], "Text"), "x");
  EXPECT_TRUE(refuse(file.form.children[0].line));
  EXPECT_EQ(file.form.children[0].className, "Label");
  EXPECT_FALSE(refuse(file.form.children[0].line));
  EXPECT_FALSE(refuse(file.form.line));
}

}  // namespace
}  // namespace qrn::test
