// Two processes on one file: record locks, file sharing, transactions, death. Cursors "a" to "d"
// are of this process, "x" and "y" of the other.
#include <unistd.h>

#include <cerrno>
#include <thread>

#include "btrieve/locks/LockSpace.h"
#include "clients/People.h"
#include "clients/Remote.h"
#include "clients/TestFile.h"
#include "kit/Descriptor.h"
#include "kit/DiskTap.h"
#include "tests/support/Test.h"

namespace btrieve::test {
namespace {

// Both have the file open.
class TwoProcesses {
 public:
  TwoProcesses() {
    script_.Create(kFive);
    script_.Assign('x', other_, 0);
    script_.Assign('y', other_, 1);
    EXPECT_EQ(script_.Run("x:open"), "ok");
  }

  std::string Run(const std::string& words) { return script_.Run(words); }
  OtherProcess& Other() { return other_; }
  ThisProcess& This() { return process_; }
  const std::filesystem::path& Root() const { return folder_.Root(); }
  std::array<Client*, 2> Clients() { return {&process_, &other_}; }

 private:
  Folder folder_;
  ThisProcess process_;
  OtherProcess other_;
  Script script_{process_, folder_.Path("people.dat")};
};

void RunAll(std::initializer_list<ScriptCase> cases) {
  for (const ScriptCase& row : cases) {
    SCOPED_TRACE(row.name);
    TwoProcesses both;
    EXPECT_EQ(both.Run(row.words), row.answers);
  }
}

TEST(TwoProcess, SeeEachOthersWork) {
  RunAll({
      {"insert", "x:ins-=9,Aaa walk0 walk1", "ok 1,2,3,4,5,9 9,1,3,2,5,4"},
      {"next after a neighbour goes", "first1 x:direct0=3 x:del next1", "1 3 ok 2"},
      {"next after the record goes", "first1 x:first1 x:del next1 prev1", "1 1 ok 3 #9"},
      {"changed since read", "eq0=2 x:eq0=2 x:upd0=2,New upd0=2,Old eq0=2 upd0=2,Old",
       "2 2 ok #80 2 ok"},
      {"deleted since read", "eq0=2 x:eq0=2 x:del del next0", "2 2 ok #80 3"},
      {"counts", "x:ins-=9 x:ins-=8 pct0=10000 pct-=10000", "ok ok 9 8"},
      {"a new unique value", "x:ins-=9 ins-=9", "ok #5"},
      {"in turns", "ins-=6 x:ins-=7 ins-=8 x:ins-=9 walk0 x:walk0",
       "ok ok ok ok 1,2,3,4,5,6,7,8,9 1,2,3,4,5,6,7,8,9"},
  });
}

TEST(RecordLock, KeepsOthersFromLockingAndWriting) {
  RunAll({
      {"single", "eq0=2+200 x:eq0=2+200 x:eq0=2 x:upd0=2,New+200 x:del+200 unlock x:upd0=2,New+200",
       "2 #84 2 #84 #84 ok ok"},
      {"multiple", "eq0=2+400 x:eq0=2+400 x:eq0=2 x:upd0=2,New+400 unlock* x:upd0=2,New+400",
       "2 #84 2 #84 ok ok"},
      {"other records are free", "eq0=2+200 x:eq0=3+200 x:upd0=3,New+200 x:ins0=9", "2 3 ok ok"},
      {"a refused lock leaves the place", "x:eq0=3 eq0=2+200 x:eq0=2+200 x:next0", "3 2 #84 4"},
      {"a refused lock leaves older ones", "x:eq0=3+200 eq0=2+200 x:eq0=2+200 eq0=3+200",
       "3 2 #84 #84"},
      {"single moves with the next locking read", "eq0=2+200 eq0=3+200 x:eq0=2+200 x:eq0=3+200",
       "2 3 2 #84"},
      {"a plain read keeps it", "eq0=2+200 eq0=3 x:eq0=2+200", "2 3 #84"},
      {"single goes with Update", "eq0=2+200 upd0=2,New x:eq0=2+200", "2 ok 2"},
      {"multiple stays with Update", "eq0=2+400 upd0=2,New x:eq0=2+200", "2 ok #84"},
      {"multiple are many",
       "eq0=2+400 eq0=3+400 x:eq0=2+200 x:eq0=3+200 unlock=2 x:eq0=2+200 x:eq0=3+200 unlock* "
       "x:eq0=3+200",
       "2 3 #84 #84 ok 2 #84 ok 3"},
      {"every read locks",
       "stepf+200 x:eq0=1+200 stepn+200 x:eq0=2+200 last0+200 x:eq0=5+200 direct0=3+200 "
       "x:eq0=3+200 pct0=0+200 x:eq0=1+200 keq0=4+200 x:eq0=4+200",
       "1 #84 2 #84 5 #84 3 #84 1 #84 4 #84"},
      {"own record again", "eq0=2+200 direct0=2+200 eq0=2+200", "2 2 2"},
      {"close releases", "eq0=2+400 close x:eq0=2+200", "2 ok 2"},
      {"reset releases", "eq0=2+400 reset x:eq0=2+200", "2 ok 2"},
  });
}

TEST(RecordLock, UnlockAndMixing) {
  RunAll({
      {"nothing held", "unlock unlock=2", "#81 #81"},
      {"of the other kind", "eq0=2+200 unlock=2 unlock", "2 #81 ok"},
      {"of the other kind, multiple", "eq0=2+400 unlock unlock=3 unlock=2", "2 #81 #81 ok"},
      {"multiple beside a single", "eq0=2+200 eq0=3+400 unlock eq0=3+400", "2 #93 ok 3"},
      {"single beside multiple", "eq0=2+400 eq0=3+200 unlock* eq0=3+200", "2 #93 ok 3"},
  });
}

TEST(RecordLock, BelongsToACursor) {
  RunAll({
      {"free when all have released",
       "b:open eq0=2+200 b:eq0=2+200 x:eq0=2+200 unlock x:eq0=2+200 b:unlock x:eq0=2+200",
       "ok 2 2 #84 ok #84 ok 2"},
      {"own cursors do not exclude each other",
       "b:open eq0=2+200 b:eq0=2+200 b:upd0=2,New upd0=2,Old", "ok 2 2 ok #80"},
      {"each its own single",
       "b:open eq0=2+200 b:eq0=3+200 x:eq0=2+200 x:eq0=3+200 unlock x:eq0=2+200",
       "ok 2 3 #84 #84 ok 2"},
      {"closing one of two", "b:open eq0=2+400 b:eq0=2+400 close x:eq0=2+200 b:close x:eq0=2+200",
       "ok 2 2 ok #84 ok 2"},
  });
}

// Has words run between the finding of a record and its lock.
class BeforeTheLock : public DiskListener {
 public:
  BeforeTheLock(TwoProcesses& both, uint32_t position, const char* words)
      : both_(both), byte_(lockbyte::Record(position)), words_(words), tap_(both.Root(), *this) {}
  int Allow(const DiskCall& call) override {
    if (call.kind != DiskKind::Lock || call.offset != byte_ || done_) return 0;
    done_ = true;
    EXPECT_EQ(both_.Run(words_).find('#'), std::string::npos);
    return 0;
  }
  ~BeforeTheLock() override { EXPECT_TRUE(done_); }

