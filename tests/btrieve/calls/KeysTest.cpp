// Keys through the calls: twins, nulls, autoincrement, refusals.
#include <gtest/gtest.h>

#include "clients/TestFile.h"

namespace btrieve::test {
namespace {

struct TwinCase {
  const char* name;
  Seg key;
  const char* value;
  const char* twin;  // collates with it
};

TEST(Keys, ValuesThatCollateAlikeAreDuplicates) {
  const TwinCase kTwins[] = {
      {"minus zero", {.length = 2, .type = 5}, "000c", "000d"},
      {"empty decimal", {.length = 2, .type = 5}, "000c", "0000"},
      {"autoincrement", {.length = 2, .type = 15}, "0500", "fbff"},
      {"case", {.length = 2, .flags = 0x500}, "6142", "4162"},
      {"behind the NUL", {.length = 3, .type = 11}, "410042", "410043"},
      {"behind the count", {.length = 3, .type = 10}, "014142", "014143"},
      {"float zero", {.length = 4, .type = 2}, "00000000", "00000080"},
      {"numeric endings", {.length = 2, .type = 8}, "3041", "3031"},
  };
  for (const TwinCase& row : kTwins) {
    TestFile file(CreateBlock({.recordLength = 8}, {row.key}));
    Bytes value = Hex(row.value);
    Bytes twin = Hex(row.twin);
    value.resize(8);
    twin.resize(8);
    EXPECT_EQ(file.Insert(value), 0) << row.name;
    EXPECT_EQ(file.Insert(twin), kDuplicateKey) << row.name;
    const CallOut found = file.Call(kGetEqual, {.room = 8, .key = twin});
    EXPECT_EQ(found.status, 0) << row.name;
    EXPECT_EQ(ToHex(found.data), ToHex(value)) << row.name;
    EXPECT_EQ(ToHex({found.key.begin(), found.key.begin() + row.key.length}),
              ToHex({value.begin(), value.begin() + row.key.length}))
        << row.name;
  }
}

TEST(Keys, SequenceOfTheFileOrders) {
  TestFile file(
      CreateBlock({.recordLength = 4}, {{.length = 4, .flags = 0x120}}, ReversingSequence()));
  for (const char* value : {"b   ", "a   ", "c   "}) EXPECT_EQ(file.Insert(Padded(value, 4)), 0);
  EXPECT_EQ(file.Walk(0), "63202020 62202020 61202020");
}

// A counter of 2 bytes and 2 more.
struct AutoIncrementTest : testing::Test {
  AutoIncrementTest()
      : file_(CreateBlock({.recordLength = 4}, {{.length = 2, .flags = 0x102, .type = 15}})) {}

  // The number that the record got, or the status as a negative one.
  int Add(int value, int keyNumber = 0) {
    const Bytes record = Number(static_cast<int16_t>(value)) + Bytes{7, 7};
    const CallOut out = file_.Call(kInsert, {.data = record, .keyNumber = keyNumber});
    if (out.status != 0) return -out.status;
    EXPECT_EQ(out.dataTouched, value == 0);
    if (keyNumber == 0) {
      EXPECT_EQ(NumberAt<int16_t>(out.key, 0), NumberAt<int16_t>(out.data, 0));
    }
    return NumberAt<int16_t>(out.data, 0);
  }

