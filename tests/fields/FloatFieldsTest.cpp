// Float, BFloat and Currency.

#include <cmath>
#include <limits>

#include "FieldCases.h"
#include "fields/BFloat.h"
#include "fields/FloatText.h"

namespace qrn {
namespace {

std::string FloatText(double value, int32_t digits = 10) {
  QuorinSettings settings;
  settings.float_size = digits;
  char text[2048];
  FloatToText(settings, value, text);
  return text;
}

TEST(FloatText, DigitsAtTen) {
  struct {
    double value;
    const char* text;
  } const cases[] = {
      {0.0, "0.0000000000"},
      {-0.0, "-0.0000000000"},
      {1, "1"},
      {-12.5, "-12.50000000"},
      {123.456, "123.4560000"},
      {0.5, "0.5000000000"},
      {0.001, "0.001000000000"},
      {99999999999.0, "1000000000"},
      {9999999999.4, "9999999999"},
      {9.99999999999, "10"},
      {0.099999999999, "0.1000000000"},
      {2.0 / 3, "0.6666666667"},
      {1500000000000.0, "1500000000"},
      {1e300, "1000000000"},
      {1e-30, "0.000000000000000000001000000000"},
      {1e-19, "0.0000000000000000001000000000"},
      {5e-324, "0.000000000000000000004940656458"},
      {INFINITY, "inf"},
      {-INFINITY, "-inf"},
  };
  for (const auto& row : cases) EXPECT_EQ(FloatText(row.value), row.text) << row.value;
  EXPECT_EQ(FloatText(std::numeric_limits<double>::quiet_NaN()), "nan");
}

TEST(FloatText, AnyNumberOfDigitsIsSafe) {
  EXPECT_EQ(FloatText(1500, 0), "");
  EXPECT_EQ(FloatText(-1500, 0), "-");
  EXPECT_EQ(FloatText(0.05, 0), "0.0");
  EXPECT_EQ(FloatText(0, 0), "0.");
  EXPECT_EQ(FloatText(1500, -3), "");
  EXPECT_EQ(FloatText(0.5, 1), "0.5");
  EXPECT_EQ(FloatText(1550, 2), "16");
  EXPECT_EQ(FloatText(0.1, 17), "0.10000000000000001");
  EXPECT_EQ(FloatText(0.5, 100), "0.5" + std::string(99, '0'));
  EXPECT_EQ(FloatText(0.5, std::numeric_limits<int32_t>::max()).size(), 2u + kMaxFloatDigits);
  EXPECT_EQ(FloatText(1e300, 400).size(), 301u);
}

TEST(FloatFields, Read) {
  const FieldCase cases[] = {
      {"double", kFloat, 8, 0, "00 00 00 00 00 00 F8 3F", "1.500000000"},
      {"single", kFloat, 4, 0, "00 00 C0 BF", "-1.500000000"},
      {"other sizes are single", kFloat, 5, 0, "00 00 C0 3F 99", "1.500000000"},
      {"cut off", kFloat, 8, 0, "00 00 00", "0.0000000000"},
      {"BFloat 4", kBFloat, 4, 0, "00 00 40 84", "12"},
      {"BFloat 4 negative", kBFloat, 4, 0, "00 00 C0 84", "-12"},
      {"BFloat 8", kBFloat, 8, 0, "00 00 00 00 00 00 40 84", "12"},
      {"BFloat 8 negative half", kBFloat, 8, 0, "00 00 00 00 00 00 80 80", "-0.5000000000"},
      {"BFloat 8 of zeros is 2 to the -129", kBFloat, 8, 0, "00 00 00 00 00 00 00 00",
       "0.000000000000000000001469367939"},
      {"other sizes are four bytes", kBFloat, 6, 0, "00 00 40 84 00 00", "12"},
  };
  ExpectReads(cases);
}

TEST(FloatFields, Write) {
  const FieldCase cases[] = {
      {"double", kFloat, 8, 0, "00 00 00 00 00 00 F8 3F", "1.5"},
      {"single", kFloat, 4, 0, "00 00 C0 BF", "-1.5"},
      {"other sizes are double, past the field", kFloat, 2, 0, "00 00 00 00 00 00 F8 3F", "1.5"},
      {"dressed", kFloat, 4, 0, "00 40 9A 44", "\\1,234"},
      {"empty", kFloat, 4, 0, "00 00 00 00", ""},
      {"BFloat 4", kBFloat, 4, 0, "00 00 40 84", "12"},
      {"BFloat 8", kBFloat, 8, 0, "00 00 00 00 00 00 C0 84", "-12"},
      {"BFloat of other size is eight bytes", kBFloat, 6, 0, "00 00 00 00 00 00 40 84", "12"},
      {"BFloat 8 too large is the double reversed", kBFloat, 8, 0, "48 72 5D FA 37 1A 19 E7",
       "100000000000000000000000000000000000000000"},
  };
  ExpectWrites(cases);
}

TEST(BFloat, ExponentsOutOfRangeAreReported) {
  uint8_t stored[8];
  EXPECT_EQ(DoubleToBFloat8({}, 0.0, stored), -1);
  EXPECT_EQ(ToHex(stored), "00 00 00 00 00 00 00 00");
  EXPECT_EQ(DoubleToBFloat8({}, std::ldexp(1.0, 127), stored), -1);
  EXPECT_EQ(ToHex(stored), "47 E0 00 00 00 00 00 00");
  EXPECT_EQ(DoubleToBFloat8({}, std::ldexp(1.0, -130), stored), -1);
  EXPECT_EQ(DoubleToBFloat8({}, std::ldexp(1.0, 126), stored), 0);
  EXPECT_EQ(DoubleToBFloat8({}, std::ldexp(1.0, -129), stored), 0);
}

TEST(BFloat, EverySingleComesBack) {
  const float values[] = {0.0F, -0.0F, 1.0F, -1.5F, 3e38F, 1e-38F, 1e-45F, 12345.678F};
  for (const float value : values) {
    EXPECT_EQ(BFloat4ToFloat({}, FloatToBFloat4({}, value)), value);
    EXPECT_EQ(std::signbit(BFloat4ToFloat({}, FloatToBFloat4({}, value))), std::signbit(value));
  }
}

TEST(CurrencyText, Read) {
  const FieldCase cases[] = {
      {"two decimals", kCurrency, 8, 2, "39 30 00 00 00 00 00 00", "123.45"},
      {"below one", kCurrency, 8, 2, "05 00 00 00 00 00 00 00", "0.05"},
      {"zero", kCurrency, 8, 2, "00 00 00 00 00 00 00 00", "0.00"},
      {"zero without decimals", kCurrency, 8, 0, "00 00 00 00 00 00 00 00", "0."},
      {"minus one", kCurrency, 8, 4, "FF FF FF FF FF FF FF FF", "-0.0001"},
      {"cut off", kCurrency, 8, 2, "05 01", "2.61"},
  };
  ExpectReads(cases);
}

TEST(CurrencyText, Write) {
  const FieldCase cases[] = {
      {"two decimals", kCurrency, 8, 2, "39 30 00 00 00 00 00 00", "123.45"},
      {"short fraction", kCurrency, 8, 2, "96 00 00 00 00 00 00 00", "1.5"},
      {"negative", kCurrency, 8, 4, "FF FF FF FF FF FF FF FF", "-0.0001"},
      {"dressed", kCurrency, 8, 2, "08 E2 01 00 00 00 00 00", "\\1,234.00円"},
      {"a sign in the fraction ends it", kCurrency, 8, 2, "01 00 00 00 00 00 00 00", "1.-5"},
      {"and counts towards its length", kCurrency, 8, 3, "0F 00 00 00 00 00 00 00", "1.5-"},
      {"empty", kCurrency, 8, 2, "00 00 00 00 00 00 00 00", ""},
      {"words", kCurrency, 8, 2, "00 00 00 00 00 00 00 00", "abc"},
  };
  ExpectWrites(cases);
}

}  // namespace
}  // namespace qrn
