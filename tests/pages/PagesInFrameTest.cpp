// Every page in the runner's frame, worked by keys alone, from the first list to OK.
#include <gtest/gtest.h>

#include "tests/qrnform/FormRun.h"
#include "tests/support/Company.h"

namespace qrn::tests {
namespace {

struct KeysCase {
  const char* className;
  const char* keys;  // separated by blanks
  const char* properties;
  const char* values;  // of the properties, each with a blank behind it
};

// Down chooses the first line or the next, End, where a line is chosen, the last one.
const KeysCase kKeys[] = {
    {"QRNBtn", "Down Tab Down Tab End Tab Down Enter", "DbSource DbTable DbOperation DbIndex",
     "db People 17 ByCode "},
    {"QRNEdit", "Down Tab Down Tab Down End Enter", "DbSource DbTable DbField", "db People Pay "},
    {"QRNCheck", "Down Tab Down End Tab Down Enter", "DbSource DbTable DbField", "db Days Day "},
    {"QRNOptBtn", "Down Tab Down Tab Down Escape", "DbSource DbTable DbField", "   "},
    {"QRNPic", "Down Tab Down Tab Down Down Enter", "DbSource DbTable DbField", "db People Name "},
    {"QRNHScroll", "Down Tab Down Tab Down End Enter", "DbSource DbTable DbIndex",
     "db People ByName "},
    {"QRNVScroll", "Down Tab Down Enter", "DbSource DbTable DbIndex", "db People  "},
    {"QRNListBox", "Down Tab Down Tab Down Tab Down End Tab Down Tab Down End Tab Down Enter",
     "DbListSource DbListTable DbListField DbListIndex DbSource DbTable DbField",
     "db People Code ByName db Days Day "},
    {"QRNComboBox", "Down Tab Down End Tab Down End Tab Down Enter",
     "DbListSource DbListTable DbListField DbListIndex DbSource DbTable DbField",
     "db Days Word ByDay    "},
    {"QRNExComboBox",
     "Down Tab Down Tab Down End Tab Tab Down End Tab Space Shift+Tab Down Home Tab Space "
     "Shift+Tab Enter",
     "DbListSource DbListTable DbListFields DbListIndex", "db People Town,Born ByName "},
    {"QRNExComboBox", "Ctrl+Tab Down Tab Down Tab Down End Enter", "DbSource DbTable DbField",
     "db People Pay "},
    {"QRNExListBox",
     "Down Tab Down Tab Tab Tab Tab Tab Space Ctrl+Tab Down Tab Down Tab Down Shift+Tab Down Enter",
     "DbListSource DbListTable DbListFields DbSource DbTable DbField",
     "db People Born,Code,Name,Pay,Town db Notes  "},
    {"QRNGrid", "Down Tab Down Tab Down End Tab Tab Tab Tab Space Shift+Tab Enter",
     "DbListSource DbListTable DbListFields DbListIndex",
     "db People Born,Code,Name,Pay,Town ByName "},
};

struct PagesInFrame : ::testing::Test {
  static std::string Database(const std::string& directory) {
    return Piece("QRNBTRLib.QRNBtr db", 0, " DDFDir = \"" + directory + "\"\n");
  }
  std::string Run(const std::string& controls, const std::string& script) {
    const RunResult result = RunForms({{FormText(controls, "")}, script, true});
    EXPECT_EQ(result.failure, "");
    EXPECT_EQ(result.told, "");
    EXPECT_EQ(result.left, 0);
    return result.printed;
  }
  std::string Control(const std::string& className, const std::string& more = {}) {
    return Database(company.Directory()) + Piece("QRNBTRLib." + className + " ctl", 1, more);
  }

