// What a process leaves that dies in the End of a transaction over two files, and how it is settled
// when that does not go smoothly.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>

#include "btrieve/files/Intents.h"
#include "btrieve/server/LinkFile.h"
#include "btrieve/session/Session.h"
#include "clients/Remote.h"
#include "kit/DamagedFile.h"
#include "kit/FaultyDisk.h"
#include "kit/OldSite.h"
#include "kit/Plan.h"

namespace btrieve::test {
namespace {

constexpr uint32_t kSeed = 4711;
constexpr int kLeader = 0, kFollower = 1;  // the files of the plan

// The follower is open here when a worker dies that has opened both.
struct Settlement : testing::Test {
  static void SetUpTestSuite();

  // Its transaction was decided, or not.
  void Leave(bool decided) { Leave(killAt_[decided]); }
  void Leave(int killAt);
  static const PlanState& Left(bool decided) { return decided ? after_ : before_; }
  std::string Path(int file) const { return folder_->Path(file == kLeader ? "a.dat" : "b.dat"); }
  Status Open(int file) { return process_.Call(kOpen, file, {.key = PathKey(Path(file))}).status; }
  DataFile& File(int file) {
    FileIdentity identity;
    EXPECT_EQ(Identify(Path(file), identity), kOk);
    return *Session::Get().FindFile(identity);
  }
  uint32_t IntentsIn(int file) {
    File(file).Base().EnterRead();
    return File(file).Base().Counts().intents;
  }
  Status Insert(int file) {
    const Bytes record = Number(kBeyondPlan) + Number(int32_t{1}) + Padded("text 1", 16);
    return process_.Call(kInsert, file, {.data = record, .keyNumber = -1}).status;
  }
  std::string Judge(const PlanState& expected) {
    PlanState found;
    const std::string fault = ReadPlanFiles(process_, found);
    return fault.empty() ? Differences(found, expected) : fault;
  }
  void MeetFault(bool decided, bool reads, FaultyDisk& disk);

