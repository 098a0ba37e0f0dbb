// Extended reads over files whose trees are several pages deep, with records that fill many pages:
// they must meet what single reads meet, in both directions, from everywhere.
#include <gtest/gtest.h>

#include <random>

#include "btrieve/pages/PagePool.h"
#include "clients/TestFile.h"
#include "kit/Descriptor.h"
#include "tests/support/Setting.h"

namespace btrieve::test {
namespace {

constexpr int kRecords = 1500;
constexpr uint16_t kName = 180;  // so few entries fill a page that inner pages come early

struct Direction {
  const char* name;
  int first, next, extended, key;
};
constexpr Direction kDirections[] = {
    {"by place", kStepFirst, kStepNext, kStepNextExtended, 0},
    {"back by place", kStepLast, kStepPrevious, kStepPreviousExtended, 0},
    {"along the unique key", kGetFirst, kGetNext, kGetNextExtended, 0},
    {"back along the unique key", kGetLast, kGetPrevious, kGetPreviousExtended, 0},
    {"along the long key", kGetFirst, kGetNext, kGetNextExtended, 1},
    {"back along the long key", kGetLast, kGetPrevious, kGetPreviousExtended, 1},
};

struct ExtendedScan : testing::Test {
  ExtendedScan()
      : file_(CreateBlock(
            {.recordLength = 4 + kName, .flags = 1},
            {{.flags = 0x102, .type = 1}, {.position = 5, .length = kName, .flags = 0x103}})) {
    file_.Call(kBegin, {});
    for (int32_t id = 0; id < kRecords; ++id) {
      const int32_t scattered = static_cast<int32_t>(id * 2654435761u >> 4);
      EXPECT_EQ(file_.Insert(Record(scattered, id % 311)), 0);
      if (id % 5 == 0) {
        EXPECT_EQ(file_.Call(kDelete, {}).status, 0);
      }
    }
    file_.Call(kEnd, {});
  }

  // Every fiftieth goes on in further pages of the file, some in many.
  Bytes Record(int32_t id, int name) {
    const size_t tail = random_() % 50 == 0 ? random_() % 60000 : random_() % 40;
    return Number(id) + Padded("name " + std::to_string(name), kName) + Bytes(tail, '.') +
           Number(id);
  }

  // A read into too little room moves the cursor all the same.
  CallOut Read(int operation, int key, int block = 0) {
    CallOut out = file_.Call(operation, {.room = 200, .keyNumber = key}, block);
    if (out.status == kDataBufferLength) out.status = 0;
    return out;
  }

  std::vector<int32_t> Single(const Direction& to) {
    std::vector<int32_t> ids;
    CallOut out = Read(to.first, to.key);
    for (; out.status == 0; out = Read(to.next, to.key)) {
      ids.push_back(NumberAt<int32_t>(out.data, 0));
    }
    EXPECT_EQ(out.status, 9);
    return ids;
  }

  // From record number `skip` on; each record must come whole.
  std::vector<int32_t> Extended(const Direction& to, int skip) {
    Read(to.first, to.key);
    for (int i = 0; i < skip; ++i) Read(to.next, to.key);
    std::vector<int32_t> ids;
    Descriptor descriptor{.signature = "UC", .wanted = 97, .fields = {{65535, 0}}};
    int status = 0;
    while (status == 0 || status == kDataBufferLength) {
      const CallOut out = file_.Call(
          to.extended, {.data = DescriptorBytes(descriptor), .room = 65535, .keyNumber = to.key});
      status = out.status;
      descriptor.signature = "EG";
      TakeReply(out.Returned(), ids);
    }
    EXPECT_EQ(status, 9);
    return ids;
  }

  void TakeReply(const Bytes& reply, std::vector<int32_t>& ids) {
    size_t at = 2;
    for (int left = NumberAt<uint16_t>(reply, 0); left > 0; --left) {
      const size_t length = NumberAt<uint16_t>(reply, at);
      ids.push_back(NumberAt<int32_t>(reply, at + 6));
      EXPECT_EQ(NumberAt<int32_t>(reply, at + 6 + length - 4), ids.back());
      at += 6 + length;
    }
    EXPECT_EQ(at, reply.size());
  }

  std::mt19937 random_{7};
  TestFile file_;
};

TEST_F(ExtendedScan, MeetsWhatSingleReadsMeet) {
  for (const Direction& to : kDirections) {
    SCOPED_TRACE(to.name);
    const std::vector<int32_t> all = Single(to);
    ASSERT_EQ(all.size(), size_t{kRecords * 4 / 5});
    for (const int skip : {0, 601, kRecords * 4 / 5 - 1}) {
      const std::vector<int32_t> rest(all.begin() + skip, all.end());
      EXPECT_EQ(Extended(to, skip), rest) << "from " << skip;
    }
  }
}

TEST_F(ExtendedScan, GoesTogetherWithWrites) {
  const int rounds = static_cast<int>(qrn::test::Setting("QRN_SCAN_ROUNDS", 20));
  for (const int begin : {0, 19, 1019}) {
    SCOPED_TRACE(begin);
    if (begin != 0) file_.Call(begin, {});
    for (int round = 0; round < rounds; ++round) {
      const Direction& to = kDirections[round % std::size(kDirections)];
      for (int i = 0; i < 4; ++i) {
        Read(kStepFirst, 0);
        ASSERT_EQ(file_.Call(kDelete, {}).status, 0);
        ASSERT_EQ(file_.Insert(Record(-1 - begin * 1000 - round * 4 - i, round)), 0);
      }
      EXPECT_EQ(Extended(to, 0), Single(to));
    }
    const int end = begin != 0 ? file_.Call(kEnd, {}).status : 0;
    ASSERT_EQ(end, 0);
  }
}

// One record a page, more of them than may be held.
TEST(HeldPages, AreBoundedAndLetGo) {
  constexpr int kMany = static_cast<int>(PagePool::kMostHeld) + 500;
  TestFile file(CreateBlock({.recordLength = 3500}, {{.flags = 0x102, .type = 1}}));
  file.Call(kBegin, {});
  Bytes record(3500, 'x');
  for (int32_t id = 0; id < kMany; ++id) {
    const int32_t scattered = static_cast<int32_t>(id * 2654435761u);
    std::memcpy(record.data(), &scattered, sizeof scattered);
    ASSERT_EQ(file.Insert(record), 0);
  }
  EXPECT_EQ(PagePool::HeldByAll(), 0u);
  ASSERT_EQ(file.Call(kEnd, {}).status, 0);
  int met = 0;
  for (int operation = kGetFirst; file.Call(operation, {.room = 3500}).status == 0; ++met) {
    operation = kGetNext;
    ASSERT_LE(PagePool::HeldByAll(), PagePool::kMostHeld);
  }
  EXPECT_EQ(met, kMany);
  EXPECT_GT(PagePool::HeldByAll(), 0u);
  ASSERT_EQ(file.Close(), 0);
  EXPECT_EQ(PagePool::HeldByAll(), 0u);
}

}  // namespace
}  // namespace btrieve::test
