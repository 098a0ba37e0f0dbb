// Logs that processes have left behind or have open, with bits turned, parts wiped out and ends cut
// off. What was acknowledged is there, or the file says that it is damaged; where only an end is
// missing that was never on stable storage, the file opens with what was before it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "btrieve/pages/LogFormat.h"
#include "btrieve/session/Session.h"
#include "clients/FaultsOf.h"
#include "clients/Remote.h"
#include "kit/DamagedFile.h"

namespace btrieve::test {
namespace {

constexpr int32_t kWritten = 60;

// The data file and its log as a process leaves them that is killed.
struct Left {
  Bytes file, log;
};

Left LeftByKill(bool synced) {
  const Folder folder;
  const std::string path = folder.Path("a.dat");
  WriteBytes(path, GoodFile());
  ThisProcess process;
  EXPECT_EQ(process.Call(kOpen, 0, {.key = PathKey(path)}).status, 0);
  EXPECT_EQ(process.Call(kOpen, 1, {.key = PathKey(path)}).status, 0);
  for (int32_t id = kGoodRecords; id < kGoodRecords + kWritten; ++id) {
    const CallIn in{.data = GoodRecord(id), .keyNumber = -1};
    EXPECT_EQ(process.Call(kInsert, 0, in).status, 0);
  }
  if (synced) process.Call(kClose, 1, {});
  return {ReadBytes(path), ReadBytes(path + "-wal")};
}

struct Found {
  Status status = 0;
  uint32_t records = 0;
};

Found Open(const Left& left) {
  const Folder folder;
  const std::string path = folder.Path("a.dat");
  WriteBytes(path, left.file);
  WriteBytes(path + "-wal", left.log);
  ThisProcess process;
  Found found{process.Call(kOpen, 0, {.key = PathKey(path)}).status};
  if (found.status != 0) {
    EXPECT_EQ(ReadBytes(path), left.file) << "the file was touched";
    EXPECT_EQ(ReadBytes(path + "-wal"), left.log) << "the log was touched";
    return found;
  }
  CallOut out = process.Call(kGetFirst, 0, {.room = kGoodRecord});
  for (; out.status == 0; out = process.Call(kGetNext, 0, {.room = kGoodRecord})) {
    EXPECT_TRUE(IsGoodRecord(out.data));
    ++found.records;
  }
  EXPECT_EQ(out.status, 9);
  return found;
}

constexpr uint32_t kAll = kGoodRecords + kWritten;

size_t FrameAt(uint64_t frame) { return kLogHeadSize + FrameOffset(frame); }
uint64_t FramesIn(const Bytes& log) {
  return (log.size() - kLogHeadSize - kLogHeaderSize) / kFrameSize;
}

TEST(LogDamage, AnEndIsTakenWholeAfterAKill) {
  const Found found = Open(LeftByKill(false));
  EXPECT_EQ(found.status, 0);
  EXPECT_EQ(found.records, kAll);
}

TEST(LogDamage, OneTurnedBitIsNeverPassedOver) {
  for (const bool synced : {false, true}) {
    const Left left = LeftByKill(synced);
    const size_t step = left.log.size() / 40;
    for (size_t at = kLogHeadSize + 3; at < left.log.size(); at += step) {
      SCOPED_TRACE("byte " + std::to_string(at));
      Left turned = left;
      turned.log[at] ^= static_cast<uint8_t>(1 << at % 8);
      const Found found = Open(turned);
      ASSERT_TRUE(found.status == kIoError || found.records == kAll) << found.records;
    }
  }
}

TEST(LogDamage, IsWhatTheDataToolSpeaksOf) {
  const Folder folder;
  const std::string path = folder.Path("a.dat");
  Left left = LeftByKill(true);
  left.log[FrameAt(2) + 100] ^= 1;
  WriteBytes(path, left.file);
  WriteBytes(path + "-wal", left.log);
  EXPECT_THAT([&] { FaultsOf(path); },
              testing::ThrowsMessage<std::runtime_error>(testing::HasSubstr("log")));
  std::filesystem::remove(path + "-wal");
  left.file.resize(left.file.size() - 1);
  WriteBytes(path, left.file);
  EXPECT_THAT([&] { FaultsOf(path); },
              testing::ThrowsMessage<std::runtime_error>(testing::Not(testing::HasSubstr("log"))));
}

TEST(LogDamage, TheMarkOfWhatIsSyncedIsOnlyAHelp) {
  const Left left = LeftByKill(true);
  for (size_t at = 0; at < kLogMarkSize; ++at) {
    Left turned = left;
    turned.log[at] ^= 4;
    EXPECT_EQ(Open(turned).records, kAll) << at;
  }
}

struct EndCase {
  const char* what;
  void (*spoil)(Bytes& log);
};
const EndCase kEnds[] = {
    {"cut in the middle", [](Bytes& log) { log.resize(FrameAt(FramesIn(log) / 2) + 1000); }},
    {"cut between frames", [](Bytes& log) { log.resize(FrameAt(FramesIn(log) / 2)); }},
    {"one sector never written",
     [](Bytes& log) {
       const size_t sector = FrameAt(FramesIn(log) / 2) / 512 * 512 + 1024;
       std::fill_n(log.begin() + static_cast<ptrdiff_t>(sector), 512, 0);
     }},
    {"one frame's head never written",
     [](Bytes& log) {
       const size_t frame = FrameAt(FramesIn(log) / 2);
       std::fill_n(log.begin() + static_cast<ptrdiff_t>(frame), kFrameHeaderSize, 0);
     }},
};

// What was not on stable storage may be missing after a power cut; what was may not.
TEST(LogDamage, AMissingEndIsDroppedUnlessItWasOnStableStorage) {
  for (const EndCase& end : kEnds) {
    SCOPED_TRACE(end.what);
    for (const bool synced : {false, true}) {
      Left left = LeftByKill(synced);
      end.spoil(left.log);
      const Found found = Open(left);
      if (synced) {
        EXPECT_EQ(found.status, kIoError);
      } else {
        EXPECT_EQ(found.status, 0);
        EXPECT_GT(found.records, static_cast<uint32_t>(kGoodRecords));
        EXPECT_LT(found.records, kAll);
      }
    }
  }
}

// A page in the log of an open file, read by a process that has not seen it yet.
TEST(LogDamage, AnOpenLogIsCheckedAtEachReadAndNotCarriedOver) {
  const Folder folder;
  const std::string path = folder.Path("a.dat");
  WriteBytes(path, GoodFile());
  ThisProcess process;
  ASSERT_EQ(process.Call(kOpen, 0, {.key = PathKey(path)}).status, 0);
  for (int32_t id = kGoodRecords; id < kGoodRecords + kWritten; ++id) {
    process.Call(kInsert, 0, {.data = GoodRecord(id), .keyNumber = -1});
  }
  Bytes log = ReadBytes(path + "-wal");
  std::fstream file(path + "-wal", std::ios::binary | std::ios::in | std::ios::out);
  for (uint64_t frame = 1; frame <= FramesIn(log); ++frame) {
    const size_t at = FrameAt(frame) + kFrameHeaderSize + 4000;
    file.seekp(static_cast<std::streamoff>(at));
    file.put(static_cast<char>(log[at] ^ 1));
  }
  file.close();
  {
    OtherProcess other;
    Status status = other.Call(kOpen, 0, {.key = PathKey(path)}).status;
    if (status == 0) status = other.Call(kGetLast, 0, {.room = kGoodRecord}).status;
    EXPECT_EQ(status, kIoError);
  }
  const Bytes before = ReadBytes(path);
  Session::Get().OpenFiles().front()->Base().CarryLogOver();
  EXPECT_EQ(ReadBytes(path), before) << "damage went into the data file";
}

// Frames of a transaction that was undone stand behind the last commit; a shorter one is then
// written over them.
TEST(LogDamage, WhatATransactionLeftBehindIsNoDamage) {
  const Folder folder;
  const std::string path = folder.Path("a.dat");
  WriteBytes(path, GoodFile());
  ThisProcess process;
  ASSERT_EQ(process.Call(kOpen, 0, {.key = PathKey(path)}).status, 0);
  const auto insert = [&](int32_t id) {
    return process.Call(kInsert, 0, {.data = GoodRecord(id), .keyNumber = -1}).status;
  };
  ASSERT_EQ(insert(kGoodRecords), 0);
  const std::string logPath = path + "-wal";
  const auto committed = std::filesystem::file_size(logPath);
  process.Call(kBegin, 0, {});
  for (int32_t id = 1000; id < 4000; ++id) ASSERT_EQ(insert(id), 0);
  sqlite3_db_cacheflush(Session::Get().OpenFiles().front()->Base().Link().Get());
  ASSERT_GT(std::filesystem::file_size(logPath), committed + 10 * kFrameSize);
  process.Call(kAbort, 0, {});
  ASSERT_EQ(insert(kGoodRecords + 1), 0);
  const Found found = Open({ReadBytes(path), ReadBytes(logPath)});
  EXPECT_EQ(found.status, 0);
  EXPECT_EQ(found.records, static_cast<uint32_t>(kGoodRecords) + 2);
}

// The last bytes of their pages are their own.
TEST(OtherDatabases, AreLeftWithoutAChecksum) {
  const Folder folder;
  ThisProcess process;
  WriteBytes(folder.Path("a.dat"), GoodFile());
  ASSERT_EQ(process.Call(kOpen, 0, {.key = PathKey(folder.Path("a.dat"))}).status, 0);
  sqlite3* raw = nullptr;
  ASSERT_EQ(sqlite3_open(folder.Path("other.db").c_str(), &raw), SQLITE_OK);
  const std::unique_ptr<sqlite3, decltype(&sqlite3_close)> other(raw, &sqlite3_close);
  EXPECT_EQ(sqlite3_exec(raw,
                         "PRAGMA journal_mode=WAL; CREATE TABLE t(a TEXT);"
                         "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<500)"
                         "INSERT INTO t SELECT printf('%0100d', i) FROM n;"
                         "PRAGMA wal_checkpoint(TRUNCATE);",
                         nullptr, nullptr, nullptr),
            SQLITE_OK);
  sqlite3_db_release_memory(raw);
  std::string verdict;
  const auto take = [](void* text, int, char** values, char**) {
    *static_cast<std::string*>(text) += values[0];
    return 0;
  };
  sqlite3_exec(raw, "PRAGMA integrity_check; SELECT sum(a) FROM t;", take, &verdict, nullptr);
  EXPECT_EQ(verdict, "ok125250");
}

}  // namespace
}  // namespace btrieve::test
