// Counters through the calls; the other keys are held against the model.
#include <gtest/gtest.h>

#include "clients/TestFile.h"

namespace btrieve::test {
namespace {

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

TEST(AutoIncrement, ComesBackInLaterKeys) {
  TestFile file(CreateBlock(
      {.recordLength = 8},
      {{.length = 4, .type = 15}, {.flags = 0x150, .type = 1}, {.position = 5, .flags = 0x100}}));
  for (int i = 0; i < 3; ++i) ASSERT_EQ(file.Insert(Bytes(4) + Padded("x", 4)), 0);
  EXPECT_EQ(file.Walk(1), "0300000078202020 0200000078202020 0100000078202020");
}

}  // namespace
}  // namespace btrieve::test
