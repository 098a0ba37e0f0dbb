#include "FieldCases.h"

namespace qrn {
namespace {

TEST(PackedDecimal, Read) {
  const FieldCase cases[] = {
      {"fraction keeps its zeros", kDecimal, 4, 2, "01 23 45 0F", "1234.50"},
      {"whole number loses its fraction", kDecimal, 4, 2, "01 23 40 0F", "1234"},
      {"twelve", kMoney, 3, 2, "01 20 0F", "12"},
      {"below one", kDecimal, 2, 2, "05 0F", "0.50"},
      {"zero keeps its fraction", kDecimal, 2, 2, "00 0F", "0.00"},
      {"negative zero", kDecimal, 2, 0, "00 0D", "-0"},
      {"zero", kDecimal, 2, 0, "00 0F", "0"},
      {"more decimals than digits", kDecimal, 1, 3, "5F", "0.005"},
      {"zero of more decimals than digits", kDecimal, 1, 2, "0F", "0.00"},
      {"thirty-one digits", kDecimal, 16, 2, "12 34 56 78 90 12 34 56 78 90 12 34 56 78 90 1D",
       "-12345678901234567890123456789.01"},
  };
  ExpectReads(cases);
}

TEST(PackedDecimal, BadFieldsReadAsTheyFall) {
  const FieldCase cases[] = {
      {"and behind the point", kDecimal, 2, 2, "1F 0F", "1.?0"},
      {"no bytes", kDecimal, 0, 0, "", "0"},
      {"no bytes, decimals", kDecimal, 0, 2, "", "0.00"},
      {"negative size", kDecimal, -2, 0, "12 3F", "0"},
      {"negative decimals", kDecimal, 2, -5, "12 3F", "123"},
      {"cut off", kDecimal, 4, 0, "12 3D", "-123"},
  };
  ExpectReads(cases);
}

TEST(PackedDecimal, Write) {
  const FieldCase cases[] = {
      {"negative", kDecimal, 2, 0, "00 5D", "-5"},
      {"fraction", kDecimal, 3, 2, "01 23 4F", "12.34"},
      {"short fraction", kMoney, 3, 2, "01 23 0F", "12.3"},
      {"point without fraction", kDecimal, 3, 2, "01 20 0F", "12."},
      {"negative fraction", kDecimal, 2, 2, "05 0D", "-0.50"},
      {"dressed", kDecimal, 4, 2, "01 23 45 0F", "\\1,234.50円"},
  };
  ExpectWrites(cases);
}

TEST(PackedDecimal, BadTextIsStoredAsItFalls) {
  const FieldCase cases[] = {
      {"empty", kDecimal, 2, 0, "00 0F", ""},
      {"words", kDecimal, 2, 2, "00 0F", "abc"},
      {"negative zero", kDecimal, 2, 0, "00 0D", "-0"},
      {"a sign inside is the digit 0", kDecimal, 2, 0, "10 2F", "1-2"},
      {"decimals beyond the field", kDecimal, 2, 9, "00 0F", "1"},
      {"no size", kDecimal, 0, 0, "", "12"},
      {"negative size", kDecimal, -1, 0, "", "12"},
  };
  ExpectWrites(cases);
}

TEST(PackedDecimal, TheSettingGivesThePositiveSign) {
  QuorinSettings settings;
  settings.sign_nibble = 12;
  EXPECT_EQ(WrittenAs(settings, Field(kDecimal, 2), "5"), "00 5C");
  EXPECT_EQ(WrittenAs(settings, Field(kDecimal, 2), "-5"), "00 5D");
  settings.sign_nibble = 13;
  EXPECT_EQ(WrittenAs(settings, Field(kDecimal, 2), "5"), "00 5D");
  settings.sign_nibble = 0x7A;
  EXPECT_EQ(WrittenAs(settings, Field(kDecimal, 2), "5"), "00 5A");
}

TEST(PackedDecimal, WritingStopsAtTheEndOfTheBuffer) {
  EXPECT_EQ(WrittenAs({}, Field(kDecimal, 4), "1234567", 2), "12 34");
  EXPECT_EQ(WrittenAs({}, Field(kDecimal, 4), "1234567", 0), "");
}

}  // namespace
}  // namespace qrn
