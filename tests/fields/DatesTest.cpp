#include "FieldCases.h"

namespace qrn {
namespace {

QuorinSettings TwoDigits(int32_t year2000 = 0) {
  QuorinSettings settings;
  settings.DateStyle = kTwoDigitYears;
  std::snprintf(settings.DateFormat, sizeof settings.DateFormat, "%%02d/%%02d/%%02d");
  settings.year_2000 = year2000;
  return settings;
}

TEST(Dates, ReadWithFourDigits) {
  const FieldCase cases[] = {
      {"date", kDate, 4, 0, "05 01 E8 07", "2024/01/05"},
      {"zero", kDate, 4, 0, "00 00 00 00", "0000/00/00"},
      {"negative year", kDate, 4, 0, "01 01 FF FF", "-001/01/01"},
      {"out of range", kDate, 4, 0, "FF C8 FF 7F", "32767/200/255"},
      {"cut off", kDate, 4, 0, "05 01", "0000/01/05"},
      {"time", kTime, 4, 0, "63 38 22 0C", "12:34:56"},
      {"time out of range", kTime, 4, 0, "00 FF 64 FF", "255:100:255"},
      {"no bytes", kTime, 4, 0, "", "00:00:00"},
  };
  ExpectReads(cases);
}

TEST(Dates, ReadWithTwoDigits) {
  const FieldCase cases[] = {
      {"from 2000", kDate, 4, 0, "05 01 D0 07", "00/01/05"},
      {"a later century", kDate, 4, 0, "05 01 35 08", "101/01/05"},
      {"zero", kDate, 4, 0, "00 00 00 00", "-1900/00/00"},
  };
  ExpectReads(cases, TwoDigits());
}

TEST(Dates, WriteWithFourDigits) {
  const FieldCase cases[] = {
      {"date", kDate, 4, 0, "05 01 E8 07", "2024/01/05"},
      {"other separators", kDate, 4, 0, "1F 0C E8 07", "2024-12-31"},
      {"not validated", kDate, 4, 0, "63 63 0F 27", "9999/99/99"},
      {"blank month", kDate, 4, 0, "05 01 E8 07", "2024/ 1/05"},
      {"negative", kDate, 4, 0, "FF FE FF FF", "-001/-2/-1"},
  };
  ExpectWrites(cases);
}

TEST(Dates, ShortTextsCountAsZeroBehindTheirEnd) {
  const FieldCase cases[] = {
      {"empty", kDate, 4, 0, "00 00 00 00", ""},
      {"year and short month", kDate, 4, 0, "00 01 E8 07", "2024/1/"},
      {"words", kDate, 4, 0, "00 00 00 00", "today"},
  };
  ExpectWrites(cases);
}

TEST(Dates, WriteWithTwoDigits) {
  const FieldCase cases[] = {
      {"date", kDate, 4, 0, "05 01 7C 07", "16/01/05"},
      {"empty is the century", kDate, 4, 0, "00 00 6C 07", ""},
      {"positions alone count", kDate, 4, 0, "00 05 84 07", "24/5"},
  };
  ExpectWrites(cases, TwoDigits());
  EXPECT_EQ(WrittenAs(TwoDigits(1), Field(kDate, 4), "05/01/02"), "02 01 D5 07");
  EXPECT_EQ(WrittenAs(TwoDigits(0), Field(kDate, 4), "05/01/02"), "02 01 71 07");
}

TEST(Dates, TimesAreExactlyEightCharacters) {
  const FieldCase cases[] = {
      {"time", kTime, 4, 0, "00 38 22 0C", "12:34:56"},
      {"other separators", kTime, 4, 0, "00 38 22 0C", "12.34.56"},
      {"not validated", kTime, 4, 0, "00 63 63 63", "99:99:99"},
      {"empty", kTime, 4, 0, "00 00 00 00", ""},
      {"words", kTime, 4, 0, "00 00 00 00", "midnight"},
  };
  ExpectWrites(cases);
}

}  // namespace
}  // namespace qrn
