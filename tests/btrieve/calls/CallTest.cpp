// Operation numbers, position blocks, buffers and lengths.
#include <gtest/gtest.h>

#include "clients/People.h"
#include "clients/TestFile.h"

namespace btrieve::test {
namespace {

// 8 bytes: i32 key 0, 4 more.
Bytes SmallBlock(uint16_t flags = 0) {
  return CreateBlock({.recordLength = 8, .flags = flags}, {{.flags = 0x102, .type = 1}});
}

Bytes Small(int32_t id, const char* rest = "abcd") { return Number(id) + Padded(rest, 4); }

struct NumberCase {
  int operation;
  Status status;
};

TEST(Call, KnowsItsOperations) {
  const NumberCase kUnknown[] = {
      {16, 1},   {17, 1},    {18, 1},    {41, 1},    {42, 1},   {43, 1},   {46, 1},   {49, 1},
      {50, 1},   {54, 1},    {64, 1},    {77, 1},    {79, 1},   {99, 1},   {500, 1},  {505, 1},
      {555, 1},  {606, 1},   {999, 1},   {1000, 1},  {1005, 1}, {1018, 1}, {1020, 1}, {2019, 1},
      {1069, 1}, {17028, 1}, {17030, 1}, {32767, 1}, {65535, 1}};
  TestFile file(SmallBlock());
  for (const auto& row : kUnknown) {
    EXPECT_EQ(file.Call(row.operation, {.room = 64}).status, row.status) << row.operation;
  }
}

TEST(Call, BeginsEveryKindOfTransaction) {
  ThisProcess process;
  for (const int bias : {0, 100, 200, 300, 400, 1000, 1100, 1400, 1500, 1900}) {
    EXPECT_EQ(process.Call(kBegin + bias, 0, {}).status, 0) << bias;
    EXPECT_EQ(process.Call(kAbort, 0, {}).status, 0) << bias;
  }
}

TEST(Call, WorksWithoutPointersItDoesNotNeed) {
  TestFile file(SmallBlock());
  ASSERT_EQ(file.Insert(Small(1), 0), 0);
  const CallIn none{.noBlock = true, .noData = true, .noLength = true, .noKey = true};
  for (const int operation : {kBegin + 0, kEnd + 0, kBegin + kConcurrent, kAbort + 0}) {
    EXPECT_EQ(file.Call(operation, none).status, 0) << operation;
  }
  EXPECT_EQ(file.Call(kDelete, {.noData = true, .noLength = true, .noKey = true}).status, 0);
  EXPECT_EQ(file.Call(kReset, none).status, 0);
  EXPECT_EQ(file.Call(kGetFirst, {.room = 8}).status, kNotOpen);
}

TEST(Call, NullPointersAreAStatusEverywhere) {
  for (int operation = 0; operation < 100; ++operation) {
    TestFile file(SmallBlock());
    ASSERT_EQ(file.Insert(Small(1), 0), 0);
    for (int missing = 1; missing < 16; ++missing) {
      const CallIn in{.room = 64,
                      .noBlock = (missing & 1) != 0,
                      .noData = (missing & 2) != 0,
                      .noLength = (missing & 4) != 0,
                      .noKey = (missing & 8) != 0};
      const Status status = file.Call(operation, in).status;
      EXPECT_TRUE(status >= 0 && status <= 175) << operation << " without " << missing;
    }
  }
}

TEST(Call, BlocksThatNothingOpenedAreNotOpen) {
  TestFile file(SmallBlock());
  const Bytes open(file.Process().Block(0), file.Process().Block(0) + 128);
  const int kCursorCalls[] = {1,  2,  3,  4,  5,  6,  12, 15, 22, 23, 24,
                              27, 29, 30, 31, 32, 33, 36, 40, 44, 45, 55};
  const auto allNotOpen = [&](const char* what) {
    for (const int operation : kCursorCalls) {
      EXPECT_EQ(file.Call(operation, {.room = 64}, 1).status, kNotOpen) << what << operation;
    }
  };
  allNotOpen("zeroed ");
  std::fill_n(file.Process().Block(1), 128, uint8_t{0xCC});
  allNotOpen("filled ");
  std::copy(open.begin(), open.end(), file.Process().Block(1));
  ASSERT_EQ(file.Close(), 0);
  allNotOpen("closed ");
  EXPECT_EQ(file.Close(), kNotOpen);
  ASSERT_EQ(file.Open(), 0);
  allNotOpen("closed, another opened since ");
}

// One bit in the first bytes, where the handle stands.
TEST(Call, ChangedBlocksAreNotOpen) {
  TestFile file(SmallBlock());
  uint8_t* block = file.Process().Block(0);
  const Bytes good(block, block + 128);
  int refused = 0;
  for (int bit = 0; bit < 128 * 8; ++bit) {
    block[bit / 8] ^= static_cast<uint8_t>(1 << bit % 8);
    const Status status = file.Call(kStat, {.room = 64}).status;
    EXPECT_TRUE(status == 0 || status == kNotOpen) << bit;
    refused += status == kNotOpen;
    std::copy(good.begin(), good.end(), block);
  }
  EXPECT_GE(refused, 64);
}

TEST(Call, KeyBufferMustHoldTheKey) {
  TestFile file(SmallBlock());
  ASSERT_EQ(file.Insert(Small(1), 0), 0);
  for (const int operation : {2, 3, 5, 6, 7, 8, 9, 10, 11, 12, 13, 44, 45, 55, 62}) {
    const CallIn in{.data = Small(9), .key = Number(int32_t{1}), .keyLength = 3};
    EXPECT_EQ(file.Call(operation, in).status, kKeyBufferTooShort) << operation;
  }
  EXPECT_EQ(file.Walk(0), ToHex(Small(1)));
  const CallOut exact = file.Call(kGetFirst, {.room = 8, .keyLength = 4});
  EXPECT_EQ(exact.status, 0);
  EXPECT_EQ(exact.key, Number(int32_t{1}));
  const CallOut longer = file.Call(kGetFirst, {.room = 8, .keyLength = 5});
  EXPECT_EQ(longer.key, Number(int32_t{1}) + Bytes{kUnused});
}

TEST(Call, KeyBufferMayBeMissingWhereNothingIsLookedFor) {
  TestFile file(SmallBlock());
  ASSERT_EQ(file.Call(kInsert, {.data = Small(1), .noKey = true}).status, 0);
  EXPECT_EQ(file.Call(kGetFirst, {.room = 8, .noKey = true}).status, 0);
  EXPECT_EQ(file.Call(kGetNext, {.room = 8, .noKey = true}).status, kEndOfFile);
  for (const int operation : {5, 8, 9, 10, 11}) {
    EXPECT_EQ(file.Call(operation, {.room = 8, .noKey = true}).status, kKeyBufferTooShort);
  }
}

TEST(Call, FailingCallsLeaveBuffersAndLength) {
  TestFile file(SmallBlock());
  const CallIn in{.data = Bytes(64, 0x11), .key = Bytes(255, 0x22)};
  for (const int operation : {5, 6, 7, 8, 9, 10, 11, 12, 13, 22, 24, 33, 34, 35, 36, 37, 44, 555}) {
    const CallOut out = file.Call(operation, in);
    EXPECT_NE(out.status, 0) << operation;
    EXPECT_FALSE(out.dataTouched) << operation;
    EXPECT_FALSE(out.keyTouched) << operation;
    EXPECT_EQ(out.length, 64u) << operation;
  }
}

TEST(Call, PositionNeedsFourBytes) {
  TestFile file(SmallBlock());
  ASSERT_EQ(file.Insert(Small(1), 0), 0);
  EXPECT_EQ(file.Call(kGetPosition, {.room = 3}).status, kDataBufferLength);
  const CallOut out = file.Call(kGetPosition, {.room = 10});
  EXPECT_EQ(out.length, 4u);
  const auto position = NumberAt<uint32_t>(out.data, 0);
  EXPECT_TRUE(position > 0 && position < 0x80000000u) << position;
  EXPECT_EQ(file.Call(kGetDirect, {.data = Bytes(3)}).status, kDataBufferLength);
  for (const uint32_t dead : {0u, position + 1, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
    EXPECT_EQ(file.Call(kGetDirect, {.data = Number(dead), .room = 8}).status, kInvalidAddress);
  }
}

TEST(Call, StatWritesNothingIntoTheKeyBuffer) {
  TestFile file(SmallBlock());
  const CallOut out = file.Call(kStat, {.room = 100, .key = Bytes(64, 0x44), .keyLength = 64});
  EXPECT_EQ(out.status, 0);
  EXPECT_EQ(out.length, 32u);
  EXPECT_FALSE(out.keyTouched);
  EXPECT_EQ(file.Call(kStat, {.room = 31}).status, kDataBufferLength);
}

TEST(Call, TellsItsVersion) {
  ThisProcess process;
  EXPECT_EQ(process.Call(kVersion, 0, {.room = 4, .noBlock = true}).status, kDataBufferLength);
  for (const size_t room : {5u, 10u, 15u}) {
    const CallOut out = process.Call(kVersion, 0, {.room = room, .noBlock = true});
    EXPECT_EQ(out.status, 0);
    EXPECT_EQ(out.length, 5u);
    EXPECT_EQ(out.data[4], 'W');
  }
}

TEST(Call, LoginLooksAtTheFormOnly) {
  ThisProcess process;
  const auto login = [&](const char* uri, int keyNumber) {
    return process.Call(kLogin, 0, {.key = PathKey(uri), .keyNumber = keyNumber, .noBlock = true})
        .status;
  };
  EXPECT_EQ(login("btrv://user@host/base?pwd=x", 0), 0);
  EXPECT_EQ(login("btrv://user@host/base", 1), 0);
  EXPECT_EQ(login("http://host", 0), kWrongUri);
  EXPECT_EQ(login("", 0), kWrongUri);
}

}  // namespace
}  // namespace btrieve::test
