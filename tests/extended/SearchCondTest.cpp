#include "extended/SearchCond.h"
#include "tests/extended/TestTable.h"

namespace qrn::test {
namespace {

// Second bytes of ァ ポ ゼ ソ are @ | [ and a backslash.
constexpr char kDoubleByteName[] = "ァポゼソ";

struct SearchCond : testing::Test {
  // "terms: bytes" or the messages shown.
  std::string Compile(const std::string& utf8, bool ignoreCase = false) {
    const std::string text = Utf8ToCodePage(utf8);
    const auto condition = ParseSearchCond(engine_, table_.Info(), text.c_str(), ignoreCase);
    if (!condition) return messages_.Take();
    return std::to_string(condition->TermCount) + ":" + Hex(condition->Terms);
  }

  QuorinSettings settings_;
  DbEngine engine_{settings_};
  ShownMessages messages_;
  TestTable table_{{
      {"Age", kInteger, 2},            // 0 at 0
      {"Name", kString, 4},            // 1 at 2
      {"Note", kNote, 10},             // 2 at 6
      {"Born", kDate, 4},              // 3 at 16
      {kDoubleByteName, kZString, 6},  // 4 at 20
      {"Qty", kInteger, 2},            // 5 at 26
      {"Tag", kLString, 3},            // 6 at 28
      {"Sum", kNumericSTS, 4, 1},      // 7 at 31
      {"Flag", kLogical, 1},           // 8 at 35
      {"Rest", kLVar, 10},             // 9 at 36
  }};
};

struct ConditionCase {
  const char *what, *text, *compiled;
};

const ConditionCase kGoodConditions[] = {
    {"no text", "", "0:"},
    {"a number and a value", "@0 = 5", "1: 01 02 00 00 00 01 00 05 00"},
    {"greater", "@0 > 5", "1: 01 02 00 00 00 02 00 05 00"},
    {"less", "@0 < 5", "1: 01 02 00 00 00 03 00 05 00"},
    {"unequal", "@0 <> 5", "1: 01 02 00 00 00 04 00 05 00"},
    {"at least", "@0 >= 5", "1: 01 02 00 00 00 05 00 05 00"},
    {"at most", "@0 <= 5", "1: 01 02 00 00 00 06 00 05 00"},
    {"a number ends at the operator", "@0=5", "1: 01 02 00 00 00 01 00 05 00"},
    {"a number with zeros in front", "@0005>5", "1: 01 02 00 1A 00 02 00 05 00"},
    {"blanks in front", "   @0 = 5", "1: 01 02 00 00 00 01 00 05 00"},
    {"a name", "@Age = 5", "1: 01 02 00 00 00 01 00 05 00"},
    {"no blank before the value", "@Age >=5", "1: 01 02 00 00 00 05 00 05 00"},
    {"a negative number", "@0 = -2", "1: 01 02 00 00 00 01 00 FE FF"},
    {"a two-byte name of second bytes @ | [ and backslash", "@ァポゼソ = x",
     "1: 0B 06 00 14 00 01 00 78 00 00 00 00 00"},
    {"a two-byte value with such second bytes", "@4 = ポァ",
     "1: 0B 06 00 14 00 01 00 83 7C 83 40 00 00"},
    {"a quoted two-byte value", "@4 = 'ゼソ'", "1: 0B 06 00 14 00 01 00 83 5B 83 5C 00 00"},
    {"and", "@0 = 5 & @1 = ab", "2: 01 02 00 00 00 01 01 05 00 00 04 00 02 00 01 00 61 62 20 20"},
    {"or", "@0 = 5 | @1 <> abcde",
     "2: 01 02 00 00 00 01 02 05 00 00 04 00 02 00 04 00 61 62 63 64"},
    {"a connector needs no blank before it", "@1 = 'a'& @0 = 5",
     "2: 00 04 00 02 00 01 01 61 20 20 20 01 02 00 00 00 01 00 05 00"},
    {"a connector swallows its word", "@0 = 5 &&x| @0 = 6",
     "2: 01 02 00 00 00 01 01 05 00 01 02 00 00 00 01 00 06 00"},
    {"a word holds its connectors", "@1 = a&b|", "1: 00 04 00 02 00 01 00 61 26 62 7C"},
    {"quoted with a blank", "@Name = 'A B' & @Age >= 20",
     "2: 00 04 00 02 00 01 01 41 20 42 20 01 02 00 00 00 05 00 14 00"},
    {"double quotes hold the others", "@1 = \"'/\"", "1: 00 04 00 02 00 01 00 27 2F 20 20"},
    {"slashes quote", "@1 = /x y/", "1: 00 04 00 02 00 01 00 78 20 79 20"},
    {"a quote left open ends with the text", "@1 = 'x y", "1: 00 04 00 02 00 01 00 78 20 79 20"},
    {"a quote left open ends at a line's end", "@1 = 'x\n & @0 = 5",
     "1: 00 04 00 02 00 01 00 78 20 20 20"},
    {"a quote inside a word is a character", "@1 = a'b", "1: 00 04 00 02 00 01 00 61 27 62 20"},
    {"a date holds its slashes", "@3 = 2024/01/05", "1: 03 04 00 10 00 01 00 05 01 E8 07"},
    {"a date between slashes", "@3 = /2024/01/05/", "1: 03 04 00 10 00 01 00 00 00 E8 07"},
    {"field to field", "@0 < @5", "1: 01 02 00 00 00 43 00 1A 00"},
    {"field to field by name", "@Age = @Qty & @0 = 5",
     "2: 01 02 00 00 00 41 01 1A 00 01 02 00 00 00 01 00 05 00"},
    {"field to field of variable length", "@0 = @2", "1: 01 02 00 00 00 41 00 06 00"},
    {"a quoted at sign is a value", "@1 = '@0'", "1: 00 04 00 02 00 01 00 40 30 20 20"},
    {"no value at all", "@0 =", "1: 01 02 00 00 00 01 00 00 00"},
    {"no value, any size", "@3 = ", "1: 03 04 00 10 00 01 00 00 00"},
    {"an empty value", "@3 = \"\" & @0 = ''",
     "2: 03 04 00 10 00 01 01 00 00 01 02 00 00 00 01 00 00 00"},
    {"a codec that writes behind its field", "@7 = 1.5 & @8 = 1",
     "2: 11 04 00 1F 00 01 01 30 31 35 2B 07 01 00 23 00 01 00 01"},
    {"no connector, the rest is ignored", "@0 = 5 @1 = 6", "1: 01 02 00 00 00 01 00 05 00"},
    {"the rest may be anything", "@0 = 5 ) or", "1: 01 02 00 00 00 01 00 05 00"},
};

TEST_F(SearchCond, CompilesToTheBytesOfItsTerms) {
  for (const auto& [what, text, compiled] : kGoodConditions) {
    EXPECT_EQ(Compile(text), compiled) << what;
    EXPECT_EQ(messages_.Take(), "") << what;
  }
  EXPECT_EQ(ParseSearchCond(engine_, table_.Info(), nullptr, false)->TermCount, 0);
}

TEST_F(SearchCond, IgnoringCaseConcernsTextOnly) {
  const ConditionCase cases[] = {
      {"string", "@1 = a", "1: 00 04 00 02 00 81 00 61 20 20 20"},
      {"zstring", "@4 >= a", "1: 0B 06 00 14 00 85 00 61 00 00 00 00 00"},
      {"lstring", "@6 <> a", "1: 0A 03 00 1C 00 84 00 01 61 00"},
      {"field to field", "@1 = @4", "1: 00 04 00 02 00 C1 00 14 00"},
      {"integer", "@0 = 5", "1: 01 02 00 00 00 01 00 05 00"},
      {"logical", "@8 = 1", "1: 07 01 00 23 00 01 00 01"},
  };
  for (const auto& [what, text, compiled] : cases) EXPECT_EQ(Compile(text, true), compiled) << what;
}

constexpr char kNeedsAt[] = "VE041 検索条件のフィールドは@が必要です。";
constexpr char kNoOperator[] = "VE042 比較演算子は(=,<,>,<>,>=,<=)のいずれかを指定してください";
constexpr char kNoSuchNumber[] = "VE025 フィールドIDの指定が範囲外です。";
constexpr char kVariable[] = "VE043 Extend系オペレーションに可変長データは指定できません";

std::string NoValue(const std::string& text) {
  return "VE046 データの指定がなく、& | オペレータが指定されています。不正な検索条件文字列は(" +
         text + ")です。";
}

TEST_F(SearchCond, RefusesWithTheMessageOfTheFault) {
  const struct {
    const char *what, *text;
    std::string message;
  } cases[] = {
      {"no at sign", "Price > 5", kNeedsAt},
      {"blanks only", "   ", kNeedsAt},
      {"a tab is no blank", "\t@0 = 5", kNeedsAt},
      {"a second term without one", "@0 = 5 & 1 = 6", kNeedsAt},
      {"nothing behind the connector", "@0 = 5 & ", kNeedsAt},
      {"the connector swallowed the reference", "@0 = 5 &@3 = 1", kNeedsAt},
      {"an at sign alone", "@", NoSuchField("")},
      {"a blank behind it", "@ 0 = 5", NoSuchField("")},
      {"a name runs to the blank", "@Code=5", NoSuchField("Code=5")},
      {"a name in other case", "@age = 5", NoSuchField("age")},
      {"a name that goes on", "@Ages = 5", NoSuchField("Ages")},
      {"half a two-byte name", "@ァポ = 5", NoSuchField("ァポ")},
      {"an unknown second field", "@0 = @Qt", NoSuchField("Qt")},
      {"one number too far", "@10 = 5", kNoSuchNumber},
      {"a number past 32 bits", "@4294967296 = 5", kNoSuchNumber},
      {"a second number too far", "@0 = @10", kNoSuchNumber},
      {"a note", "@2 = 5", kVariable},
      {"an lvar", "@Rest = 5", kVariable},
      {"no operator", "@0 ! 5", kNoOperator},
      {"nothing behind the field", "@0", kNoOperator},
      {"a two-byte character behind a number", "@0ポ= 5", kNoOperator},
      {"the operator's letters swapped", "@0 => 5", "1: 01 02 00 00 00 01 00 00 00"},
      {"a comma behind the name", "@Age, = 5", kNoOperator},
      {"a connector for a value", "@0 = & ", NoValue("@0 = & ")},
      {"or for a value", "@0 = 5 & @1 = |", NoValue("@0 = 5 & @1 = |")},
      {"quoted too", "@1 = '&x'", NoValue("@1 = '&x'")},
  };
  for (const auto& [what, text, message] : cases) EXPECT_EQ(Compile(text), message) << what;
}

TEST_F(SearchCond, LongPiecesAreCutAtTheirLimits) {
  TestTable wide({{"Text", kString, 300}});
  const auto terms = [&](const std::string& text) {
    const auto condition = ParseSearchCond(engine_, wide.Info(), text.c_str(), false);
    return condition ? condition->Terms : std::vector<uint8_t>{};
  };
  const auto count = [](const std::vector<uint8_t>& bytes) {
    return std::count(bytes.begin(), bytes.end(), 'x');
  };
  EXPECT_EQ(count(terms("@0 = " + std::string(255, 'x'))), 255);
  EXPECT_EQ(count(terms("@0 = " + std::string(256, 'x'))), 256);
  EXPECT_EQ(count(terms("@0 = " + std::string(257, 'x') + " & @0 = x")), 256);
  EXPECT_EQ(count(terms("@0 = '" + std::string(300, 'x') + "' & @0 = x")), 256);
  // 127 pairs fit behind one byte, the 128th would be halved.
  std::string pairs = "y";
  for (int i = 0; i < 130; ++i) pairs += "\x83x";
  EXPECT_EQ(count(terms("@0 = " + pairs)), 127);
  // 256 digits are read: the number 0, then a digit where the operator should be.
  EXPECT_FALSE(terms("@" + std::string(256, '0') + " = x").empty());
  EXPECT_TRUE(terms("@" + std::string(257, '0') + " = x").empty());
  EXPECT_EQ(messages_.TakeCodes(), "VE042");
}

TEST_F(SearchCond, ADamagedDictionarysSizesReachNoMemory) {
  TestTable odd({{"Neg", kString, 4}, {"Far", kInteger, 2}, {"Zero", kInteger, 0}});
  odd.Info().Fields[0].Size = -1;
  odd.Info().Fields[1].Offset = 70000;
  const auto negative = ParseSearchCond(engine_, odd.Info(), "@0 = abc", false);
  EXPECT_EQ(Hex(negative->Terms), " 00 00 00 00 00 01 00");
  const auto far = ParseSearchCond(engine_, odd.Info(), "@1 = 1", false);
  EXPECT_EQ(Hex(far->Terms), " 01 02 00 FF FF 01 00 01 00");
  const auto zero = ParseSearchCond(engine_, odd.Info(), "@2 = 1", false);
  EXPECT_EQ(zero->Terms.size(), 7u);
}

}  // namespace
}  // namespace qrn::test
