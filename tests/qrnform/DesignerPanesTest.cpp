// The designer's window with its panes: properties, code, and forms from a dictionary, one after
// the other as a user goes through them.
#include <gtest/gtest.h>

#include <filesystem>

#include "platform/CodePage.h"
#include "tests/qrnform/DesignerRun.h"
#include "tools/qrndata/Builder.h"
#include "tools/qrndata/Dictionary.h"

namespace qrn::tests {
namespace {

constexpr char kSave[] =
    "key Ctrl+S\ndialog \"名前を付けて保存\" enter 1148 \"@form.frm\"\n"
    "dialog \"名前を付けて保存\" press \"OK\"\nwait 300\n";

// A button gets its caption in the list, its handler by a double click, and does what it says.
TEST(DesignerPanes, MakeAFormThatRuns) {
  DesignerRun run;
  EXPECT_EQ(run.Play("tool CommandButton\ndraw from 600 600 to 1800 1080\n"
                     "key F4\nkey Ctrl+Shift+C times 2\ntype \"押す\"\nkey Enter\n"
                     "dblclick Command1\ntype \"Print Command1.Caption\"\n" +
                     std::string(kSave) +
                     "key F5\nwait until Command1.Visible = True\nclick Command1\nclose\nwait 300\n"
                     "key Ctrl+Z\nkey Ctrl+S\nclose\n"),
            "");
  EXPECT_EQ(run.printed(), "押す\n");
  const std::string saved = CodePageToUtf8(run.Bytes());
  EXPECT_NE(saved.find("Caption         =   \"押す\"\r\n"), std::string::npos) << saved;
  EXPECT_NE(saved.find("Private Sub Command1_Click()\r\n\r\nEnd Sub\r\n"), std::string::npos)
      << saved;
}

// What is typed and not taken yet goes along when the form is saved, to the control it was typed
// for.
TEST(DesignerPanes, GiveWhatWasTypedWhenItIsSaved) {
  DesignerRun run;
  EXPECT_EQ(run.Play("tool Label\ndraw from 600 600 to 1800 1080\n"
                     "key F4\nkey Ctrl+Shift+C\ntype \"for later\"\npoint 3600 2400\n"
                     "key F4\ntype \"mine\"\n" +
                     std::string(kSave) + "close\n"),
            "");
  const std::string saved = run.Bytes();
  const size_t label = saved.find("Begin VB.Label Label1");
  ASSERT_NE(label, std::string::npos) << saved;
  EXPECT_NE(saved.find("=   \"for later\"", label), std::string::npos) << saved;
  EXPECT_LT(saved.find("=   \"mine\""), label) << saved;
}

TEST(DesignerPanes, OpenTheFormThatTheWizardMade) {
  DesignerRun run;
  const std::filesystem::path company = std::filesystem::path(QRN_COMPANY) / "company.toml";
  qrndata::WriteDictionary(run.PathOf(""), qrndata::ReadSchemaFile(company).tables, true);
  EXPECT_EQ(
      run.Play("menu \"File\" \"New Form from Dictionary...\"\n"
               "dialog \"New Form from a Dictionary\" enter 100 \"@\"\n"
               "key Enter times 5\nwait 500\n"
               "click edtDeptCode\nkey F4\nkey Ctrl+Shift+T times 3\ntype \"changed\"\nkey Enter\n"
               "key Ctrl+S\nclose\n"),
      "");
  EXPECT_NE(run.Bytes("Departments.frm").find("=   \"changed\""), std::string::npos);
  EXPECT_TRUE(run.Has("Departments.frm.bak"));
}

}  // namespace
}  // namespace qrn::tests
