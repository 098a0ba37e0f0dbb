#include "extended/FieldList.h"
#include "tests/extended/TestTable.h"

namespace qrn::test {
namespace {

struct FieldListText : testing::Test {
  // "positions (sum)" or the codes of the messages shown, "VE818(name)".
  std::string Parse(const std::string& utf8) {
    const auto list = ParseFieldList(engine_, table_.Info(), Utf8ToCodePage(utf8).c_str());
    if (!list) return messages_.Take();
    std::string text;
    for (const ExField& field : list->Fields) text += std::to_string(field.Number) + " ";
    return text + "(" + std::to_string(list->DataSum) + ")";
  }

  QuorinSettings settings_;
  DbEngine engine_{settings_};
  ShownMessages messages_;
  TestTable table_{{
      {"a", kInteger, 2},                    // 0 at 0
      {"b", kString, 4},                     // 1 at 2
      {"ポソ", kDate, 4},                    // 2 at 6
      {"abcdefghijklmnopqrst", kString, 6},  // 3 at 10: as long as a name can be
      {"2nd", kLogical, 1},                  // 4 at 16
      {"note", kNote, 9},                    // 5 at 17
  }};
};

TEST_F(FieldListText, NamesAndNumbersInTheTextsOrder) {
  const struct {
    const char *what, *text, *parsed;
  } cases[] = {
      {"one name", "a", "0 (2)"},
      {"two names", "b,a", "1 0 (6)"},
      {"numbers", "1,0", "1 0 (6)"},
      {"mixed, one twice", "0,b,a", "0 1 0 (8)"},
      {"blanks in front", "  a,b", "0 1 (6)"},
      {"a blank ends the list", "a b", "0 (2)"},
      {"a blank before a comma too", "a ,b", "0 (2)"},
      {"a tab ends the list", "a\tb", "0 (2)"},
      {"a number ends at the first other character", "1x,a", "1 (4)"},
      {"also at a two-byte one", "1ポ,a", "1 (4)"},
      {"a name in two-byte characters", "ポソ,a", "2 0 (6)"},
      {"the longest name", "abcdefghijklmnopqrst", "3 (6)"},
      {"variable fields are allowed", "note", "5 (9)"},
  };
  for (const auto& [what, text, parsed] : cases) {
    EXPECT_EQ(Parse(text), parsed) << what;
    EXPECT_EQ(messages_.Take(), "") << what;
  }
}

TEST_F(FieldListText, RefusesWithTheMessageOfTheFault) {
  const struct {
    const char *what, *text;
    std::string message;
  } cases[] = {
      {"nothing", "", "VE040 抽出するフィールド・リストが指定されていません"},
      {"blanks only", "  ", NoSuchField("")},
      {"a blank behind a comma", "a, b", NoSuchField("")},
      {"a comma at the end", "a,", NoSuchField("")},
      {"a comma in front", ",a", NoSuchField("")},
      {"an unknown name", "a,c", NoSuchField("c")},
      {"other case", "A", NoSuchField("A")},
      {"a name that begins with a digit is a number", "2nd,9", "2 (4)"},
      {"one number too far", "a,6", "VE025 フィールドIDの指定が範囲外です。"},
      {"a number past 32 bits", "99999999999", "VE025 フィールドIDの指定が範囲外です。"},
      {"a name is cut at 21 bytes", "abcdefghijklmnopqrstuvw",
       NoSuchField("abcdefghijklmnopqrstu")},
      {"but not inside a character", "ポポポポポポポポポポポ", NoSuchField("ポポポポポポポポポポ")},
  };
  for (const auto& [what, text, message] : cases) EXPECT_EQ(Parse(text), message) << what;
  EXPECT_FALSE(ParseFieldList(engine_, table_.Info(), nullptr));
  EXPECT_EQ(messages_.TakeCodes(), "VE040");
}

}  // namespace
}  // namespace qrn::test
