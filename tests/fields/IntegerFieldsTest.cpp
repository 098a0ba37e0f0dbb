#include "FieldCases.h"

namespace qrn {
namespace {

TEST(IntegerFields, Read) {
  const FieldCase cases[] = {
      {"Integer 2", kInteger, 2, 0, "FE FF", "-2"},
      {"UBin 4", kUBin, 4, 0, "FF FF FF FF", "4294967295"},
      {"UBin 8 reads two bytes", kUBin, 8, 0, "01 00 01 00 00 00 00 00", "1"},
      {"AutoInc 2 of -1", kAutoInc, 2, 0, "FF FF", "4294967295"},
      {"AutoInc 4", kAutoInc, 4, 0, "FF FF FF FF", "4294967295"},
      {"AutoInc 8 reads two bytes", kAutoInc, 8, 0, "05 00 01 00 00 00 00 00", "5"},
  };
  ExpectReads(cases);
}

TEST(IntegerFields, Write) {
  const FieldCase cases[] = {
      {"size 1 negative", kInteger, 1, 0, "FF", "-1"},
      {"size 3 stores two", kInteger, 3, 0, "02 01", "258"},
      {"size 4", kInteger, 4, 0, "EB 32 A4 F8", "-123456789"},
      {"size 8", kInteger, 8, 0, "FF FF FF FF FF FF FF 7F", "9223372036854775807"},
      {"UBin 1", kUBin, 1, 0, "07", "7"},
      {"UBin 8", kUBin, 8, 0, "00 28 6B EE 00 00 00 00", "4000000000"},
      {"AutoInc 1 stores two", kAutoInc, 1, 0, "07 00", "7"},
      {"AutoInc 4", kAutoInc, 4, 0, "07 00 00 00", "7"},
      {"AutoInc 8 stores two", kAutoInc, 8, 0, "FE FF", "-2"},
      {"thousands and words go", kInteger, 4, 0, "D2 04 00 00", "合計 1,234 円"},
  };
  ExpectWrites(cases);
}

}  // namespace
}  // namespace qrn
