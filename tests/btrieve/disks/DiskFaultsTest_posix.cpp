// The disk fails: at the first call of a kind, at the second, and so on until none is left to fail.
// The call that met it gives the documented status; nothing that was acknowledged is lost, nothing
// is there by half, and once the disk works again so do the files, without being opened anew.

#include <cerrno>

#include "clients/FaultsOf.h"
#include "clients/Remote.h"
#include "clients/TestFile.h"
#include "kit/CrashStates.h"
#include "kit/DamagedFile.h"
#include "kit/FaultyDisk.h"
#include "kit/Plan.h"
#include "tests/support/Test.h"

namespace btrieve::test {
namespace {

struct FaultCase : Fault {
  std::set<Status> statuses;  // what may come of it
};

const FaultCase kFaults[] = {
    {{"full disk", Grows, ENOSPC, true}, {18}},
    {{"quota used up", Grows, EDQUOT, true}, {18}},
    {{"write error", Writes, EIO, false}, {2, 38}},
    {{"lasting write error", Writes, EIO, true}, {2, 38}},
    {{"read error", Reads, EIO, false}, {2, 30, 38}},
    {{"failing sync", Syncs, EIO, false}, {2, 25, 38}},
    {{"full disk at a sync", Syncs, ENOSPC, false}, {2, 18, 25, 38}},
};

struct DiskFaults : testing::TestWithParam<FaultCase> {
  void SetUp() override { ASSERT_TRUE(BeginPlan(paths_, kSeed, next_, state_)); }

  // Opens, does a few steps, closes; the call that fails is told by its status. Then the rest, on a
  // disk that works, in the same process.
  void Run(int at);
  void Work(FaultyDisk& disk);

  static constexpr uint32_t kSeed = 11;
  static constexpr uint32_t kSteps = 5;
  uint32_t next_ = 8;
  PlanState state_;
  Folder folder_;
  std::vector<std::string> paths_ = {folder_.Path("a.dat"), folder_.Path("b.dat")};
  std::vector<std::pair<FileImages, PlanState>> undone_;  // when a call had said so
  bool met_ = false;
};

// Remembers the statuses that are no plain answers.
class Witness : public Client {
 public:
  explicit Witness(Client& client) : client_(client) {}
  CallOut Call(int operation, int block, const CallIn& in) override {
    CallOut out = client_.Call(operation, block, in);
    if (out.status != 0 && out.status != 9) faults.insert(out.status);
    return out;
  }
  std::set<Status> faults;

 private:
  Client& client_;
};

void DiskFaults::Run(int at) {
  FaultyDisk disk(GetParam(), at);
  Work(disk);
  for (const auto& [images, state] : undone_) ASSERT_EQ(JudgeImages(images, state), "");
  undone_.clear();
  met_ = disk.Met();
}

// A step that has failed may have been done nevertheless, but wholly; after 18 and 38 it has not,
// even if the process dies at once.
void DiskFaults::Work(FaultyDisk& disk) {
  const DiskTap tap(folder_.Root(), disk);
  ThisProcess process;
  Witness witness(process);
  const auto expectDocumented = [&](const char* where) {
    for (const Status status : witness.faults) {
      EXPECT_TRUE(GetParam().statuses.contains(status)) << where << " gave " << status;
    }
    witness.faults.clear();
  };
  if (!OpenPlanFiles(witness, paths_)) {
    expectDocumented("Open");
    disk.Mend();
    process.Call(kReset, 0, {});
    ASSERT_TRUE(OpenPlanFiles(process, paths_));
  }
  for (uint32_t step = 0; step < kSteps; ++step) {
    const PlanStep plan = PlanOf(kSeed, next_++, state_);
    PlanState after = state_;
    ApplyStep(plan, after);
    if (!PerformStep(witness, plan)) {
      if (witness.faults.contains(18) || witness.faults.contains(38)) {
        undone_.emplace_back(ImagesOf(folder_), state_);
      }
      if (plan.begin != 0) process.Call(kAbort, 0, {});
      expectDocumented("a step");
      disk.Mend();
      PlanState found;
      ASSERT_EQ(ReadPlanFiles(process, found), "");
      ASSERT_TRUE(found == state_ || found == after) << "half a step" << Differences(found, after);
      state_ = found;
      continue;
    }
    state_ = after;
  }
  for (int block = 0; block < 2; ++block) witness.Call(kClose, block, {});
  expectDocumented("Close");
  disk.Mend();
  process.Call(kReset, 0, {});
  ASSERT_TRUE(OpenPlanFiles(process, paths_));
  PlanState found;
  ASSERT_EQ(ReadPlanFiles(process, found), "");
  ASSERT_EQ(Differences(found, state_), "");
}

TEST_P(DiskFaults, AtEveryCallInTurn) {
  int at = 1;
  do {
    SCOPED_TRACE("call " + std::to_string(at));
    Run(at);
    // Late ones are many alike.
    at += at < 40 ? 1 : 7;
  } while (met_ && !HasFatalFailure() && !HasNonfatalFailure());
  EXPECT_GT(at, 4);
  std::printf("%d calls could fail\n", at - 1);
}

INSTANTIATE_TEST_SUITE_P(Kinds, DiskFaults, testing::ValuesIn(kFaults), [](const auto& row) {
  std::string name = row.param.name;
  std::erase(name, ' ');
  return name;
});

// A system that has failed to write may take what it had for written. What a later sync lets a call
// acknowledge must be on the disk all the same.
class LosingDisk : public DiskRecording {
 public:
  LosingDisk(const Folder& folder, int at) : DiskRecording(folder.Root()), left_(at) {}
  int Allow(const DiskCall& call) override {
    if (call.kind != DiskKind::Sync || --left_ != 0) return 0;
    failedAt_ = Length();
    Lose(call);
    return EIO;
  }
  bool Met() const { return left_ <= 0; }
  size_t FailedAt() const { return failedAt_; }

