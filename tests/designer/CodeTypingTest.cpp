// What keys do to lines of code, and finding in them.
#include <gtest/gtest.h>

#include <random>

#include "host/designer/model/CodeTyping.h"
#include "tests/support/Setting.h"

namespace qrn::test {
namespace {

using namespace designer;

TEST(CodeTyping, IndentsLines) {
  EXPECT_EQ(IndentOf(u"  \tIf a"), u"  \t");
  EXPECT_EQ(IndentOf(u"   "), u"   ");
  EXPECT_EQ(IndentOf(u""), u"");
  EXPECT_EQ(BlanksToStop(0), 4u);
  EXPECT_EQ(BlanksToStop(3), 1u);
  EXPECT_EQ(BlanksToStop(4), 4u);
}

TEST(CodeTyping, ShiftsLines) {
  struct Case {
    std::u16string_view lines;
    std::u16string_view right;
    std::u16string_view left;
  } const cases[] = {
      {u"", u"", u""},
      {u"a\r\n\r\n  b", u"    a\r\n\r\n      b", u"a\r\n\r\nb"},
      {u"      c\r\n", u"          c\r\n", u"  c\r\n"},
      {u"\t\td", u"    \t\td", u"\td"},
  };
  for (const Case& row : cases) {
    EXPECT_EQ(ShiftedRight(row.lines), row.right);
    EXPECT_EQ(ShiftedLeft(row.lines), row.left);
  }
}

TEST(CodeTyping, FindsRoundTheEnd) {
  constexpr std::u16string_view kText = u"Dim aB, ab_1\r\nAB = 表";
  struct Case {
    const char* name;
    Sought sought;
    size_t from;
    int at;  // -1: nowhere
  } const cases[] = {
      {"down", {u"ab"}, 0, 4},
      {"at the place itself", {u"ab"}, 4, 4},
      {"the next", {u"ab"}, 5, 8},
      {"round the end", {u"ab"}, 15, 4},
      {"from behind the end", {u"ab"}, 99, 4},
      {"with its case", {u"ab", true, true}, 0, 8},
      {"a whole word", {u"ab", true, false, true}, 5, 14},
      {"up", {u"ab", false}, 14, 8},
      {"up round the beginning", {u"ab", false}, 4, 14},
      {"up from the end", {u"ab", false}, 20, 14},
      {"kanji", {u"表"}, 0, 19},
      {"nowhere", {u"xyz"}, 0, -1},
      {"nothing", {u""}, 0, -1},
      {"longer than all", {std::u16string(40, u'a')}, 0, -1},
  };
  for (const Case& row : cases) {
    const auto at = FindInText(kText, row.sought, row.from);
    EXPECT_EQ(at ? static_cast<int>(*at) : -1, row.at) << row.name;
  }
}

TEST(CodeTyping, TellsWhatMakesOneTextTheOther) {
  const uint32_t seed = Seed();
  std::mt19937 random(seed);
  constexpr std::u16string_view kPieces[] = {u"a",  u"b",          u"\r\n",
                                             u"\n", u"\U00020BB7", u"\U00020BB8"};
  const auto any = [&] {
    std::u16string text;
    for (size_t left = random() % 6; left > 0; --left) text += kPieces[random() % 6];
    return text;
  };
  for (int turn = 0; turn < 3000; ++turn) {
    const std::u16string before = any(), after = any();
    const TextChange change = ChangeBetween(before, after);
    std::u16string made = before;
    made.replace(change.at, change.count, change.text);
    ASSERT_EQ(made, after) << "seed " << seed << ", turn " << turn;
    for (const size_t at : {change.at, change.at + change.count}) {
      const bool inside = at > 0 && at < before.size();
      ASSERT_FALSE(inside && before[at - 1] == u'\r' && before[at] == u'\n') << "seed " << seed;
      ASSERT_FALSE(inside && before[at] >= 0xDC00 && before[at] < 0xE000) << "seed " << seed;
    }
  }
}

}  // namespace
}  // namespace qrn::test
