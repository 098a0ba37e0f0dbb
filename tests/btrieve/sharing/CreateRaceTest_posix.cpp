// Environment: QRN_RACE_ROUNDS, how often two processes start at once on a file that is not there
// (60).
//
// Two forms that start for the first time: each finds no file, creates it, opens it and inserts.
#include <gtest/gtest.h>

#include "clients/Remote.h"
#include "kit/DamagedFile.h"
#include "kit/DiskTap.h"
#include "tests/support/Setting.h"

namespace btrieve::test {
namespace {

constexpr int32_t kFirst = 11, kSecond = 22;

struct Start {
  Status found, created, opened, inserted;

  std::string Text() const {
    return std::to_string(found) + " " + std::to_string(created) + " " + std::to_string(opened) +
           " " + std::to_string(inserted);
  }
};

struct FirstStart : testing::TestWithParam<int> {
  // Everything is sent at once, so that nothing but the processes' own speed orders the calls.
  void Begin(OtherProcess& form, const std::string& path, int32_t id) {
    form.Begin(kOpen, 0, {.key = PathKey(path)});
    form.Begin(kCreate, 1, {.data = PairBlock(), .key = PathKey(path), .keyNumber = GetParam()});
    form.Begin(kOpen, 2, {.key = PathKey(path)});
    form.Begin(kInsert, 2, {.data = Number(id) + Number(0), .keyNumber = -1});
  }
  static Start Finish(OtherProcess& form) {
    Start start{};
    for (Status* status : {&start.found, &start.created, &start.opened, &start.inserted}) {
      *status = form.Finish().status;
    }
    return start;
  }
  bool Holds(const std::string& path, int32_t id) {
    process_.Call(kOpen, 0, {.key = PathKey(path)});
    const Status found = process_.Call(kGetEqual, 0, {.room = 8, .key = Number(id)}).status;
    process_.Call(kClose, 0, {});
    return found == 0;
  }

  Folder folder_;
  ThisProcess process_;
};

// Whatever the order: who opened the file and inserted, has the record in the file that stays.
TEST_P(FirstStart, LosesNoAcknowledgedInsert) {
  OtherProcess first, second;
  int together = 0;
  const uint32_t rounds = qrn::test::Setting("QRN_RACE_ROUNDS", 60);
  for (uint32_t round = 0; round < rounds; ++round) {
    const std::string path = folder_.Path("r" + std::to_string(round) + ".dat");
    Begin(first, path, kFirst);
    Begin(second, path, kSecond);
    const Start one = Finish(first), two = Finish(second);
    const std::string told = "first " + one.Text() + ", second " + two.Text();
    const int created = (one.created == 0) + (two.created == 0);
    together += one.found == kFileNotFound && two.found == kFileNotFound;
    ASSERT_GE(created, 1) << told;
    ASSERT_TRUE(GetParam() >= 0 || created == 1) << told;
    for (const Start& start : {one, two}) {
      const Status refused = GetParam() < 0 ? kFileExists : kCreateError;
      ASSERT_TRUE(start.created == 0 || start.created == refused) << told;
      ASSERT_EQ(start.opened, 0) << told;
      ASSERT_EQ(start.inserted, 0) << told;
    }
    for (OtherProcess* form : {&first, &second}) form->Call(kReset, 0, {});
    ASSERT_TRUE(Holds(path, kFirst)) << told;
    ASSERT_TRUE(Holds(path, kSecond)) << told;
  }
  std::printf("both found no file in %d of %u rounds\n", together, rounds);
  EXPECT_GT(together, 0) << "they never met";
  for (const auto& entry : std::filesystem::directory_iterator(folder_.Root())) {
    EXPECT_NE(entry.path().filename().string()[0], '~') << "a file made aside is left";
  }
}

INSTANTIATE_TEST_SUITE_P(RefusingAndReplacing, FirstStart, testing::Values(-1, 0));

// Who opens the file that is about to be replaced, where the system lets him in, and dies, leaves a
// log.
struct LeavesALog : DiskListener {
  explicit LeavesALog(Bytes left) : log(std::move(left)) {}
  int Allow(const DiskCall& call) override {
    if (call.kind == DiskKind::Rename && call.to.ends_with("a.dat"))
      WriteBytes(call.to + "-wal", log);
    return 0;
  }
  Bytes log;
};

// A log whose file has gone holds pages of that file.
TEST(CreatePlace, TakesNoLogThatStandsThere) {
  Folder folder;
  ThisProcess process;
  const std::string path = folder.Path("a.dat");
  OtherProcess other;
  ASSERT_EQ(other.Call(kCreate, 1, {.data = PairBlock(), .key = PathKey(path)}).status, 0);
  ASSERT_EQ(other.Call(kOpen, 0, {.key = PathKey(path)}).status, 0);
  ASSERT_EQ(other.Call(kInsert, 0, {.data = Number(1) + Number(0), .keyNumber = -1}).status, 0);
  other.Kill();
  LeavesALog again(ReadBytes(path + "-wal"));
  ASSERT_FALSE(again.log.empty());
  const DiskTap tap(folder.Root(), again);
  for (const bool replaces : {false, true}) {
    SCOPED_TRACE(replaces);
    if (!replaces) std::filesystem::remove(path);
    ASSERT_EQ(process.Call(kCreate, 1, {.data = PairBlock(), .key = PathKey(path)}).status, 0);
    ASSERT_EQ(process.Call(kOpen, 0, {.key = PathKey(path)}).status, 0);
    EXPECT_EQ(process.Call(kGetFirst, 0, {.room = 8}).status, kEndOfFile);
    ASSERT_EQ(process.Call(kClose, 0, {}).status, 0);
  }
}

}  // namespace
}  // namespace btrieve::test
