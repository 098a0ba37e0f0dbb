// When logs are brought to stable storage, and by whom; what a sync under way holds up.
#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <fstream>
#include <set>
#include <thread>

#include "btrieve/system/HostFile.h"
#include "clients/Remote.h"
#include "clients/TestFile.h"
#include "kit/DiskTap.h"

namespace btrieve::test {
namespace {

using std::chrono::milliseconds;

// Counts the syncs of logs in this process. Those of the background can be held up or made to fail.
class Syncs : qrn::test::Pinned {
 public:
  Syncs() {
    count_ = background_ = 0;
    holdUp_ = fail_ = false;
    calls_ = std::this_thread::get_id();
    SetSyncHook(Note);
  }
  ~Syncs() { SetSyncHook(nullptr); }

  int Count() const { return count_; }
  int InBackground() const { return background_; }
  void HoldUp(bool hold) { holdUp_ = hold; }
  void Fail(bool fail) { fail_ = fail; }
  // False when none comes in time.
  bool WaitForBackground(int count) const {
    for (int tries = 0; tries < 500 && background_ < count; ++tries) {
      std::this_thread::sleep_for(milliseconds(10));
    }
    return background_ >= count;
  }

 private:
  static bool Note(const std::string& path) {
    if (!path.ends_with("-wal")) return true;
    ++count_;
    if (std::this_thread::get_id() == calls_) return true;
    ++background_;
    if (holdUp_) std::this_thread::sleep_for(milliseconds(300));
    return !fail_;
  }

  static inline std::atomic<int> count_, background_;
  static inline std::atomic<bool> holdUp_, fail_;
  static inline std::thread::id calls_;
};

// Reads a copy made without the log.
std::string WalkOfCopy(TestFile& file) {
  const std::string copy = file.Path("copy.dat");
  std::filesystem::copy_file(file.Path(), copy, std::filesystem::copy_options::overwrite_existing);
  EXPECT_EQ(file.Call(kOpen, {.key = PathKey(copy)}).status, 0);
  const std::string walk = file.Walk(0);
  EXPECT_EQ(file.Close(), 0);
  return walk;
}

TEST(BackgroundSync, HoldsNoClosedFileOpen) {
  const struct {
    const char* name;
    int operation;
  } kRows[] = {{"Close", kClose}, {"Reset", kReset}, {"Stop", kStop}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.name);
    TestFile file(PairBlock());
    OtherProcess other;
    Syncs syncs;
    syncs.HoldUp(true);
    ASSERT_EQ(file.Insert(Pair(1)), 0);
    ASSERT_TRUE(syncs.WaitForBackground(1));
    EXPECT_EQ(file.Call(row.operation, {}).status, 0);
    EXPECT_FALSE(FileExists(file.Path() + "-wal"));
    EXPECT_FALSE(FileExists(file.Path() + "-shm"));
    const CallIn alone{.key = PathKey(file.Path()), .keyNumber = -4};
    EXPECT_EQ(other.Call(kOpen, 0, alone).status, 0) << "alone, in another process";
    EXPECT_EQ(other.Call(kClose, 0, {}).status, 0);
    EXPECT_EQ(WalkOfCopy(file), ToHex(Pair(1)));
    EXPECT_EQ(file.Create(PairBlock()), 0) << "over it";
  }
}

TEST(BackgroundSync, OfAFileClosedInATransactionEndsBeforeItsEnd) {
  TestFile file(PairBlock());
  ASSERT_EQ(file.Insert(Pair(1)), 0);
  Syncs syncs;
  syncs.HoldUp(true);
  ASSERT_EQ(file.Call(kBegin, {}).status, 0);
  ASSERT_EQ(file.Insert(Pair(2)), 0);
  ASSERT_TRUE(syncs.WaitForBackground(1));
  ASSERT_EQ(file.Close(), 0);
  ASSERT_EQ(file.Call(kEnd, {}).status, 0);
  EXPECT_FALSE(FileExists(file.Path() + "-wal"));
  EXPECT_EQ(file.Create(PairBlock()), 0);
}

TEST(BackgroundSync, ThatFailsIsMadeUpFor) {
  TestFile file(PairBlock());
  Syncs syncs;
  syncs.Fail(true);
  ASSERT_EQ(file.Insert(Pair(1)), 0);
  ASSERT_TRUE(syncs.WaitForBackground(2)) << "tried again";
  const int others = syncs.Count() - syncs.InBackground();
  EXPECT_EQ(file.Close(), 0);
  EXPECT_EQ(syncs.Count() - syncs.InBackground(), others + 1) << "by Close itself";
}

// What was brought to stable storage, by the paths that the files had at that moment.
class Brought : public DiskListener {
 public:
  void Done(const DiskCall& call) override {
    if (call.kind == DiskKind::Sync || call.kind == DiskKind::SyncFolder) paths_.insert(call.path);
  }
  bool Has(const std::string& path) const { return paths_.contains(path); }

