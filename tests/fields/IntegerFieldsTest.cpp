#include "FieldCases.h"

namespace qrn {
namespace {

TEST(IntegerFields, Read) {
  const FieldCase cases[] = {
      {"Integer 1 is unsigned", kInteger, 1, 0, "FF", "255"},
      {"Integer 2", kInteger, 2, 0, "FE FF", "-2"},
      {"Integer 2 least", kInteger, 2, 0, "00 80", "-32768"},
      {"Integer 3 is its first byte", kInteger, 3, 0, "80 01 01", "128"},
      {"Integer 4", kInteger, 4, 0, "15 CD 5B 07", "123456789"},
      {"Integer 4 least", kInteger, 4, 0, "00 00 00 80", "-2147483648"},
      {"Integer 8", kInteger, 8, 0, "FF FF FF FF FF FF FF 7F", "9223372036854775807"},
      {"Integer 8 least", kInteger, 8, 0, "00 00 00 00 00 00 00 80", "-9223372036854775808"},
      {"UBin 1 reads two bytes", kUBin, 1, 0, "01 02", "513"},
      {"UBin 2", kUBin, 2, 0, "FF FF", "65535"},
      {"UBin 4", kUBin, 4, 0, "FF FF FF FF", "4294967295"},
      {"UBin 8 reads two bytes", kUBin, 8, 0, "01 00 01 00 00 00 00 00", "1"},
      {"AutoInc 2 of -1", kAutoInc, 2, 0, "FF FF", "4294967295"},
      {"AutoInc 2", kAutoInc, 2, 0, "FF 7F", "32767"},
      {"AutoInc 4", kAutoInc, 4, 0, "FF FF FF FF", "4294967295"},
      {"AutoInc 8 reads two bytes", kAutoInc, 8, 0, "05 00 01 00 00 00 00 00", "5"},
  };
  ExpectReads(cases);
}

TEST(IntegerFields, MissingBytesAreZero) {
  const FieldCase cases[] = {
      {"Integer of nothing", kInteger, 4, 0, "", "0"},
      {"Integer cut off", kInteger, 4, 0, "01 02", "513"},
      {"Integer of negative size", kInteger, -4, 0, "07 01 01 01", "7"},
      {"Integer 8 cut off", kInteger, 8, 0, "FF", "255"},
      {"UBin cut off", kUBin, 2, 0, "FF", "255"},
      {"AutoInc cut off", kAutoInc, 2, 0, "FF", "255"},
  };
  ExpectReads(cases);
}

TEST(IntegerFields, Write) {
  const FieldCase cases[] = {
      {"size 1", kInteger, 1, 0, "2C", "300"},
      {"size 1 negative", kInteger, 1, 0, "FF", "-1"},
      {"size 2 loses its high bytes", kInteger, 2, 0, "70 11", "70000"},
      {"size 3 stores two", kInteger, 3, 0, "02 01", "258"},
      {"size 4", kInteger, 4, 0, "EB 32 A4 F8", "-123456789"},
      {"size 8", kInteger, 8, 0, "FF FF FF FF FF FF FF 7F", "9223372036854775807"},
      {"UBin takes a sign", kUBin, 2, 0, "FF FF", "-1"},
      {"UBin 4 stays at signed 32 bits", kUBin, 4, 0, "FF FF FF 7F", "4000000000"},
      {"UBin 1", kUBin, 1, 0, "07", "7"},
      {"UBin 8", kUBin, 8, 0, "00 28 6B EE 00 00 00 00", "4000000000"},
      {"AutoInc 1 stores two", kAutoInc, 1, 0, "07 00", "7"},
      {"AutoInc 4", kAutoInc, 4, 0, "07 00 00 00", "7"},
      {"AutoInc 8 stores two", kAutoInc, 8, 0, "FE FF", "-2"},
      {"thousands and words go", kInteger, 4, 0, "D2 04 00 00", "合計 1,234 円"},
      {"a yen sign goes", kInteger, 2, 0, "0C 00", "\\ 12"},
      {"fractions end the number", kInteger, 2, 0, "0C 00", "12.9"},
  };
  ExpectWrites(cases);
}

TEST(IntegerFields, WhatIsNoNumberIsZeroOrStopsAtItsLimit) {
  const FieldCase cases[] = {
      {"empty", kInteger, 4, 0, "00 00 00 00", ""},
      {"words", kInteger, 2, 0, "00 00", "abc"},
      {"a sign alone", kInteger, 2, 0, "00 00", "-"},
      {"two signs", kInteger, 2, 0, "00 00", "--5"},
      {"a sign inside ends it", kInteger, 2, 0, "01 00", "1-2"},
      {"a point in front", kInteger, 2, 0, "00 00", ".5"},
      {"beyond 32 bits", kInteger, 4, 0, "FF FF FF 7F", "99999999999"},
      {"below 32 bits", kInteger, 4, 0, "00 00 00 80", "-99999999999"},
      {"beyond 32 bits in two bytes", kInteger, 2, 0, "FF FF", "2147483648"},
      {"below 32 bits in one byte", kInteger, 1, 0, "00", "-2147483649"},
      {"beyond 64 bits", kInteger, 8, 0, "FF FF FF FF FF FF FF 7F", "9223372036854775808"},
      {"below 64 bits", kInteger, 8, 0, "00 00 00 00 00 00 00 80", "-99999999999999999999"},
      {"no size", kInteger, 0, 0, "05 00", "5"},
  };
  ExpectWrites(cases);
}

TEST(IntegerFields, WritingStopsAtTheEndOfTheBuffer) {
  const FieldCase cases[] = {
      {"Integer", kInteger, 8, 0, "40 E2", "123456"},
      {"UBin", kUBin, 8, 0, "40 E2", "123456"},
      {"AutoInc", kAutoInc, 4, 0, "40 E2", "123456"},
      {"Float", kFloat, 8, 0, "00 00", "123456"},
      {"BFloat", kBFloat, 8, 0, "00 00", "123456"},
      {"Currency", kCurrency, 8, 0, "40 E2", "123456"},
      {"Date", kDate, 4, 0, "1F 01", "2024/01/31"},
      {"Time", kTime, 4, 0, "00 38", "12:34:56"},
  };
  for (const FieldCase& row : cases) {
    for (size_t room = 0; room <= 2; ++room) {
      const std::string whole = row.hex;
      const std::string fits = whole.substr(0, room == 0 ? 0 : room * 3 - 1);
      EXPECT_EQ(WrittenAs({}, Field(row.type, row.size), row.text, room), fits)
          << row.name << " in " << room;
    }
  }
}

}  // namespace
}  // namespace qrn