  test::Company company;
};

std::string EachBehind(const char* before, const std::string& words) {
  std::string lines;
  for (size_t start = 0; start < words.size();) {
    const size_t end = std::min(words.find(' ', start), words.size());
    lines += before + words.substr(start, end - start) + "\n";
    start = end + 1;
  }
  return lines;
}

TEST_F(PagesInFrame, AreWorkedByKeysAlone) {
  for (const KeysCase& row : kKeys) {
    std::string printed =
        Run(Control(row.className), "pages ctl\nwait 100\n" + EachBehind("key ", row.keys) +
                                        "wait 100\n" + EachBehind("print ctl.", row.properties));
    std::replace(printed.begin(), printed.end(), '\n', ' ');
    EXPECT_EQ(printed, row.values) << row.className;
  }
}

// What is bound is shown; a choice further up empties what hangs below it.
TEST_F(PagesInFrame, ShowWhatIsBoundAndFollowTheChoices) {
  const std::string bound =
      " DbSource = \"db\"\n DbTable = \"People\"\n DbIndex = \"ByPlace\"\n DbOperation = 11\n";
  const auto dialog = [](const std::string& what) { return "dialog \"ctl プロパティ\" " + what; };
  EXPECT_EQ(
      Run(Control("QRNBtn", bound),
          "pages ctl\n" + dialog("expect 193 = \"db\"\n") + dialog("expect 194 = \"People\"\n") +
              dialog("expect 196 = \"ByPlace\"\n") +
              dialog("expect 195 = \"GetLessThanOrEqual\"\n") +
              dialog("choose 195 \"GetGreaterOrEuqal\"\n") + dialog("choose 194 \"Days\"\n") +
              dialog("expect 196 = \"\"\n") + dialog("press \"適用\"\n") +
              "wait 200\nprint ctl.DbTable\nprint ctl.DbIndex\n" + dialog("choose 193 \"db\"\n") +
              dialog("expect 194 = \"\"\n") + dialog("press \"OK\"\n") +
              "wait 200\nprint ctl.DbTable\n"
              "print ctl.DbOperation\n"),
      "Days\nByPlace\nDays\n10\n");
}

// The directory that is put brings the dictionary, and that the other pages' lists.
TEST_F(PagesInFrame, ADirectoryFeedsTheOtherPages) {
  const auto of = [](const std::string& control, const std::string& what) {
    return "dialog \"" + control + " プロパティ\" " + what + "\n";
  };
  EXPECT_EQ(
      Run(Database("") + Piece("QRNBTRLib.QRNEdit ctl", 1),
          "pages ctl\n" + of("ctl", "expect 193 = \"\"") + of("ctl", "press \"OK\"") +
              "wait 200\nprint ctl.DbSource\npages db\n" +
              of("db", "enter 191 \"" + company.Directory() + "\"") + of("db", "press \"OK\"") +
              "wait 300\npages ctl\n" + of("ctl", "choose 193 \"db\"") +
              of("ctl", "choose 194 \"Notes\"") + of("ctl", "choose 198 \"Text\"") +
              of("ctl", "press \"OK\"") + "wait 200\nprint ctl.DbField\n"),
      "\nText\n");
}

TEST_F(PagesInFrame, ADirectoryIsTyped) {
  EXPECT_EQ(Run(Database(""),
                "pages db\nwait 300\nkey A\nkey Enter\nmessage \"VE028 DDFOpen APIエラー(12)\" "
                "OK\nprint db.DDFDir\n"),
            "a\n");
}

TEST_F(PagesInFrame, FieldsArePickedByTheFourButtons) {
  const auto dialog = [](const std::string& what) {
    return "dialog \"ctl プロパティ\" " + what + "\n";
  };
  EXPECT_EQ(
      Run(Control(
              "QRNExListBox",
              " DbListSource = \"db\"\n DbListTable = \"People\"\n DbListField = \"Pay,Code\"\n"),
          "pages ctl\n" + dialog("expect 243 = \"Pay,Code\"") + dialog("choose 249 \"Code\"") +
              dialog("press \"<\"") + "wait 100\n" + dialog("expect 243 = \"Pay\"") +
              dialog("press \">>\"") + "wait 100\n" +
              dialog("expect 243 = \"Pay,Born,Code,Name,Town\"") + dialog("press \"<<\"") +
              "wait 100\n" + dialog("expect 243 = \"\"") + dialog("press \"適用\"") +
              "wait 200\nprint ctl.DbListFields\n" + dialog("choose 244 \"Town\"") +
              dialog("press \">\"") + "wait 100\n" + dialog("choose 205 \"Days\"") +
              dialog("expect 243 = \"\"") + dialog("choose 244 \"Word\"") + dialog("press \">\"") +
              "wait 100\n" + dialog("press \"OK\"") +
              "wait 200\nprint ctl.DbListTable\nprint ctl.DbListFields\n"),
      "Pay,Code\nDays\nWord\n")
      << "an empty list leaves the property alone";
}

}  // namespace
}  // namespace qrn::tests