 private:
  TwoProcesses& both_;
  uint64_t byte_;
  const char* words_;
  bool done_ = false;
  DiskTap tap_;
};

// An exclusive transaction of the other process begins only beside no lock at all.
constexpr char kNoneIsHeld[] = "x:begin+200 x:first0 x:end";

TEST(RecordLock, OfARecordThatGoesBeforeItIsLockedIsNotKept) {
  const struct {
    const char *words, *answers, *after, *answersAfter;
  } kRows[] = {
      {"first0+400", "2", "unlock=2", "ok"},
      {"eq0=1+400", "#4", "eq0=1+400", "#4"},
      {"eq0=5+200 eq0=1+200", "5 #4", "x:eq0=5+200 unlock", "#84 ok"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.words);
    TwoProcesses both;
    {
      const BeforeTheLock meanwhile(both, 1, "x:eq0=1 x:del");
      EXPECT_EQ(both.Run(row.words), row.answers);
    }
    EXPECT_EQ(both.Run(row.after), row.answersAfter);
    EXPECT_EQ(both.Run(kNoneIsHeld), "ok 2 ok");
  }
}

TEST(RecordLock, OfARecordThatGoesBeforeAnExtendedReadLocksItIsNotKept) {
  TwoProcesses both;
  ASSERT_EQ(both.Run("first0"), "1");
  CallOut found;
  {
    const BeforeTheLock meanwhile(both, 2, "x:eq0=2 x:del");
    Bytes search = DescriptorBytes({.wanted = 2});
    search.resize(500);
    found = both.This().Call(kGetNextExtended + 400, 0, {.data = search});
  }
  ASSERT_EQ(found.status, 0);
  EXPECT_EQ(NumberAt<uint16_t>(found.data, 0), 2u);
  EXPECT_EQ(both.Run("unlock=3 unlock=4"), "ok ok");
  EXPECT_EQ(both.Run(kNoneIsHeld), "ok 1 ok");
}

TEST(FileSharing, ExclusiveAcrossProcesses) {
  RunAll({
      {"refused beside another", "close x:open x:close open=-4 x:open close", "ok ok ok #88 ok #3"},
      {"keeps others out", "close x:close open=-4 x:open x:open=-2 close x:open=-4 open",
       "ok ok ok #88 #88 ok ok #88"},
  });
}

TEST(FileSharing, RebuildingNeedsTheFileAlone) {
  TwoProcesses both;
  OtherProcess& other = both.Other();
  EXPECT_EQ(other.Call(kCreateIndex, 0, {.data = SegmentBytes({})}).status, kFileInUse);
  EXPECT_EQ(other.Call(kDropIndex, 0, {.keyNumber = 1}).status, kFileInUse);
  const Bytes name = Padded("secret", 7, '\0');
  EXPECT_EQ(other.Call(kSetOwner, 0, {.data = name, .key = name}).status, kFileInUse);
  EXPECT_EQ(both.Run("close"), "ok");
  EXPECT_EQ(other.Call(kDropIndex, 0, {.keyNumber = 128 + 3}).status, 0);
  EXPECT_EQ(both.Run("open first3 walk4"), "ok #6 -");
}

TEST(ExclusiveTransaction, HasItsFilesForItself) {
  RunAll({
      {"others see the old state",
       "begin eq0=1 upd0=1,New ins0=9 x:eq1=Abe x:eq1=New x:walk0 end x:eq1=New x:walk0",
       "ok 1 ok ok 1 #4 1,2,3,4,5 ok 1 1,2,3,4,5,9"},
      {"others do not write",
       "begin eq0=1 upd0=1,New x:ins0=9+200 x:eq0=2 x:upd0=2,Z+200 x:del+200 abort x:del+200",
       "ok 1 ok #85 2 #85 #85 ok ok"},
      {"others do not lock", "begin eq0=1 x:eq0=2+200 x:eq0=2 end x:eq0=2+200", "ok 1 #85 2 ok 2"},
      {"reading is use enough", "begin first0 x:ins0=9+200 end x:ins0=9+200", "ok 1 #85 ok ok"},
      {"before the first use others may", "begin x:ins0=9+200 eq0=9 end", "ok ok 9 ok"},
      {"record locks of others keep it out", "x:eq0=2+200 begin+200 eq0=1 x:unlock eq0=1 end",
       "2 ok #84 ok 1 ok"},
      {"two of them", "begin first0 x:begin+200 x:first0 end x:first0 x:end",
       "ok 1 ok #85 ok 1 ok"},
      {"contents as before after Abort",
       "begin eq0=1 del ins-=9 abort x:walk0 x:walk1 x:pct0=10000",
       "ok 1 ok ok ok 1,2,3,4,5 1,3,2,5,4 5"},
      {"another file is free", "x:close begin first0 end", "ok ok 1 ok"},
  });
}

TEST(ConcurrentTransaction, HoldsItsRecordsOnly) {
  RunAll({
      {"others see the old state",
       "cbegin eq0=1 upd0=1,New ins0=9 x:eq1=Abe x:eq1=New x:walk0 end x:eq1=New x:walk0",
       "ok 1 ok ok 1 #4 1,2,3,4,5 ok 1 1,2,3,4,5,9"},
      {"changed records are held",
       "cbegin eq0=1 upd0=1,New x:eq0=1+200 x:eq0=1 x:upd0=1,X+200 x:del+200 abort x:upd0=1,X+200",
       "ok 1 ok #84 1 #84 #84 ok ok"},
      {"others are free", "cbegin eq0=1 upd0=1,New x:eq0=2 x:upd0=2,Z+200 x:ins0=9+200 end walk1",
       "ok 1 ok 2 ok ok ok 3,5,1,4,2,9"},
      {"an uncommitted unique value", "cbegin ins0=9 x:ins0=9+200 x:ins0=8+200 abort x:ins0=9+200",
       "ok ok #84 ok ok ok"},
      {"an uncommitted unique value of an update",
       "cbegin eq0=1 upd0=9 x:ins0=9+200 end x:ins0=9+200", "ok 1 ok #84 ok #5"},
      {"others' changes are seen",
       "cbegin eq0=1 upd0=1,Own x:eq0=2 x:upd0=2,New eq1=New eq1=Own abort", "ok 1 ok 2 ok 2 1 ok"},
      {"changed by others since read", "cbegin eq0=2 x:eq0=2 x:upd0=2,New upd0=2,Old end",
       "ok 2 2 ok #80 ok"},
      {"a refused write holds no record",
       "x:cbegin x:ins0=9 cbegin eq0=1 upd0=9+200 x:eq0=1+200 eq0=1 upd0=1,New+200 abort x:end",
       "ok ok ok 1 #84 1 1 #84 ok ok"},
      {"a refused write holds no value",
       "x:cbegin x:ins0=9,n,0,,AA cbegin ins0=8,n,0,,AA+200 x:ins0=8+200 abort x:end",
       "ok ok ok #84 ok ok ok"},
      {"an earlier write keeps its own",
       "x:cbegin x:ins0=9 cbegin eq0=1 upd0=1,New upd0=9+200 x:eq0=1+200 abort x:eq0=1+200 x:end",
       "ok ok ok 1 ok #84 #84 ok 1 ok"},
      {"two of them",
       "cbegin x:cbegin eq0=1 upd0=1,A x:eq0=2 x:upd0=2,B x:eq0=1+200 end x:end walk1 x:walk1",
       "ok ok 1 ok 2 ok #84 ok ok 1,3,2,5,4 1,3,2,5,4"},
      {"default lock of Begin", "cbegin+400 eq0=2 eq0=3 x:eq0=2+200 x:eq0=3+200 end x:eq0=2+200",
       "ok 2 3 #84 #84 ok 2"},
      {"locks taken inside go with it", "cbegin eq0=2+400 abort x:eq0=2+200", "ok 2 ok 2"},
      {"locks taken before stay", "eq0=2+400 cbegin end x:eq0=2+200", "2 ok ok #84"},
      {"locks of the other keep it out",
       "x:eq0=2+200 cbegin eq0=2 upd0=2,New+200 x:unlock upd0=2,New+200 end",
       "2 ok 2 #84 ok ok ok"},
  });
}

// A system may refuse a process the byte that this one holds already.
class EachValueOnce : public DiskListener {
 public:
  int Allow(const DiskCall& call) override {
    const bool isValue = call.kind == DiskKind::Lock && call.offset >= lockbyte::kClaims;
    return isValue && !taken_.insert(call.offset).second ? EAGAIN : 0;
  }

