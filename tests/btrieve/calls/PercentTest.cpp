// Positions as hundredths of a percent and back.
#include <gtest/gtest.h>

#include <cmath>

#include "clients/TestFile.h"

namespace btrieve::test {
namespace {

// Key 0 counts, key 1 is the same for all.
struct PercentTest : testing::Test {
  PercentTest()
      : file_(CreateBlock({.recordLength = 8}, {{.flags = 0x102, .type = 1},
                                                {.position = 5, .flags = 0x103, .type = 1}})) {}

  void Fill(int count) {
    ASSERT_EQ(file_.Call(kBegin, {}).status, 0);
    for (int32_t i = 0; i < count; ++i) ASSERT_EQ(file_.Insert(Number(i) + Number(int32_t{7})), 0);
    ASSERT_EQ(file_.Call(kEnd, {}).status, 0);
  }

  // The id at a percentage, or the status as a negative number.
  int At(int percent, int key) {
    const Bytes data = Number(static_cast<uint16_t>(percent));
    const CallOut out = file_.Call(kGetByPercentage, {.data = data, .room = 8, .keyNumber = key});
    return out.status ? -out.status : NumberAt<int32_t>(out.data, 0);
  }

  int Of(const Bytes& value, int key) {
    const CallOut out =
        file_.Call(kFindPercentage, {.data = Bytes(4), .key = value, .keyNumber = key});
    if (out.status == 0) {
      EXPECT_EQ(out.length, 4u);
    }
    return out.status ? -out.status : static_cast<int>(NumberAt<uint32_t>(out.data, 0));
  }
  int OfId(int32_t id) { return Of(Number(id), 0); }

  TestFile file_;
};

TEST_F(PercentTest, ValuesOutsideAreTakenAsTheEnds) {
  Fill(10);
  EXPECT_EQ(At(65000, 0), 0) << "minus 536";
  EXPECT_EQ(At(65336, 0), 0) << "minus 200";
  EXPECT_EQ(At(10001, 0), 9);
  EXPECT_EQ(At(32767, 0), 9);
  EXPECT_EQ(At(32768, 0), 0);
  EXPECT_EQ(OfId(-5), 0);
  EXPECT_EQ(OfId(77), 10000);
}

TEST_F(PercentTest, TakesNeighboursIntoAccountAtOnce) {
  Fill(3000);
  for (int round = 0; round < 40; ++round) {
    ASSERT_EQ(file_.Call(kGetFirst, {.room = 8}).status, 0);
    for (int i = 0; i < 50; ++i) {
      ASSERT_EQ(file_.Call(kDelete, {}).status, 0);
      ASSERT_EQ(file_.Call(kGetNext, {.room = 8}).status, 0);
    }
    const int left = 3000 - 50 * (round + 1);
    const int ordinal = left / 3;
    const int id = 3000 - left + ordinal;
    const int expected = static_cast<int>(std::lround((ordinal * 10000.0) / (left - 1)));
    EXPECT_EQ(OfId(id), expected);
    EXPECT_EQ(At(expected, 0), id);
  }
}

TEST_F(PercentTest, TellsWhatIsWrong) {
  Fill(3);
  EXPECT_EQ(At(0, 5), -kInvalidKeyNumber);
  EXPECT_EQ(Of(Number(int32_t{1}), 5), -kInvalidKeyNumber);
  EXPECT_EQ(file_.Call(kFindPercentage, {.data = Bytes(4, 0x7F), .keyNumber = -1}).status,
            kInvalidAddress);
  EXPECT_EQ(file_.Call(kFindPercentage, {.data = Bytes(1), .key = Number(int32_t{1})}).status,
            kDataBufferLength);
  const CallOut two = file_.Call(kFindPercentage, {.data = Bytes(2), .key = Number(int32_t{2})});
  EXPECT_EQ(two.status, 0);
  EXPECT_EQ(two.length, 2u);
}

}  // namespace
}  // namespace btrieve::test
