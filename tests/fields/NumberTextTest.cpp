#include <cmath>

#include "fields/NumberText.h"
#include "tests/support/Test.h"

namespace qrn {
namespace {

std::string Stripped(std::string_view utf8, size_t room = kNumberTextSize) {
  std::string out(room, '#');
  const std::string_view result = StripToNumber({}, Utf8ToCodePage(utf8), out);
  return std::string(result);
}

TEST(NumberText, ALeadByteTakesTheNextByteWithIt) {
  char out[16];
  EXPECT_EQ(StripToNumber({},
                          "1\x81"
                          "23",
                          out),
            "13");
  EXPECT_EQ(StripToNumber({}, "12\x81", out), "12");
}

TEST(NumberText, TheResultIsCutToItsRoom) {
  EXPECT_EQ(Stripped("123456", 4), "123");
  EXPECT_EQ(Stripped("123456", 1), "");
  EXPECT_EQ(Stripped("123456", 0), "");
}

TEST(NumberText, IntegersParse) {
  struct {
    const char* text;
    int64_t wide;
    int32_t narrow;
  } const cases[] = {
      {"", 0, 0},
      {"0", 0, 0},
      {"- 12", 0, 0},
      {"12 34", 12, 12},
      {"2147483647", 2147483647, 2147483647},
      {"2147483648", 2147483648, 2147483647},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(ParseInt64(row.text), row.wide) << row.text;
    EXPECT_EQ(ParseInt32(row.text), row.narrow) << row.text;
  }
}

TEST(NumberText, DoublesParse) {
  struct {
    std::string text;
    double number;
  } const cases[] = {
      {"", 0},
      {"-", 0},
      {"5.", 5},
      {"1-2", 1},
      {"--1", 0},
      {std::string(400, '9'), INFINITY},
      {"-" + std::string(400, '9'), -INFINITY},
  };
  for (const auto& row : cases) EXPECT_EQ(ParseDouble(row.text), row.number) << row.text;
}

}  // namespace
}  // namespace qrn