  static inline FileImages images_;
  static inline PlanState before_, after_;
  static inline uint32_t number_ = 20;
  static inline int killAt_[2];
  std::optional<Folder> folder_;
  ThisProcess process_;
};

// Kills the worker at each write of a step in turn, and keeps the first moments of both kinds.
void Settlement::SetUpTestSuite() {
  struct Finder : Settlement {
    void TestBody() override {}
    using Settlement::IntentsIn;
    using Settlement::Leave;
    bool IsDecided() { return JudgeImages(ImagesOf(*folder_), after_).empty(); }
  };
  {
    const Folder folder;
    ASSERT_TRUE(BeginPlan({folder.Path("a.dat"), folder.Path("b.dat")}, kSeed, number_, before_));
    images_ = ImagesOf(folder);
  }
  PlanStep step = PlanOf(kSeed, number_, before_);
  while (step.begin == 0) step = PlanOf(kSeed, ++number_, before_);
  ASSERT_EQ(step.operations.front().file, kLeader);
  after_ = before_;
  ApplyStep(step, after_);
  killAt_[false] = killAt_[true] = 0;
  for (int killAt = 1; killAt_[true] == 0; ++killAt) {
    ASSERT_LT(killAt, 100);
    Finder finder;
    finder.Leave(killAt);
    if (finder.IntentsIn(kFollower) == 0) continue;
    int& found = killAt_[finder.IsDecided()];
    if (found == 0) found = killAt;
  }
}

void Settlement::Leave(int killAt) {
  process_.Call(kReset, 0, {});
  folder_.emplace();
  WriteImages(images_, *folder_);
  ASSERT_EQ(Open(kFollower), 0);
  OtherProcess worker({"plan", std::to_string(kSeed), std::to_string(number_), "1",
                       std::to_string(killAt), Path(kLeader), Path(kFollower)});
  for (char letter; read(worker.Output(), &letter, 1) == 1;) ASSERT_NE(letter, 'E');
}

void Settlement::MeetFault(bool decided, bool reads, FaultyDisk& disk) {
  Leave(decided);
  PlanState expected = Left(decided);
  {
    const DiskTap tap(folder_->Root(), disk);
    const Status status =
        reads ? process_.Call(kStepFirst, kFollower, {.room = 24}).status : Insert(kFollower);
    EXPECT_FALSE(File(kFollower).Base().IsWriting());
    if (status == 0 && !reads) expected[kFollower][kBeyondPlan] = 1;
    disk.Mend();
    EXPECT_EQ(process_.Call(kStepFirst, kFollower, {.room = 24}).status, 0);
  }
  EXPECT_EQ(IntentsIn(kFollower), 0u);
  ASSERT_EQ(Open(kLeader), 0);
  EXPECT_EQ(Judge(expected), "");
}

// The call that meets the fault may fail. It has settled nothing by half, keeps nobody waiting, and
// the next one does what it could not.
TEST_F(Settlement, ThatFailsIsMadeUpForByTheNextCall) {
  struct Row {
    const char* what;
    bool decided, reads;
    Fault fault;
  };
  const Fault write{"write", Writes, EIO, false}, read{"read", Reads, EIO, false};
  const Row rows[] = {
      {"an insert meets an undecided one", false, false, read},
      {"a read meets a decided one", true, true, write},
      {"an insert meets a decided one", true, false, read},
  };
  for (const Row& row : rows) {
    bool met = true;
    for (int at = 1; met && !HasFailure(); at += at < 6 ? 1 : 5) {
      SCOPED_TRACE(std::string(row.what) + " " + std::to_string(at));
      FaultyDisk disk(row.fault, at);
      MeetFault(row.decided, row.reads, disk);
      met = disk.Met();
      EXPECT_TRUE(met || at > 2);
    }
  }
}

TEST_F(Settlement, ThatIsUndoneLeavesTheCountOfIntents) {
  Leave(true);
  DataFile& file = File(kFollower);
  for (const int by : {-1, +1}) {
    file.Base().BeginWrite();
    const Intent intent = ReadIntents(file).at(0);
    by < 0 ? (void)RemoveIntent(file, intent.number) : AddIntent(file, {Bytes(16, 1), "c.dat"});
    file.Base().RollbackWrite();
    EXPECT_EQ(IntentsIn(kFollower), 1u);
  }
}

// The leader opens, and tells the follower what it has to once that can be used again.
TEST_F(Settlement, WaitsForAFollowerThatCannotBeUsed) {
  Leave(true);
  const FileImages left = ImagesOf(*folder_);
  folder_.emplace();
  process_.Call(kReset, 0, {});
  WriteImages(left, *folder_);
  {
    const Connection connection(SqliteName(Path(kFollower)), SQLITE_OPEN_READWRITE);
    connection.Run("DELETE FROM head");
  }
  ASSERT_EQ(Open(kLeader), 0);
  EXPECT_EQ(process_.Call(kStepFirst, kLeader, {.room = 24}).status, 0);
  EXPECT_EQ(Open(kFollower), kIoError);
  process_.Call(kReset, 0, {});
  FileImages follower = left;
  std::erase_if(follower, [](const auto& image) { return image.first.starts_with("a."); });
  WriteImages(follower, *folder_);
  ASSERT_EQ(Open(kLeader), 0);
  ASSERT_EQ(Open(kFollower), 0);
  EXPECT_EQ(Judge(Left(true)), "");
}

// The redo is the file's that it names, not any file's that has such an intent.
TEST_F(Settlement, OfACopyUnderAnotherNameTakesNothing) {
  Leave(true);
  FileImages left = ImagesOf(*folder_);
  process_.Call(kReset, 0, {});
  folder_.emplace();
  for (const char* tail : {"", "-wal"}) {
    left["c.dat" + std::string(tail)] = left["b.dat" + std::string(tail)];
  }
  WriteImages(left, *folder_);
  ASSERT_EQ(process_.Call(kOpen, kFollower, {.key = PathKey(folder_->Path("c.dat"))}).status, 0);
  ASSERT_EQ(Open(kLeader), 0);
  EXPECT_EQ(Judge({after_[kLeader], before_[kFollower]}), "");
  ASSERT_EQ(process_.Call(kClose, kFollower, {}).status, 0);
  ASSERT_EQ(Open(kFollower), 0);
  EXPECT_EQ(Judge(after_), "");
}

TEST_F(Settlement, ComesBeforeKeysAreMadeAndDropped) {
  for (const int operation : {kCreateIndex, kDropIndex}) {
    Leave(true);
    const Bytes key = SegmentBytes({.position = 13, .length = 2, .flags = 0x103});
    const CallIn in{.data = key, .keyNumber = operation == kCreateIndex ? 0 : 128 + 3};
    ASSERT_EQ(process_.Call(operation, kFollower, in).status, 0);
    EXPECT_EQ(IntentsIn(kFollower), 0u);
  }
}

// A coordinator that a failing disk makes unreadable may have decided: nothing is dropped for that.
TEST_F(Settlement, WaitsForACoordinatorThatCannotBeRead) {
  folder_.emplace();
  const Bytes path = PathKey(Path(kFollower));
  ASSERT_EQ(process_.Call(kCreate, 0, {.data = PlanBlock(), .key = path}).status, 0);
  {
    DataFile file(Path(kFollower), {});
    file.Base().Open(file.Path());
    file.Base().BeginWrite();
    AddIntent(file, {TransactionNumber(16, 7), "a.dat"});
    file.Base().CommitWrite();
  }
  WriteBytes(Path(kLeader), Bytes(8192, 'x'));
  for (int opening = 0; opening < 2; ++opening) EXPECT_EQ(Open(kFollower), kNotABtrieveFile);
  std::filesystem::remove(Path(kLeader));
  EXPECT_EQ(Open(kFollower), 0);
  EXPECT_EQ(IntentsIn(kFollower), 0u);
}

// Neither as the coordinator, which has then decided nothing, nor as the one to be told.
// Nor does it ask the server that a link leads to: none is there, and the wait would show.
TEST_F(Settlement, TakesNoOldFileAndNoLinkForThePartOfATransaction) {
  const TransactionNumber number(16, 7);
  const struct {
    const char* name;
    bool leads;
  } cases[] = {
      {"PEOPLE.DAT", true}, {"PEOPLE.DAT", false}, {"away.dat", true}, {"away.dat", false}};
  for (const auto& [name, leads] : cases) {
    SCOPED_TRACE(name + std::string(leads ? ": an intent names it" : ": a redo names it"));
    folder_.emplace();
    OldSite site(folder_->Root());
    site.People().Insert(OldSite::Person(1, "Abe"));
    site.Write();
    const std::string link =
        std::string(server::kLinkMark) + "\nserver = host=192.0.2.1\nschema = s\ntable = t\n";
    WriteBytes(folder_->Path("away.dat"), {link.begin(), link.end()});
    ASSERT_EQ(
        process_.Call(kCreate, 0, {.data = PlanBlock(), .key = PathKey(Path(kLeader))}).status, 0);
    {
      DataFile file(Path(kLeader), {});
      file.Base().Open(file.Path());
      file.Base().BeginWrite();
      leads ? AddIntent(file, {number, name}) : AddRedo(file, {number, name}, {1, true, {}, {}});
      file.Base().CommitWrite();
    }
    EXPECT_EQ(Open(kLeader), 0);
    EXPECT_EQ(IntentsIn(kLeader), 0u);
    EXPECT_EQ(Insert(kLeader), 0);
    EXPECT_EQ(process_.Call(kClose, kLeader, {}).status, 0);
  }
}

// Who cannot write its first file leads nothing: the next one does.
TEST_F(Settlement, IsLedByAFileThatCouldBeWritten) {
  Leave(false);
  ASSERT_EQ(Open(kLeader), 0);
  ASSERT_EQ(process_.Call(kBegin, 0, {}).status, 0);
  ASSERT_EQ(process_.Call(kStepFirst, kLeader, {.room = 24}).status, 0);
  {
    FaultyDisk disk({"full", Grows, ENOSPC, true}, 1);
    const DiskTap tap(folder_->Root(), disk);
    ASSERT_EQ(Insert(kLeader), kDiskFull);
  }
  ASSERT_EQ(Insert(kFollower), 0);
  EXPECT_TRUE(ReadIntents(File(kFollower)).empty());
  ASSERT_EQ(Insert(kLeader), 0);
  EXPECT_EQ(ReadIntents(File(kLeader)).at(0).coordinator, "b.dat");
  EXPECT_EQ(process_.Call(kEnd, 0, {}).status, 0);
}

// The versions that an undone transaction has given are given again.
TEST_F(Settlement, AnAbortOnAFullDiskLeavesNoVersionBehind) {
  Leave(false);
  const auto update = [&](int block, const Bytes& record) {
    return process_.Call(kUpdate, block, {.data = record, .keyNumber = -1}).status;
  };
  ASSERT_EQ(process_.Call(kOpen, 2, {.key = PathKey(Path(kFollower))}).status, 0);
  ASSERT_EQ(process_.Call(kBegin, 0, {}).status, 0);
  const Bytes record = process_.Call(kStepFirst, kFollower, {.room = 24}).data;
  for (int times = 0; times < 3; ++times) ASSERT_EQ(update(kFollower, record), 0);
  {
    FaultyDisk disk({"full", Grows, ENOSPC, true}, 1);
    const DiskTap tap(folder_->Root(), disk);
    ASSERT_EQ(process_.Call(kAbort, 0, {}).status, 0);
    EXPECT_TRUE(disk.Met());
  }
  ASSERT_EQ(process_.Call(kStepFirst, 2, {.room = 24}).status, 0);
  for (int times = 0; times < 4; ++times) {
    ASSERT_EQ(update(2, record), 0);
    EXPECT_EQ(update(kFollower, record), kConflict);
  }
}

}  // namespace
}  // namespace btrieve::test