 private:
  std::set<uint64_t> taken_;
};

// The other process's transaction has number 1, which the other keys' values must not suffer for.
TEST(AutoIncrement, TakesTheNextNumberWhereAnotherProcessHasOne) {
  for (const int begin : {0, kBegin + kConcurrent}) {
    SCOPED_TRACE(begin);
    TestFile file(
        CreateBlock({.recordLength = 8}, {{.position = 5, .type = 1}, {.length = 4, .type = 15}}));
    OtherProcess other;
    ASSERT_EQ(other.Call(kOpen, 0, {.key = PathKey(file.Path())}).status, 0);
    ASSERT_EQ(other.Call(kBegin + kConcurrent, 0, {}).status, 0);
    const Bytes theirs = Number(int32_t{0}) + Number(int32_t{70});
    EXPECT_EQ(NumberAt<int32_t>(other.Call(kInsert, 0, {.data = theirs}).data, 0), 1);
    if (begin != 0) {
      ASSERT_EQ(file.Call(begin, {}).status, 0);
    }
    EachValueOnce once;
    const DiskTap tap(std::filesystem::path(file.Path()).parent_path(), once);
    const CallOut ours =
        file.Call(kInsert, {.data = Number(int32_t{0}) + Number(int32_t{80}), .keyNumber = -1});
    EXPECT_EQ(ours.status, 0);
    EXPECT_EQ(NumberAt<int32_t>(ours.data, 0), 2);
  }
}

Bytes ManyPeople(int32_t firstId, int count) {
  Bytes data = Number(static_cast<uint16_t>(count));
  for (int i = 0; i < count; ++i) {
    const Bytes record = Person(std::to_string(firstId + i));
    data = std::move(data) + Number(static_cast<uint16_t>(record.size())) + record;
  }
  return data;
}

TEST(ConcurrentTransaction, ManyAtOnceGetPlacesOfTheirOwn) {
  constexpr int kMany = 30;
  TwoProcesses both;
  ASSERT_EQ(both.Run("cbegin x:cbegin"), "ok ok");
  std::set<uint32_t> positions;
  for (int round = 0; round < 2; ++round) {
    for (Client* client : both.Clients()) {
      const int32_t firstId = 100 + kMany * static_cast<int32_t>(positions.size());
      const CallOut out =
          client->Call(kInsertExtended, 0, {.data = ManyPeople(firstId, kMany), .keyNumber = -1});
      ASSERT_EQ(out.status, 0);
      for (size_t i = 0; i < kMany; ++i) positions.insert(NumberAt<uint32_t>(out.data, 2 + 4 * i));
    }
  }
  EXPECT_EQ(positions.size(), 4u * kMany);
  EXPECT_EQ(both.Run("end x:end"), "ok ok");
  EXPECT_EQ(NumberAt<uint32_t>(both.Clients()[0]->Call(kStat, 0, {.room = 500}).data, 6),
            5u + 4u * kMany);
}

// The value in the middle is another's uncommitted one; with blocks that one scope takes, and such
// as take several. Blocks of 1,000 and more would be slow if each value had a lock.
TEST(ManyAtOnce, StopAtAnothersUncommittedValue) {
  for (const int before : {3, 20, 700, 2000}) {
    SCOPED_TRACE(before);
    TwoProcesses both;
    ASSERT_EQ(both.Run("x:cbegin"), "ok");
    Client& other = *both.Clients()[1];
    const Bytes held = Person(std::to_string(100 + before));
    ASSERT_EQ(other.Call(kInsert, 0, {.data = held, .keyNumber = -1}).status, 0);
    const CallIn block{.data = ManyPeople(100, before + 5), .keyNumber = -1};
    const CallOut out = both.This().Call(kInsertExtended + 200, 0, block);
    EXPECT_EQ(out.status, kRecordInUse);
    EXPECT_EQ(NumberAt<uint16_t>(out.data, 0), before);
    EXPECT_EQ(both.Run("end x:end x:ins0=9+200 ins0=8+200"), "#39 ok ok ok");
    EXPECT_EQ(NumberAt<uint32_t>(other.Call(kStat, 0, {.room = 500}).data, 6),
              5u + static_cast<uint32_t>(before) + 3u);
  }
}

// Behind the first record as at it: a block waits for a value that another holds for a moment.
TEST(ManyAtOnce, WaitForAnothersUncommittedValue) {
  for (const char* end : {"x:abort", "x:end"}) {
    SCOPED_TRACE(end);
    TwoProcesses both;
    ASSERT_EQ(both.Run("x:cbegin x:ins0=102"), "ok ok");
    std::thread other([&] {
      std::this_thread::sleep_for(std::chrono::milliseconds(300));
      both.Run(end);
    });
    const CallOut out =
        both.This().Call(kInsertExtended, 0, {.data = ManyPeople(100, 5), .keyNumber = -1});
    other.join();
    EXPECT_EQ(out.status, end == std::string("x:abort") ? 0 : kDuplicateKey);
    EXPECT_EQ(NumberAt<uint16_t>(out.data, 0), out.status == 0 ? 5 : 2);
  }
}

TEST(DeadProcess, LeavesNothingBehind) {
  for (const char* words :
       {"x:eq0=2+200", "x:eq0=2+400 x:eq0=3+400", "x:begin x:eq0=2 x:upd0=2,New x:ins0=9",
        "x:cbegin x:eq0=2 x:upd0=2,New x:ins0=9 x:eq0=3 x:del"}) {
    SCOPED_TRACE(words);
    TwoProcesses both;
    both.Run(words);
    both.Other().Kill();
    EXPECT_EQ(both.Run("walk0 walk1 eq0=2+200 eq0=3+200 ins0=9 eq0=2 upd0=2,Own del"),
              "1,2,3,4,5 1,3,2,5,4 2 3 ok 2 ok ok");
    EXPECT_EQ(both.Run("begin first0 end close open=-4"), "ok 1 ok ok ok");
  }
}

}  // namespace
}  // namespace btrieve::test