 private:
  std::set<std::string> paths_;
};

struct MovedFolder : testing::TestWithParam<bool> {
  std::string Path(const char* name) const { return folder_.Root().string() + "/" + name; }
  Status Call(int operation, const Bytes& data = {}) {
    return process_.Call(operation, 0, {.data = data, .keyNumber = -1}).status;
  }
  Status InsertInTransaction(int32_t id) {
    EXPECT_EQ(Call(kBegin), 0);
    EXPECT_EQ(Call(kInsert, Pair(id)), 0);
    return Call(kEnd);
  }
  void Open(const char* name) {
    EXPECT_EQ(process_.Call(kOpen, 0, {.key = PathKey(Path(name))}).status, 0);
  }

  Folder folder_;
  ThisProcess process_;
};

// The log's name leads nowhere then, or to another file's log.
TEST_P(MovedFolder, EndBringsTheOpenFilesLogToStableStorage) {
  std::filesystem::create_directory(Path("old"));
  const CallIn create{.data = PairBlock(), .key = PathKey(Path("old/t.dat"))};
  ASSERT_EQ(process_.Call(kCreate, 0, create).status, 0);
  Open("old/t.dat");
  ASSERT_EQ(Call(kInsert, Pair(1)), 0);
  std::filesystem::rename(Path("old"), Path("new"));
  if (GetParam()) {
    std::filesystem::create_directory(Path("old"));
    std::ofstream(Path("old/t.dat-wal")) << "another file's log";
  }
  {
    Brought brought;
    const DiskTap tap(folder_.Root(), brought);
    EXPECT_EQ(InsertInTransaction(2), 0);
    EXPECT_TRUE(brought.Has(Path("new/t.dat-wal")));
  }
  EXPECT_EQ(Call(kClose), 0);
  Open("new/t.dat");
  EXPECT_EQ(NumberAt<uint32_t>(process_.Call(kStat, 0, {.room = 500}).data, 6), 2u);
}

INSTANTIATE_TEST_SUITE_P(ItsNameIsFreeOrTaken, MovedFolder, testing::Bool());

TEST(ProcessEnd, BringsTheLastOperationToStableStorage) {
  TestFile file(PairBlock());
  OtherProcess worker({"end", file.Path(), ToHex(Pair(7))});
  std::string said;
  char letter;
  while (read(worker.Output(), &letter, 1) == 1) said += letter;
  EXPECT_EQ(said, ".S");
  EXPECT_EQ(file.Walk(0), ToHex(Pair(7)));
}

TEST(DeadProcess, ItsLogIsMadeStableByTheNextOpen) {
  TestFile file(PairBlock());
  ASSERT_EQ(file.Close(), 0);
  {
    OtherProcess other;
    ASSERT_EQ(other.Call(kOpen, 0, {.key = PathKey(file.Path())}).status, 0);
    ASSERT_EQ(other.Call(kInsert, 0, {.data = Pair(1)}).status, 0);
  }
  const Syncs syncs;
  ASSERT_EQ(file.Open(), 0);
  EXPECT_EQ(syncs.Count(), 1);
  ASSERT_EQ(file.Close(), 0);
  ASSERT_EQ(file.Open(), 0);
  EXPECT_EQ(syncs.Count(), 1) << "nothing was left over";
  EXPECT_EQ(file.Walk(0), ToHex(Pair(1)));
}

// A process that only looks on need not sync what a living one commits and syncs, but cannot know
// who is dead: it waits until all are quiet.
TEST(DeadProcess, ItsCommitsAreMadeStableByWhoHasTheFileOpen) {
  TestFile file(PairBlock());
  OtherProcess other;
  ASSERT_EQ(other.Call(kOpen, 0, {.key = PathKey(file.Path())}).status, 0);
  const Syncs syncs;
  for (int32_t id = 0; id < 60; ++id) {
    ASSERT_EQ(other.Call(kInsert, 0, {.data = Pair(id)}).status, 0);
    std::this_thread::sleep_for(milliseconds(25));
  }
  EXPECT_EQ(syncs.Count(), 0) << "while the other process goes on";
  other.Kill();
  EXPECT_TRUE(syncs.WaitForBackground(1));
  std::this_thread::sleep_for(milliseconds(1500));
  EXPECT_EQ(syncs.Count(), 1) << "once is enough";
}

}  // namespace
}  // namespace btrieve::test