  TestFile file_;
};

TEST_F(AutoIncrementTest, CountsFromTheHighest) {
  EXPECT_EQ(Add(0), 1);
  EXPECT_EQ(Add(0), 2);
  EXPECT_EQ(Add(10), 10);
  EXPECT_EQ(Add(0, -1), 11);
  ASSERT_EQ(file_.Call(kDelete, {}).status, 0);
  EXPECT_EQ(Add(0), 11);
  EXPECT_EQ(Add(3), 3);
  EXPECT_EQ(Add(0), 12);
  EXPECT_EQ(Add(3), -kDuplicateKey);
}

TEST_F(AutoIncrementTest, NegativeValuesCountByTheirAmount) {
  EXPECT_EQ(Add(5), 5);
  EXPECT_EQ(Add(-5), -kDuplicateKey);
  EXPECT_EQ(Add(-9), -9);
  EXPECT_EQ(Add(0), 10);
}

TEST_F(AutoIncrementTest, EndsAtItsHighestValue) {
  EXPECT_EQ(Add(32766), 32766);
  EXPECT_EQ(Add(0), 32767);
  EXPECT_EQ(Add(0), -kDuplicateKey);
  EXPECT_EQ(Add(4), 4);
}

TEST_F(AutoIncrementTest, UpdateToZeroCountsToo) {
  EXPECT_EQ(Add(5), 5);
  EXPECT_EQ(Add(0), 6);
  const CallOut out = file_.Call(kUpdate, {.data = Hex("00000909")});
  EXPECT_EQ(out.status, 0);
  EXPECT_EQ(ToHex(out.data).substr(4), "0909");
  EXPECT_GT(NumberAt<int16_t>(out.data, 0), 5);
}

TEST(AutoIncrement, NotModifiableRefusesZeroOnUpdate) {
  TestFile file(CreateBlock({.recordLength = 4}, {{.length = 2, .flags = 0x100, .type = 15}}));
  ASSERT_EQ(file.Insert(Hex("05000000")), 0);
  EXPECT_EQ(file.Call(kUpdate, {.data = Hex("00000000"), .keyNumber = -1}).status,
            kKeyNotModifiable);
  EXPECT_EQ(file.Walk(0), "05000000");
}

TEST(AutoIncrement, ComesBackInLaterKeys) {
  TestFile file(CreateBlock(
      {.recordLength = 8},
      {{.length = 4, .type = 15}, {.flags = 0x150, .type = 1}, {.position = 5, .flags = 0x100}}));
  for (int i = 0; i < 3; ++i) ASSERT_EQ(file.Insert(Bytes(4) + Padded("x", 4)), 0);
  EXPECT_EQ(file.Walk(1), "0300000078202020 0200000078202020 0100000078202020");
}

// Three unique keys and, between them, one with duplicates: whichever refuses a record, the others
// keep nothing of it.
struct Refusal : testing::TestWithParam<int> {
  Refusal()
      : file_(CreateBlock({.recordLength = 16}, {{.type = 1},
                                                 {.position = 5, .flags = 0x101, .type = 1},
                                                 {.position = 9, .type = 1},
                                                 {.position = 13, .type = 1}})) {}

  static Bytes Row(int32_t first, int32_t second, int32_t third, int32_t fourth) {
    return Number(first) + Number(second) + Number(third) + Number(fourth);
  }
  void Begin() {
    if (GetParam() == 0) return;
    ASSERT_EQ(file_.Call(GetParam(), {}).status, 0);
  }
  void End() {
    if (GetParam() == 0) return;
    ASSERT_EQ(file_.Call(kEnd, {}).status, 0);
  }
  void ExpectAlongAllKeys(const std::vector<Bytes>& rows) {
    std::string walk;
    for (const Bytes& row : rows) walk += (walk.empty() ? "" : " ") + ToHex(row);
    for (int key = 0; key < 4; ++key) EXPECT_EQ(file_.Walk(key), walk) << "key " << key;
    uint16_t last = 10000;
    const CallOut out = file_.Call(kGetByPercentage, {.data = Number(last), .room = 16});
    EXPECT_EQ(ToHex(out.Returned()), ToHex(rows.back()));
  }

  TestFile file_;
};

TEST_P(Refusal, LeavesNoEntryInAnyKey) {
  const Bytes one = Row(1, 1, 1, 1);
  const Bytes two = Row(2, 2, 2, 2);
  ASSERT_EQ(file_.Insert(one), 0);
  Begin();
  for (const Bytes& twin : {Row(1, 2, 2, 2), Row(2, 2, 1, 2), Row(2, 1, 2, 1), Row(2, 2, 1, 1)}) {
    EXPECT_EQ(file_.Insert(twin), kDuplicateKey);
    EXPECT_EQ(file_.Counts(), "1 1,1,1,1");
  }
  ExpectAlongAllKeys({one});
  EXPECT_EQ(file_.Insert(two), 0);
  End();
  EXPECT_EQ(file_.Counts(), "2 2,2,2,2");
  ExpectAlongAllKeys({one, two});
}

TEST_P(Refusal, KeepsTheRecordsBeforeItInOneCall) {
  const std::vector<Bytes> rows = {Row(1, 1, 1, 1), Row(2, 1, 2, 2), Row(3, 1, 3, 1)};
  Begin();
  Bytes data = Number(uint16_t{3});
  for (const Bytes& row : rows) data = data + Number(uint16_t{16}) + row;
  const CallOut out = file_.Call(kInsertExtended, {.data = data, .keyNumber = -1});
  EXPECT_EQ(out.status, kDuplicateKey);
  EXPECT_EQ(NumberAt<uint16_t>(out.data, 0), 2);
  EXPECT_EQ(file_.Insert(Row(3, 1, 3, 3)), 0);
  End();
  EXPECT_EQ(file_.Counts(), "3 3,1,3,3");
  ExpectAlongAllKeys({rows[0], rows[1], Row(3, 1, 3, 3)});
}

INSTANTIATE_TEST_SUITE_P(Keys, Refusal, testing::Values(0, kBegin, kConcurrent + kBegin));

}  // namespace
}  // namespace btrieve::test
