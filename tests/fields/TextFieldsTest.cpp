// Character types, Logical and Bit, Blob and the wide strings.

#include "FieldCases.h"

namespace qrn {
namespace {

TEST(TextFields, Read) {
  const FieldCase cases[] = {
      {"trailing blanks go", kString, 4, 0, "41 42 20 20", "AB"},
      {"blanks in front of a NUL stay", kString, 5, 0, "41 20 20 00 20", "A  "},
      {"ZString keeps blanks", kZString, 5, 0, "41 42 20 20 00", "AB  "},
      {"note up to its size, untrimmed", kNote, 4, 0, "41 42 20 20 43", "AB  "},
      {"lvar up to its NUL", kLVar, 4, 0, "41 00 42 43", "A"},
      {"LString", kLString, 6, 0, "03 41 42 43 44 45", "ABC"},
      {"Logical 1 of two bytes", kLogical, 2, 0, "01 05", "1"},
      {"Logical 10", kLogical, 1, 0, "0A", ":"},
      {"wide text", kWideString, 4, 0, "41 00 68 88 42 00 00 00 43 00", "A表B"},
      {"wide zstring ignores its size", kWideZString, 2, 0, "41 00 42 00 00 00", "AB"},
      {"blob", kBlob, 8, 0, "03 00 00 00 09 00 00 00 2E 41 42 43 44", "ABC"},
  };
  ExpectReads(cases);
}

TEST(TextFields, ReadNoFurtherThanTheRecord) {
  const FieldCase cases[] = {
      {"String cut off", kString, 9, 0, "41 42 20", "AB"},
      {"ZString without NUL", kZString, 2, 0, "41 42 43", "ABC"},
      {"note cut off", kNote, 200, 0, "41 42", "AB"},
      {"LString count beyond the record", kLString, 200, 0, "7F 41 42", "AB"},
      {"LString count of 128 stops at the field", kLString, 3, 0, "80 41 42 43 44", "AB"},
      {"LString count of 255 in a field of no size", kLString, 0, 0, "FF 41 42", ""},
      {"Logical of no bytes", kLogical, 1, 0, "", "0"},
      {"wide text without end", kWideString, 4, 0, "41 00 42 00 43", "AB"},
      {"blob descriptor cut off", kBlob, 8, 0, "02 00 00", "\x02"},
  };
  ExpectReads(cases);
}

TEST(TextFields, Write) {
  const FieldCase cases[] = {
      {"String is filled with blanks", kString, 4, 0, "41 42 20 20", "AB"},
      {"empty String is all blank", kString, 3, 0, "20 20 20", ""},
      {"note is filled with zeros", kNote, 4, 0, "41 42 00 00", "AB"},
      {"full note has no end", kLVar, 2, 0, "41 42", "ABC"},
      {"ZString of its size loses a byte", kZString, 3, 0, "41 42 00", "ABC"},
      {"ZString of one byte", kZString, 1, 0, "00", "ABC"},
      {"LString", kLString, 5, 0, "02 41 42 00 00", "AB"},
      {"LString filled", kLString, 3, 0, "02 41 42", "AB"},
      {"Logical 1", kLogical, 2, 0, "01", "1"},
      {"Logical of nothing", kLogical, 1, 0, "D0", ""},
      {"bit keeps its character", kBit, 1, 0, "41", "AB"},
      {"wide text ignores its size", kWideString, 2, 0, "41 00 68 88 00 00", "A表"},
      {"Blob is left alone", kBlob, 8, 0, "", "ABC"},
  };
  ExpectWrites(cases);
}

TEST(TextFields, WithoutFillSpaceTheRestKeepsItsBytes) {
  QuorinSettings settings;
  settings.fill_space = 0;
  EXPECT_EQ(WrittenAs(settings, Field(kString, 6), "AB"), "41 42 00");
  EXPECT_EQ(WrittenAs(settings, Field(kString, 6), ""), "00");
  EXPECT_EQ(WrittenAs(settings, Field(kString, 2), "AB"), "41 42");
}

TEST(TextFields, WritingStopsAtTheEndOfTheBuffer) {
  const FieldCase cases[] = {
      {"String", kString, 9, 0, "41 20 20", "A"},
      {"note", kNote, 9, 0, "41 00 00", "A"},
      {"ZString", kZString, 9, 0, "41 42 00", "ABCD"},
      {"LString", kLString, 9, 0, "04 41 42", "ABCD"},
      {"Logical", kLogical, 1, 0, "01", "1"},
      {"wide", kWideString, 9, 0, "00 00", "AB"},
  };
  for (const FieldCase& row : cases) {
    EXPECT_EQ(WrittenAs({}, Field(row.type, row.size), row.text, 3), row.hex) << row.name;
    EXPECT_EQ(WrittenAs({}, Field(row.type, row.size), row.text, 0), "") << row.name;
  }
}

TEST(TextFields, ABitHasNoTerminator) {
  const uint8_t record[] = {'B'};
  char text[3] = {'x', 'y', 'z'};
  GetFieldText({}, text, record, Field(kBit, 1), record);
  EXPECT_EQ(std::string(text, 3), "Byz");
}

TEST(TextFields, AnUnknownTypeLeavesTheTextAsItWas) {
  const uint8_t record[] = {'B'};
  for (const int32_t type : {20, 22, 24, 27, 227, 255, -1}) {
    char text[] = "old";
    GetFieldText({}, text, record, Field(type, 1), record);
    EXPECT_STREQ(text, "old") << type;
  }
}

TEST(TextFields, LongTextIsCutToItsPlace) {
  const Bytes record(100, 'A');
  for (const int32_t type : {kString, kZString, kNote, kNumeric, kDecimal, kFloat, kDate}) {
    std::vector<char> text(3, '#');
    GetFieldText({}, text, record.data(), Field(type, 100), record);
    EXPECT_EQ(std::string(text.data()).size(), 2u) << type;
    GetFieldText({}, {}, record.data(), Field(type, 100), record);
  }
}

TEST(TextFields, ADetachedValueFindsItsBlobInTheRecord) {
  const Bytes value = FromHex("02 00 00 00 01 00 00 00");
  const uint8_t record[] = {'x', 'B', 'C', 'y'};
  char text[8];
  GetDetachedFieldText({}, text, value, Field(kBlob, 8), record);
  EXPECT_STREQ(text, "BC");
  GetFieldText({}, text, value.data(), Field(kBlob, 8), record);
  EXPECT_STREQ(text, "") << "a value outside the record is not read";
}

}  // namespace
}  // namespace qrn
