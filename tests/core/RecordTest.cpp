#include <gtest/gtest.h>

#include <cstring>

#include "FakeBtrieve.h"
#include "Support.h"
#include "core/KeyBuffer.h"
#include "core/Record.h"
#include "core/RecordPosition.h"

namespace qrn::test {
namespace {

constexpr int32_t kNulls = kSegmentLeavesNullOut;

struct Record : ::testing::Test {
  // What a Get passes on as key: "length:bytes".
  std::string KeyAt(OpenTable& table, int32_t position) {
    KeyBuffer key;
    if (!DbBuildKey(*table, position, key)) return "none";
    return std::to_string(key.FullLength()) + ":" + Hex(key.Bytes(), key.FullLength() + 1);
  }

  QuorinSettings settings_;
  DbEngine engine_{settings_};
  FakeBtrieve btrieve_;
  Messages messages_;
};

TEST_F(Record, KeysAreTheSegmentsOneAfterAnother) {
  struct {
    const char* name;
    std::vector<DbSegmentInfo> segments;
    int32_t position;
    const char* key;
  } const cases[] = {
      {"no key", {MakeSegment(0, 2, 0)}, -1, "0:00"},
      {"no key of no segments", {}, -1, "0:00"},
      {"one segment", {MakeSegment(1, 2, 0)}, 0, "3:62630000"},
      {"nulls left out", {MakeSegment(1, 2, kNulls)}, 0, "2:626300"},
      {"two segments",
       {MakeSegment(4, 2, kSegmentContinues), MakeSegment(0, 1, 0)},
       0,
       "5:656661000000"},
      {"from the second",
       {MakeSegment(4, 2, kSegmentContinues), MakeSegment(0, 1, 0)},
       1,
       "2:610000"},
      {"cut off by the end", {MakeSegment(0, 1, kSegmentContinues | kNulls)}, 0, "1:6100"},
      {"past the record", {MakeSegment(7, 4, kNulls)}, 0, "4:6800000000"},
      {"far past it", {MakeSegment(5000, 1, kNulls)}, 0, "1:0000"},
      {"before it", {MakeSegment(-3, 2, kNulls)}, 0, "2:000000"},
      {"no length", {MakeSegment(0, 0, kNulls)}, 0, "0:00"},
      {"negative length", {MakeSegment(0, -5, 0)}, 0, "1:0000"},
  };
  for (const auto& row : cases) {
    OpenTable table({}, row.segments, 8);
    table.SetRecord("abcdefgh");
    table->BufferAllocated = 8;
    EXPECT_EQ(KeyAt(table, row.position), row.key) << row.name;
  }
}

TEST_F(Record, PositionsThatAreNoSegmentAreRefused) {
  OpenTable table({}, {MakeSegment(0, 2, 0)}, 8);
  for (const int32_t position : {1, 2, 30000, -2, -32768}) {
    EXPECT_EQ(DbRecordCall(engine_, *table, 5, position), kNoIndex);
    EXPECT_EQ(messages_.Take(), "VE804 インデックスの指定が不正です。; ");
  }
  EXPECT_EQ(btrieve_.TakeLog(), "");
}

TEST_F(Record, LongKeysAreAllocatedAndTheirLengthWraps) {
  OpenTable table({}, {MakeSegment(0, 300, 0)}, 400);
  table.SetRecord(std::string(300, 'k'));
  EXPECT_EQ(DbRecordCall(engine_, *table, 5, 0), 0);
  EXPECT_EQ(btrieve_.TakeLog(),
            "5 len=401 key=45:" + Hex(std::string(45, 'k').data(), 45) + " kn=0; ");
  const MemoryRunsOut memory(0);
  EXPECT_EQ(DbRecordCall(engine_, *table, 5, 0), kNoIndex);
  EXPECT_EQ(messages_.Take(), "");
}

TEST_F(Record, CallsCarryBiasKeyAndLength) {
  OpenTable table(
      {MakeField("a", kString, 0, 2, 0, 7)},
      {MakeSegment(0, 1, kSegmentContinues), MakeSegment(1, 1, 0, 8), MakeSegment(0, 2, 0, 7)}, 8);
  table.SetRecord("xyz");
  struct {
    int32_t operation, position;
    uint16_t bias;
    const char* log;
  } const cases[] = {
      {12, 0, 0, "12 len=9 key=4:78790000 kn=0; "},
      {6, 2, 300, "306 len=9 key=3:787900 kn=1; "},
      {3, -1, 400, "403 len=9 key=0: kn=-1; "},
      {2, 1, 0, "2 len=9 key=2:7900 kn=0; "},
  };
  for (const auto& row : cases) {
    engine_.LockBias = row.bias;
    EXPECT_EQ(DbRecordCall(engine_, *table, row.operation, row.position), 0);
    EXPECT_EQ(btrieve_.TakeLog(), row.log);
  }
  btrieve_.Answer(405, 4);
  EXPECT_EQ(DbRecordCallByName(engine_, *table, 5, "a"), 0);
  engine_.LockBias = 400;
  EXPECT_EQ(DbRecordCallByName(engine_, *table, 5, "a"), 4);
  for (const char* name : {"", "none", static_cast<const char*>(nullptr)}) {
    EXPECT_EQ(DbRecordCallByName(engine_, *table, 5, name), kNoIndex);
  }
}

TEST_F(Record, VariableTablesPassTheirBuffersSize) {
  OpenTable table({}, {}, 8);
  table->IsVariable = 1;
  ASSERT_TRUE(AllocateRecordBuffer(*table, kLongRecordSize));
  EXPECT_EQ(DbRecordCall(engine_, *table, 6, -1), 0);
  EXPECT_EQ(btrieve_.TakeLog(), "6 len=9 key=0: kn=-1; ");
  table->BufferSize = kLongRecordSize;
  EXPECT_EQ(DbRecordCall(engine_, *table, 6, -1), 0);
  EXPECT_EQ(btrieve_.TakeLog(), "6 len=64512 key=0: kn=-1; ") << "never more than there is";
}

TEST_F(Record, WritesOfVariableTablesMeasureTheRecord) {
  struct {
    const char* name;
    std::vector<DbFieldInfo> fields;
    std::string record;
    int32_t recordLength;
    uint32_t length;
  } const cases[] = {
      {"no field", {}, "", 0, 0},
      {"a note's text and its NUL",
       {MakeField("a", kString, 0, 4), MakeField("n", kNote, 4, 100)},
       std::string("abcdhello\0rest", 14),
       104,
       10},
      {"null indicators count",
       {MakeField("a", kString, 1, 4, kFieldNullable), MakeField("n", kLVar, 6, 9, kFieldNullable)},
       std::string("\0abcd\0hi\0", 9),
       15,
       9},
      {"two texts",
       {MakeField("m", kNote, 0, 9), MakeField("n", kLVar, 9, 9)},
       std::string("ab\0c\0", 5),
       18,
       5},
      {"blobs behind the fixed part",
       {MakeField("b", kBlob, 0, 8), MakeField("a", kString, 8, 2), MakeField("c", kBlob, 10, 8)},
       std::string("\5\0\0\0\0\0\0\0xy\3\0\0\0\0\0\0\0", 18),
       18,
       26},
      {"a blob that claims too much",
       {MakeField("b", kBlob, 0, 8)},
       std::string("\xFF\xFF\xFF\xFF\0\0\0\0", 8),
       8,
       64512},
  };
  for (const auto& row : cases) {
    OpenTable table(row.fields, {}, row.recordLength);
    table->IsVariable = 1;
    ASSERT_TRUE(AllocateRecordBuffer(*table, kLongRecordSize));
    table.SetRecord(row.record);
    uint32_t length = 77;
    DbRecordDataLength(engine_, *table, length);
    EXPECT_EQ(length, row.length) << row.name;
    table->IsVariable = 0;
    length = 77;
    DbRecordDataLength(engine_, *table, length);
    EXPECT_EQ(length, 77u) << row.name;
  }
}

TEST_F(Record, ClearingGivesEachTypeItsEmptyValue) {
  struct {
    int32_t type, size;
    const char* bytes;  // of 10 that were all FF
  } const cases[] = {
      {kString, 4, "20202020FFFFFFFFFFFF"},     {kString, 99, "20202020202020202020"},
      {kString, -1, "FFFFFFFFFFFFFFFFFFFF"},    {kInteger, 4, "00000000FFFFFFFFFFFF"},
      {kInteger, 1, "00FFFFFFFFFFFFFFFFFF"},    {kInteger, 8, "0000FFFFFFFFFFFFFFFF"},
      {kUBin, 4, "00000000FFFFFFFFFFFF"},       {kAutoInc, 1, "0000FFFFFFFFFFFFFFFF"},
      {kAutoInc, 4, "00000000FFFFFFFFFFFF"},    {kFloat, 4, "0000000000000000FFFF"},
      {kBFloat, 4, "0000000000000000FFFF"},     {kCurrency, 8, "0000000000000000FFFF"},
      {kDate, 4, "00000000FFFFFFFFFFFF"},       {kTime, 4, "00000000FFFFFFFFFFFF"},
      {kDecimal, 3, "000000FFFFFFFFFFFFFF"},    {kMoney, 3, "000000FFFFFFFFFFFFFF"},
      {kNote, 3, "000000FFFFFFFFFFFFFF"},       {kLVar, 2, "0000FFFFFFFFFFFFFFFF"},
      {kLogical, 2, "00FFFFFFFFFFFFFFFFFF"},    {kLString, 5, "00FFFFFFFFFFFFFFFFFF"},
      {kZString, 5, "00FFFFFFFFFFFFFFFFFF"},    {kNumeric, 5, "303030307BFFFFFFFFFF"},
      {kNumericSTS, 1, "7BFFFFFFFFFFFFFFFFFF"}, {kNumericSA, 30, "30303030303030303030"},
      {kNumeric, 0, "7BFFFFFFFFFFFFFFFFFF"},    {kBit, 1, "FFFFFFFFFFFFFFFFFFFF"},
      {kBlob, 8, "FFFFFFFFFFFFFFFFFFFF"},       {kWideString, 4, "FFFFFFFFFFFFFFFFFFFF"},
      {99, 4, "FFFFFFFFFFFFFFFFFFFF"},
  };
  for (const auto& row : cases) {
    uint8_t bytes[10];
    std::memset(bytes, 0xFF, sizeof bytes);
    DbClearValue(bytes, row.type, row.size);
    EXPECT_EQ(Hex(bytes, sizeof bytes), row.bytes) << row.type << '/' << row.size;
  }
}

TEST_F(Record, ClearingGoesByOffset) {
  OpenTable table({MakeField("n", kNumeric, 2, 3), MakeField("s", kString, 5, 2, kFieldNullable),
                   MakeField("far", kString, 900, 4), MakeField("before", kString, -4, 4)},
                  {}, 8);
  table.SetRecord("XXXXXXXXX");
  EXPECT_EQ(DbClearRecord(engine_, *table), 0);
  EXPECT_EQ(table.Record(9), std::string("\0\0"
                                         "00{  "
                                         "\0X",
                                         9));
}

TEST_F(Record, FieldsAreReadByOffsetAndWrittenByWalking) {
  // The offsets do not count the null-indicator byte of the first field.
  OpenTable table({MakeField("a", kString, 0, 2, kFieldNullable), MakeField("b", kString, 2, 2)},
                  {}, 8);
  table.SetRecord(std::string("\0ABCD   ", 8));
  EXPECT_STREQ(DbReadField(engine_, *table, 1), "BC");
  EXPECT_EQ(DbWriteField(engine_, *table, 1, "xy"), 0);
  EXPECT_EQ(table.Record(6), std::string("\0ABxy ", 6));
  EXPECT_EQ(DbWriteFieldByName(engine_, *table, "a", "p"), 0);
  EXPECT_EQ(table.Record(6), std::string("\0p xy ", 6));
}

TEST_F(Record, LongTextsInFrontAreSteppedOverByTheTextWritten) {
  OpenTable table({MakeField("n", kNote, 0, 9), MakeField("b", kString, 9, 3)}, {}, 12);
  table.SetRecord("abcdefghijkl");
  EXPECT_EQ(DbWriteField(engine_, *table, 1, "xy"), 0);
  EXPECT_EQ(table.Record(12), "abcxy ghijkl");
}

TEST_F(Record, WhatDoesNotExistIsNeitherReadNorWritten) {
  OpenTable table({MakeField("a", kString, 0, 2), MakeField("far", kString, 5000, 2),
                   MakeField("before", kInteger, -4, 4)},
                  {}, 4);
  table.SetRecord("abcd");
  std::strcpy(engine_.FieldText, "stale");
  for (const int32_t position : {-1, 3, 32767}) {
    EXPECT_STREQ(DbReadField(engine_, *table, position), "") << position;
    EXPECT_EQ(DbWriteField(engine_, *table, position, "zz"), kNoField);
  }
  EXPECT_STREQ(DbReadField(engine_, *table, 1), "");
  EXPECT_STREQ(DbReadField(engine_, *table, 2), "");
  EXPECT_STREQ(DbReadFieldByName(engine_, *table, "A"), "");
  EXPECT_EQ(DbWriteFieldByName(engine_, *table, nullptr, "zz"), kNoField);
  EXPECT_EQ(table.Record(4), "abcd");
  FreeRecordBuffer(*table);
  EXPECT_STREQ(DbReadField(engine_, *table, 0), "");
  EXPECT_EQ(DbWriteField(engine_, *table, 0, "zz"), kNotOpen);
  EXPECT_EQ(DbClearRecord(engine_, *table), 0);
  EXPECT_EQ(DbRecordCall(engine_, *table, 12, -1), 0);
  EXPECT_EQ(btrieve_.TakeLog(), "12 nodata len=0 key=0: kn=-1; ");
}

TEST_F(Record, ABlobIsStoredBehindTheRecord) {
  OpenTable table({MakeField("b", kBlob, 0, 8), MakeField("s", kString, 8, 2)}, {}, 10);
  table->IsVariable = 1;
  ASSERT_TRUE(AllocateRecordBuffer(*table, kLongRecordSize));
  const std::string text(70000, 'x');
  ASSERT_EQ(DbWriteField(engine_, *table, 0, "hello"), 0);
  EXPECT_STREQ(DbReadField(engine_, *table, 0), "hello");
  uint32_t length = 0;
  DbRecordDataLength(engine_, *table, length);
  EXPECT_EQ(length, 15u);
  ASSERT_EQ(DbWriteField(engine_, *table, 0, text.c_str()), 0);
  EXPECT_GE(table->BufferAllocated, 70010u);
  DbRecordDataLength(engine_, *table, length);
  EXPECT_EQ(length, 70010u);
  const MemoryRunsOut memory(0);
  EXPECT_EQ(DbWriteField(engine_, *table, 0, (text + text).c_str()), kFailure);
}

TEST_F(Record, WholeRecordsMoveInRanges) {
  OpenTable table(
      {MakeField("a", kString, 0, 2), MakeField("b", kString, 2, 2), MakeField("c", kString, 4, 2)},
      {}, 6);
  table.SetRecord("aabbcc");
  const char* texts[] = {"x", "yyy"};
  EXPECT_EQ(DbWriteFields(engine_, *table, 1, texts), 0);
  EXPECT_EQ(table.Record(6), "aax yy");
  EXPECT_EQ(DbWriteFields(engine_, *table, 2, texts), 0);
  EXPECT_EQ(table.Record(6), "aax x ");
  EXPECT_EQ(DbWriteFields(engine_, *table, -1, texts), 0);
  EXPECT_EQ(table.Record(6), "yyx x ");
  char text[3];
  DbReadFieldInto(engine_, *table, 1, text);
  EXPECT_STREQ(text, "x");
}

TEST_F(Record, ImagesNeverPassEitherEnd) {
  OpenTable table({}, {}, 9);
  table.SetRecord("0123456789");
  uint8_t image[20] = {};
  DbReadRecordImage(*table, std::span(image).first(3));
  EXPECT_EQ(Hex(image, 4), "30313200");
  DbReadRecordImage(*table, image);
  EXPECT_EQ(image[9], '9');
  EXPECT_EQ(image[10], 0);
  std::memset(image, 'z', sizeof image);
  DbWriteRecordImage(*table, image);
  EXPECT_EQ(table.Record(10), "zzzzzzzzzz");
}

TEST_F(Record, PositionsGoThroughTheBuffer) {
  OpenTable table({}, {MakeSegment(2, 4, 0)}, 8);
  table.SetRecord("XXXXXXXXX");
  btrieve_.Answer(22, [](const BtrieveCall& call) {
    std::memcpy(call.data, "\4\3\2\1", 4);
    return int16_t{0};
  });
  EXPECT_EQ(DbGetPositionOf(engine_, *table), 0x01020304);
  btrieve_.Answer(22, 8);
  EXPECT_EQ(DbGetPositionOf(engine_, *table), -1);
  btrieve_.TakeLog();
  engine_.LockBias = 100;
  EXPECT_EQ(DbGetDirectAt(engine_, *table, 0x01020304, 0), 0);
  EXPECT_EQ(btrieve_.TakeLog(), "123 len=9 key=5:0201000000 kn=0; ");
  EXPECT_EQ(table.Record(9), std::string("\4\3\2\1\0\0\0\0\0", 9));
  EXPECT_EQ(DbGetDirectAt(engine_, *table, 5, -1), 0);
  EXPECT_EQ(btrieve_.TakeLog(), "23 len=9 key=0: kn=-1; ") << "no key, no bias";
  EXPECT_EQ(DbGetDirectAt(engine_, *table, 5, 1), kNoIndex);
  EXPECT_EQ(DbGetDirectByName(engine_, *table, 5, ""), kNoIndex);
  EXPECT_EQ(btrieve_.TakeLog(), "");
}

TEST_F(Record, PercentagesGoThroughTheBuffer) {
  OpenTable table({}, {MakeSegment(2, 2, 0)}, 8);
  table.SetRecord("ABCDEFGHI");
  engine_.LockBias = 100;
  EXPECT_EQ(DbGetByPercentageAt(engine_, *table, 0, 10000), 0);
  EXPECT_EQ(btrieve_.TakeLog(), "44 len=9 key=3:434400 kn=0; ");
  EXPECT_EQ(table.Record(9), std::string("\x10\x27"
                                         "CDEFGHI"));
  EXPECT_EQ(DbGetByPercentageAt(engine_, *table, -1, 1), 0);
  EXPECT_EQ(btrieve_.TakeLog(), "44 len=9 key=0: kn=-1; ");
  EXPECT_EQ(DbGetByPercentageAt(engine_, *table, 1, 1), kFailure);
  EXPECT_EQ(DbFindPercentageAt(engine_, *table, 1, 1, nullptr), kFailure);

  btrieve_.Answer(45, [](const BtrieveCall& call) {
    EXPECT_EQ(Hex(call.data, 4), "07000000");
    std::memcpy(call.data, "\x88\x13\1\1", 4);
    return int16_t{0};
  });
  uint16_t percentage = 1;
  EXPECT_EQ(DbFindPercentageAt(engine_, *table, -1, 7, &percentage), 0);
  EXPECT_EQ(percentage, 5000);
  EXPECT_EQ(DbFindPercentageAt(engine_, *table, 0, 7, nullptr), 0);
  EXPECT_EQ(btrieve_.TakeLog(), "45 len=4 key=- kn=-1; 45 len=4 key=3:434400 kn=0; ");
  btrieve_.Answer(45, 9);
  EXPECT_EQ(DbFindPercentageAt(engine_, *table, 0, 7, &percentage), 9);
  EXPECT_EQ(percentage, 5000);
}

TEST_F(Record, UnlockingTheCurrentRecordNamesIt) {
  OpenTable table({}, {}, 8);
  btrieve_.Answer(22, [](const BtrieveCall& call) {
    std::memcpy(call.data, "\4\3\2\1", 4);
    return int16_t{0};
  });
  std::string data;
  btrieve_.Answer(27, [&](const BtrieveCall& call) {
    data = Hex(call.data, 4);
    return int16_t{81};
  });
  EXPECT_EQ(DbUnlockRecord(engine_, *table, -1), 81);
  EXPECT_EQ(data, "04030201");
  EXPECT_EQ(btrieve_.TakeLog(), "22 len=4 key=- kn=0; 27 len=4 key=- kn=-1; ");
  EXPECT_EQ(DbUnlockRecord(engine_, *table, -2), 81);
  EXPECT_EQ(data, "00000000");
  EXPECT_EQ(btrieve_.TakeLog(), "27 len=0 key=- kn=-2; ");
}

TEST_F(Record, CountsComeFromTheStat) {
  OpenTable table({}, {}, 8);
  btrieve_.Answer(15, [](const BtrieveCall& call) {
    std::memcpy(call.data + 6, "\1\0\2\0", 4);
    return int16_t{0};
  });
  int32_t count = 0;
  EXPECT_EQ(DbCountRecords(engine_, *table, &count), 0);
  EXPECT_EQ(count, 0x20001);
  EXPECT_EQ(DbCountRecords(engine_, *table, nullptr), 0);
  btrieve_.Answer(15, 3);
  EXPECT_EQ(DbCountRecords(engine_, *table, &count), 3);
  EXPECT_EQ(count, 0x20001);
}

}  // namespace
}  // namespace qrn::test
