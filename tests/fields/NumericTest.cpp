// The display numbers: Numeric, NumericSTS, NumericSA. Their bytes are characters, so these tables
// show them as such: `stored` may be longer than the field, and "_" stands for a NUL.

#include "FieldCases.h"

namespace qrn {
namespace {

struct NumericCase {
  const char* name;
  int32_t type, size, decimals;
  std::string stored;
  const char* text;
};

std::string Read(const NumericCase& row) {
  std::string stored = row.stored;
  std::replace(stored.begin(), stored.end(), '_', '\0');
  return ReadAs({}, Field(row.type, row.size, row.decimals),
                ToHex({reinterpret_cast<const uint8_t*>(stored.data()), stored.size()}));
}

// What stands in a record of dots after writing.
std::string Written(const NumericCase& row, size_t room = 24) {
  Bytes record(room + 8, '.');
  SetFieldText({}, std::span(record).first(room), row.text,
               Field(row.type, row.size, row.decimals));
  EXPECT_EQ(std::string(record.begin() + static_cast<ptrdiff_t>(room), record.end()), "........")
      << "written behind the buffer";
  std::string stored(record.begin(), record.begin() + static_cast<ptrdiff_t>(room));
  std::replace(stored.begin(), stored.end(), '\0', '_');
  return stored.substr(0, stored.find_last_not_of('.') + 1);
}

TEST(Numeric, Read) {
  const NumericCase cases[] = {
      {"overpunched positive", kNumeric, 4, 0, "012{", "120"},
      {"overpunched letter", kNumeric, 4, 0, "012C", "123"},
      {"overpunched negative", kNumeric, 4, 0, "001K", "-12"},
      {"negative zero digit", kNumeric, 4, 0, "012}", "-120"},
      {"last letters", kNumeric, 2, 0, "1I", "19"},
      {"last negative letter", kNumeric, 2, 0, "1R", "-19"},
      {"trailing zeros stay", kNumeric, 4, 2, "125{", "12.50"},
      {"below one", kNumeric, 4, 2, "005{", "0.50"},
      {"zero keeps its fraction", kNumeric, 4, 2, "000{", "0.00"},
      {"zero", kNumeric, 4, 0, "000{", "0"},
      {"negative zero", kNumeric, 3, 0, "00}", "-0"},
      {"decimals fill the field", kNumeric, 2, 2, "5{", "0.50"},
      {"STS negative", kNumericSTS, 6, 2, "01234-", "-12.34"},
      {"STS below a tenth loses its zeros", kNumericSTS, 4, 2, "005+", "0.5"},
      {"STS zero", kNumericSTS, 4, 2, "000+", "0.0"},
      {"SA positive", kNumericSA, 4, 0, "0123", "123"},
      {"SA negative", kNumericSA, 4, 0, "012s", "-123"},
      {"SA decimals", kNumericSA, 4, 2, "123u", "-12.35"},
      {"SA zeros lost", kNumericSA, 4, 2, "0005", "0.5"},
      {"SA zero with decimals", kNumericSA, 4, 2, "0000", "0.0"},
  };
  for (const NumericCase& row : cases) EXPECT_EQ(Read(row), row.text) << row.name;
}

TEST(Numeric, BadFieldsReadAsTheyFall) {
  const NumericCase cases[] = {
      {"first byte NUL", kNumeric, 4, 2, "_123", "0"},
      {"STS first byte NUL", kNumericSTS, 4, 2, "_123", "0"},
      {"SA first byte NUL", kNumericSA, 4, 2, "_12q", "0"},
      {"no bytes", kNumeric, 4, 2, "", "0"},
      {"no size", kNumericSTS, 0, 2, "123+", "0"},
      {"negative size", kNumericSA, -3, 2, "123", "0"},
      {"unknown sign counts as negative", kNumeric, 3, 0, "12S", "-12:"},
      {"decimals beyond the field", kNumeric, 3, 9, "012", "012"},
      {"negative decimals", kNumeric, 3, -2, "012", "12"},
      {"SA letter that is no sign", kNumericSA, 2, 0, "1y", "-19"},
  };
  for (const NumericCase& row : cases) EXPECT_EQ(Read(row), row.text) << row.name;
}

TEST(Numeric, Write) {
  const NumericCase cases[] = {
      {"negative", kNumeric, 4, 0, "001K", "-12"},
      {"zero", kNumeric, 3, 0, "00{", "0"},
      {"stepped over", kNumeric, 6, 0, "00123D", "+1,2 34"},
      {"point without fraction", kNumeric, 6, 2, "00120{", "12."},
      {"short fraction", kNumeric, 6, 2, "00125{", "12.5"},
      {"whole fraction", kNumeric, 6, 2, "00125F", "12.56"},
      {"STS", kNumericSTS, 5, 0, "0012+_", "12"},
      {"STS surplus fraction", kNumericSTS, 6, 2, "01256+_", "12.569"},
      {"SA", kNumericSA, 5, 0, "00012_", "12"},
      {"SA negative", kNumericSA, 4, 0, "001r_", "-12"},
  };
  for (const NumericCase& row : cases) EXPECT_EQ(Written(row), row.stored) << row.name;
}

TEST(Numeric, TextThatDoesNotFitRunsOverTheEnd) {
  const NumericCase cases[] = {
      {"no more digits than the field", kNumeric, 3, 0, "12C", "12345"},
      {"a point beyond them is not seen", kNumeric, 2, 2, "1B00", "12.5"},
      {"what is no number ends it", kNumeric, 4, 0, "001B", "12x34"},
      {"empty", kNumeric, 3, 2, "00{", ""},
      {"and one behind digits", kNumeric, 6, 2, "00012C", "1.2.3"},
      {"a second point without decimals", kNumeric, 6, 0, "00000J", "-1.2.3"},
      {"no size", kNumeric, 0, 2, "", "12"},
      {"STS integer part ends at a comma", kNumericSTS, 7, 2, "000123+_", "1,234.5"},
      {"STS without room for its decimals", kNumericSTS, 2, 3, "050+_", "0.5"},
      {"STS no size", kNumericSTS, 0, 0, "", "5"},
      {"SA empty", kNumericSA, 3, 1, "000_", ""},
      {"SA words", kNumericSA, 3, 0, "000_", "x12"},
      {"SA decimals beyond what fits anywhere", kNumericSA, 3, 90, "12p_", "-.12"},
  };
  for (const NumericCase& row : cases) EXPECT_EQ(Written(row), row.stored) << row.name;
}

TEST(Numeric, WritingStopsAtTheEndOfTheBuffer) {
  EXPECT_EQ(Written({"", kNumeric, 4, 2, "", "1234"}, 5), "123D0");
  EXPECT_EQ(Written({"", kNumeric, 9, 2, "", "1234"}, 5), "00012");
  EXPECT_EQ(Written({"", kNumericSTS, 4, 0, "", "-12"}, 4), "012-");
  EXPECT_EQ(Written({"", kNumericSA, 4, 0, "", "-12"}, 4), "001r");
  EXPECT_EQ(Written({"", kNumericSA, 6, 0, "", "-12"}, 4), "0000");
  for (const int32_t type : {kNumeric, kNumericSTS, kNumericSA}) {
    EXPECT_EQ(Written({"", type, 4, 2, "", "-12"}, 0), "") << type;
  }
}

}  // namespace
}  // namespace qrn