 private:
  int left_;
  size_t failedAt_ = 0;
};

TEST(LosingDisk, NothingIsAcknowledgedOnTheStrengthOfALaterSync) {
  constexpr uint32_t kSeed = 11, kFirst = 8, kSteps = 6;
  const std::vector<std::string> names = {"a.dat", "b.dat"};
  bool met = true;
  for (int at = 1; met && !testing::Test::HasFailure(); ++at) {
    SCOPED_TRACE("sync " + std::to_string(at));
    const Folder folder;
    const std::vector<std::string> paths = {folder.Path(names[0]), folder.Path(names[1])};
    PlanState state;
    ASSERT_TRUE(BeginPlan(paths, kSeed, kFirst, state));
    LosingDisk disk(folder, at);
    std::vector<std::pair<size_t, PlanState>> promised;
    {
      const DiskTap tap(folder.Root(), disk);
      ThisProcess process;
      ASSERT_TRUE(OpenPlanFiles(process, paths));
      for (uint32_t step = 0; step < kSteps; ++step) {
        const PlanStep plan = PlanOf(kSeed, kFirst + step, state);
        const bool done = PerformStep(process, plan);
        if (!done && plan.begin != 0) process.Call(kAbort, 0, {});
        ASSERT_EQ(ReadPlanFiles(process, state), "");
        if (done && plan.begin != 0) promised.emplace_back(disk.Length(), state);
      }
      const bool closed =
          process.Call(kClose, 0, {}).status + process.Call(kClose, 1, {}).status == 0;
      if (closed) promised.emplace_back(disk.Length(), state);
    }
    Choices choices(static_cast<uint32_t>(at));
    for (const auto& [length, expected] : promised) {
      if (length < disk.FailedAt()) continue;
      EXPECT_EQ(JudgeImages(disk.StateAfter(length, choices), expected), "");
    }
    met = disk.Met();
    EXPECT_TRUE(met || at > 10) << at;
  }
}

// The log has grown, the disk is full, and the file still has room in itself for what the log
// holds.
TEST(DiskFull, TheLogIsCarriedOverBeforeARecordIsRefused) {
  const Folder folder;
  ThisProcess process;
  const Bytes path = PathKey(folder.Path("a.dat"));
  ASSERT_EQ(process.Call(kCreate, 0, {.data = PlanBlock(), .key = path}).status, 0);
  ASSERT_EQ(process.Call(kOpen, 0, {.key = path}).status, 0);
  const auto insert = [&](int32_t id) {
    const Bytes record = Number(id) + Number(id) + Bytes(16, 'a');
    return process.Call(kInsert, 0, {.data = record, .keyNumber = -1}).status;
  };
  for (int32_t id = 0; id < 50; ++id) ASSERT_EQ(insert(id), 0);
  struct Room : DiskListener {  // for no byte more in all than are in use now
    explicit Room(const std::string& log) : left(std::filesystem::file_size(log)) {}
    int Allow(const DiskCall& call) override {
      if (call.kind == DiskKind::Truncate) used = call.offset;
      if (call.kind != DiskKind::Write || !call.grows) return 0;
      if (!call.path.ends_with("-wal")) return 0;
      if (call.offset + call.bytes.size() > left) return ENOSPC;
      return 0;
    }
    uint64_t left;
    uint64_t used = 0;
  } room(folder.Path("a.dat-wal"));
  const DiskTap tap(folder.Root(), room);
  for (int32_t id = 50; id < 90; ++id) ASSERT_EQ(insert(id), 0) << id;
  process.Call(kBegin + kConcurrent, 0, {});
  for (int32_t id = 90; id < 100; ++id) ASSERT_EQ(insert(id), 0) << id;
  EXPECT_EQ(process.Call(kEnd, 0, {}).status, 0);
  EXPECT_EQ(NumberAt<uint32_t>(process.Call(kStat, 0, {.room = 500}).data, 6), 100u);
}

// In a transaction the records of a block that are there in spite of a failure are told, and no
// record is there twice.
TEST(FailingDisk, ABlockTellsWhatOfItTheTransactionHolds) {
  constexpr int kMany = 300;
  const Fault faults[] = {{"full disk", Grows, ENOSPC, true},
                          {"full disk for a moment", Grows, ENOSPC, false},
                          {"write error", Writes, EIO, false}};
  Bytes block = Number(static_cast<uint16_t>(kMany));
  for (int32_t id = 1; id <= kMany; ++id) {
    const Bytes record = Number(id) + Number(id) + Bytes(16, 'a');
    block = std::move(block) + Number(static_cast<uint16_t>(record.size())) + record;
  }
  for (const Fault& fault : faults) {
    for (const int begin : {int{kBegin}, kBegin + kConcurrent}) {
      for (int at = 1; at <= 8; ++at) {
        SCOPED_TRACE(fault.name + (", transaction " + std::to_string(begin)) + ", call " +
                     std::to_string(at));
        TestFile file(PlanBlock());
        ASSERT_EQ(file.Call(begin, {}).status, 0);
        const auto there = [&] { return std::stoi(file.Counts()); };
        FaultyDisk disk(fault, at);
        CallOut out;
        {
          const DiskTap tap(file.Root(), disk);
          out = file.Call(kInsertExtended, {.data = block, .keyNumber = -1});
          disk.Mend();
        }
        const int told = out.length < block.size() ? NumberAt<uint16_t>(out.data, 0) : 0;
        EXPECT_EQ(out.status == 0, told == kMany) << out.status;
        EXPECT_EQ(there(), told);
        const Status end = file.Call(kEnd, {}).status;
        EXPECT_EQ(there(), end == 0 ? told : 0) << end;
        EXPECT_EQ(FaultsOf(file.Path()), "");
      }
    }
  }
}

// A concurrent transaction puts positions aside for its records by a commit of its own.
TEST(DiskFull, PositionsThatCouldNotBePutAsideAreNotGiven) {
  for (int at = 1; at <= 3; ++at) {
    SCOPED_TRACE("write " + std::to_string(at));
    const Folder folder;
    ThisProcess process;
    OtherProcess other;
    const Bytes path = PathKey(folder.Path("a.dat"));
    ASSERT_EQ(process.Call(kCreate, 0, {.data = PlanBlock(), .key = path}).status, 0);
    ASSERT_EQ(process.Call(kOpen, 0, {.key = path}).status, 0);
    ASSERT_EQ(other.Call(kOpen, 0, {.key = path}).status, 0);
    const auto insert = [](Client& client, int32_t id) {
      const Bytes record = Number(id) + Number(id) + Bytes(16, 'a');
      return client.Call(kInsert, 0, {.data = record, .keyNumber = -1}).status;
    };
    ASSERT_EQ(process.Call(kBegin + kConcurrent, 0, {}).status, 0);
    FaultyDisk disk({"full disk", Grows, ENOSPC, true}, at);
    const DiskTap tap(folder.Root(), disk);
    const Status refused = insert(process, 1);
    EXPECT_EQ(refused, disk.Met() ? 18 : 0);
    disk.Mend();
    EXPECT_EQ(insert(process, 2), 0);
    EXPECT_EQ(insert(other, 3), 0);
    EXPECT_EQ(process.Call(kEnd, 0, {}).status, 0);
    EXPECT_EQ(NumberAt<uint32_t>(process.Call(kStat, 0, {.room = 500}).data, 6),
              refused == 0 ? 3u : 2u);
    EXPECT_EQ(FaultsOf(folder.Path("a.dat")), "");
  }
}

}  // namespace
}  // namespace btrieve::test
