// The log stays short, whoever reads beside a process that writes without a pause.
#include <unistd.h>

#include "clients/Remote.h"
#include "clients/TestFile.h"
#include "tests/support/Test.h"

namespace btrieve::test {
namespace {

// Bytes; some 250 MB without what keeps it short. On a busy machine readers leave late.
constexpr uint64_t kLongestLog = 128u << 20;
constexpr int32_t kRecords = 15000;

Bytes Row(int32_t id) { return Padded("", 12, 'x') + Number(id); }

struct LogLength : testing::Test {
  void SetUp() override {
    file_.Make(CreateBlock({.recordLength = 16}, {{.position = 13, .flags = 0x102, .type = 1},
                                                  {.position = 1, .length = 4, .flags = 0x103}}));
    for (int32_t id = -100; id < 0; ++id) ASSERT_EQ(file_.Insert(Row(id)), 0);
  }

  uint64_t LogSize() const {
    std::error_code none;
    const auto size = std::filesystem::file_size(file_.Path() + "-wal", none);
    return none ? 0 : size;
  }

  // Some 250 MB of log in all.
  void Write() {
    uint64_t longest = 0;
    for (int32_t id = 0; id < kRecords; ++id) {
      ASSERT_EQ(file_.Insert(Row(id)), 0);
      if (id % 50 == 0) longest = std::max(longest, LogSize());
    }
    EXPECT_LT(longest, kLongestLog);
    RecordProperty("longest", std::to_string(longest));
  }

  TestFile file_;
  OtherProcess other_;
};

TEST_F(LogLength, BesideAnIdleCursor) {
  ASSERT_EQ(other_.Call(kOpen, 0, {.key = PathKey(file_.Path())}).status, 0);
  ASSERT_EQ(other_.Call(kGetFirst, 0, {.room = 16}).status, 0);
  Write();
  EXPECT_EQ(other_.Call(kGetNext, 0, {.room = 16}).data, Row(-99)) << "it stands where it stood";
}

TEST_F(LogLength, BesideAReaderWithoutPause) {
  OtherProcess reader({"read", file_.Path()});
  char letter = 0;
  ASSERT_EQ(read(reader.Output(), &letter, 1), 1);
  ASSERT_EQ(letter, '.');
  Write();
}

TEST_F(LogLength, BesideAWaiterForALock) {
  ASSERT_EQ(file_.Call(kGetFirst + 100, {.room = 16}).status, 0);
  ASSERT_EQ(other_.Call(kOpen, 0, {.key = PathKey(file_.Path())}).status, 0);
  other_.Begin(kGetFirst + 100, 0, {.room = 16});
  Write();
  EXPECT_EQ(other_.Finish().status, kRecordInUse);
}

}  // namespace
}  // namespace btrieve::test
