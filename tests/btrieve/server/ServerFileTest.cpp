// Files on a server through the calls: what a read and a write cost, what others change is seen,
// writes are refused as for a file that may not be written.
#include <thread>

#include "ServerSite.h"
#include "btrieve/server/LinkedFolder.h"
#include "btrieve/server/ServerLocks.h"
#include "clients/TestFile.h"
#include "kit/Descriptor.h"
#include "tests/support/TempFolder.h"

namespace btrieve::test {
namespace {

using server::Arguments;

// A thousand records of a number (key 0, unique), its tens (key 1, duplicates), and a value.
class LinkedPairs : public ServerSite {
 protected:
  static constexpr int32_t kRecords = 1000;

  static Bytes Record(int32_t id, int32_t value = 0) {
    return Number(id) + Number(id / 10) + Number(value);
  }

  void SetUp() override {
    ServerSite::SetUp();
    const Bytes block =
        CreateBlock({.recordLength = 12},
                    {{.flags = 0x102, .type = 1}, {.position = 5, .flags = 0x103, .type = 1}});
    file_.Make(block);
    for (int32_t id = 0; id < kRecords; ++id) ASSERT_EQ(file_.Insert(Record(id)), 0);
    ASSERT_EQ(file_.Close(), 0);
    Move(file_.Path(), "pairs");
    ASSERT_EQ(file_.Open(), 0);
  }

  CallOut Get(int operation, int key = 0, const Bytes& value = {}) {
    return file_.Call(operation, {.room = 12, .key = value, .keyNumber = key});
  }
  static int32_t IdOf(const CallOut& out) { return NumberAt<int32_t>(out.data, 0); }
  // Another station writes a record, as the layout wants it: row and head in one transaction.
  void WriteElsewhere(int32_t id, int32_t value) {
    const auto other = OtherLink();
    const Bytes record = Record(id, value);
    const std::string schema = "\"" + Schema() + "\"";
    server::ServerTransaction transaction(other);
    other->Ask("UPDATE " + schema + ".pairs SET data = $2, ver = ver + 5000 WHERE pos = $1",
               Arguments().Add(int64_t{id} + 1).Add(ByteView(record)));
    other->Run("UPDATE " + schema + ".btrieve_files SET records = records");
    transaction.Commit();
  }
  // The way from the server takes its time.
  void AwaitNotice(uint64_t noticesBefore) {
    for (int looks = 0; looks < 1000 && Notices() == noticesBefore; ++looks) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    ASSERT_NE(Notices(), noticesBefore);
  }
  uint64_t Notices() {
    const int64_t id = server::ReadServerSpec(*Link(), Schema(), "pairs").id;
    return Link()->NoticesOf(server::ChannelOf(id));
  }
  // The server ends this station's session.
  void CutOff() {
    ASSERT_EQ(Get(kGetFirst).status, 0);
    ASSERT_EQ(Get(kGetNext).status, 0);
    OtherLink()->Run(
        "SELECT pg_catalog.pg_terminate_backend(pid) FROM pg_catalog.pg_stat_activity "
        "WHERE pid <> pg_catalog.pg_backend_pid() AND application_name LIKE 'w64btrv%'");
    Status status = kOk;
    for (int tries = 0; tries < 1000 && status == kOk; ++tries) status = Get(kGetNext).status;
    ASSERT_EQ(status, kNotActive);
  }
  // What the link of this process is asked for by something.
  template <class Action>
  uint64_t RoundTripsOf(Action action) {
    const uint64_t before = Link()->RoundTrips();
    action();
    return Link()->RoundTrips() - before;
  }

  TestFile file_;
};

TEST_F(LinkedPairs, ReadsAheadInBatches) {
  int read = 0;
  Get(kGetFirst);  // prepares its statement
  const uint64_t trips = RoundTripsOf([&] {
    for (int op = kGetFirst; Get(op).status == 0; op = kGetNext) ++read;
  });
  EXPECT_EQ(read, kRecords);
  EXPECT_LE(trips, 3u);  // 1, 400, the rest
  EXPECT_EQ(RoundTripsOf([&] { Get(kGetEqual, 0, Number(int32_t{500})); }), 1u);
}

// However much of the file its condition goes through, and where it ends.
TEST_F(LinkedPairs, AnswersAnExtendedReadByOneRequest) {
  const TermOf none{1, 4, 8, kNe, kLastTerm, Number(int32_t{0})};
  const TermOf late{1, 4, 0, kGe, kLastTerm, Number(int32_t{990})};
  const TermOf early{1, 4, 0, kLt, kLastTerm, Number(int32_t{5})};
  const TermOf folded{0, 4, 8, kEq | kWithFold, kLastTerm, Bytes(4, 0)};
  const struct {
    Descriptor asked;
    Status status;
    int32_t count, last;
  } kCases[] = {
      {{.wanted = 700}, 0, 700, 700},
      {{.terms = {none}, .wanted = 10}, kEndOfFile, 0, 999},
      {{.rejects = 300, .terms = {none}, .wanted = 10}, kRejectCount, 0, 300},
      {{.terms = {late}, .wanted = 5}, 0, 5, 994},
      {{.terms = {early}, .wanted = 700}, kFilterLimit, 4, 5},
      {{.terms = {folded}, .wanted = 700}, 0, 700, 700},
  };
  for (const auto& row : kCases) {
    const CallIn in{.data = DescriptorBytes(row.asked), .room = 9000};
    ASSERT_EQ(IdOf(Get(kGetFirst)), 0);
    CallOut out;
    EXPECT_EQ(RoundTripsOf([&] { out = file_.Call(kGetNextExtended, in); }), 1u);
    EXPECT_EQ(out.status, row.status);
    EXPECT_EQ(NumberAt<uint16_t>(out.data, 0), row.count);
    EXPECT_EQ(NumberAt<int32_t>(file_.Call(kGetPosition, {.room = 4}).data, 0), row.last + 1);
  }
}

TEST_F(LinkedPairs, SeesWhatOthersWriteInTheMidstOfABatch) {
  ASSERT_EQ(IdOf(Get(kGetFirst)), 0);
  ASSERT_EQ(IdOf(Get(kGetNext)), 1);
  const uint64_t before = Notices();
  WriteElsewhere(2, 77);
  AwaitNotice(before);
  EXPECT_EQ(Get(kGetNext).Returned(), Record(2, 77));
}

// A station that is told of nothing, for its notices are lost on the way.
TEST_F(LinkedPairs, GivesNoAnswerThatIsOlderThanItSays) {
  ASSERT_EQ(IdOf(Get(kGetFirst)), 0);
  ASSERT_EQ(IdOf(Get(kGetNext)), 1);
  Link()->Run("UNLISTEN *");
  WriteElsewhere(2, 77);
  WriteElsewhere(3, 78);
  EXPECT_EQ(Get(kGetNext).Returned(), Record(2));
  std::this_thread::sleep_for(server::kOldestAnswer);
  EXPECT_EQ(Get(kGetNext).Returned(), Record(3, 78));
}

// A lone write: one round trip begins it, one carries it out.
TEST_F(LinkedPairs, WritesInTwoRoundTrips) {
  Get(kGetFirst);
  const auto write = [&](int operation, const Bytes& record) {
    return RoundTripsOf([&] {
      EXPECT_EQ(file_.Call(operation, {.data = record, .keyNumber = -1}).status, 0) << operation;
    });
  };
  EXPECT_EQ(write(kUpdate, Record(0, 5)), 2u);
  const Bytes position = file_.Call(kGetPosition, {.room = 4}).data;
  EXPECT_EQ(
      RoundTripsOf([&] {
        EXPECT_EQ(
            file_.Call(kGetDirect, {.data = position, .room = 12, .keyNumber = -1}).Returned(),
            Record(0, 5));
      }),
      1u)
      << "reading it back";
  EXPECT_EQ(write(kInsert, Record(5000, 6)), 2u);
  Bytes block = Number(uint16_t{20});
  for (int32_t id = 6000; id < 6020; ++id) block = block + Number(uint16_t{12}) + Record(id);
  EXPECT_EQ(write(kInsertExtended, block), 2u);
  EXPECT_EQ(write(kDelete, {}), 2u);
  EXPECT_EQ(file_.Call(kInsert, {.data = Record(7), .keyNumber = -1}).status, kDuplicateKey);
  EXPECT_EQ(file_.Counts(), "1020 1020,103");
  EXPECT_EQ(Get(kGetFirst).Returned(), Record(0, 5));
}

TEST_F(LinkedPairs, IsReplacedByAnEmptyFileUnlessSomebodyHasIt) {
  EXPECT_EQ(file_.Create(PairBlock(), -1), kFileExists);
  EXPECT_EQ(file_.Create(PairBlock(), 0), kCreateError);
  ASSERT_EQ(file_.Close(), 0);
  EXPECT_EQ(file_.Create(PairBlock(), 0), 0);
  ASSERT_EQ(file_.Open(), 0);
  EXPECT_EQ(file_.Counts(), "0 0");
}

TEST_F(LinkedPairs, TellsThatTheSessionHasGoneUntilItIsOpenedAnew) {
  CutOff();
  EXPECT_EQ(Get(kGetEqual, 0, Number(int32_t{5})).status, kNotActive);
  ASSERT_EQ(file_.Open(0, 1), 0);
  EXPECT_EQ(file_.Call(kGetFirst, {.room = 12}, 1).status, 0);
  EXPECT_EQ(Get(kGetNext).status, kNotActive) << "of the block that was open before";
  EXPECT_EQ(file_.Close(), 0);
  ASSERT_EQ(file_.Open(), 0);
  EXPECT_EQ(Get(kGetFirst).status, 0);
}

// Each Open asks again, also while the block from before is still open.
TEST_F(LinkedPairs, IsNotOpenedAnewWhileAnotherStationHasItAlone) {
  const std::string table = server::TableName(Schema(), "pairs");
  const auto other = OtherLink();
  server::ServerLocks station(other, server::ObjectOf(*other, table));
  CutOff();
  ASSERT_TRUE(station.TryExclusive(lockbyte::kOpen, 1));
  EXPECT_EQ(file_.Open(0, 1), kIncompatibleMode);
  EXPECT_EQ(file_.Open(0, 1), kIncompatibleMode);
  station.Release(lockbyte::kOpen, 1);
  EXPECT_EQ(file_.Open(0, 1), 0);
  EXPECT_FALSE(station.TryExclusive(lockbyte::kOpen, 1));
  EXPECT_EQ(file_.Call(kGetFirst, {.room = 12}, 1).status, 0);
}

TEST_F(LinkedPairs, IsOpenedByItsOwnersName) {
  ASSERT_EQ(file_.Close(), 0);
  const Bytes owner = Bytes{1} + Padded("me", 8);
  Link()->Ask("UPDATE \"" + Schema() + "\".btrieve_files SET owner = $1",
              Arguments().Add(ByteView(owner)));
  const auto open = [&](const Bytes& name) {
    return file_.Call(kOpen, {.data = name, .key = PathKey(file_.Path())}).status;
  };
  EXPECT_EQ(open(Padded("you", 9, 0)), kOwnerInvalid);
  EXPECT_EQ(open(Padded("me", 9, 0)), 0);
}

// What a transaction meets beside its records: they are written whole or not at all, as End says.
class LinkedTransaction : public LinkedPairs {
 protected:
  static constexpr int32_t kNew = 7000;

  Status Begin() { return file_.Call(kBegin, {}).status; }
  Status End() { return file_.Call(kEnd, {}).status; }
  Status OpenAt(const std::string& name, int block, int mode = 0) {
    return file_.Call(kOpen, {.key = PathKey(file_.Path(name)), .keyNumber = mode}, block).status;
  }
  // A link file beside the file.
  void PutLink(const std::string& name, const server::LinkFile& link) const {
    WriteText(file_.Path(name), server::WriteLinkFile(link));
  }
  Status Create(const std::string& name, int mode) {
    return file_
        .Call(kCreate, {.data = PairBlock(), .key = PathKey(file_.Path(name)), .keyNumber = mode},
              31)
        .status;
  }
  bool HasNew() { return Get(kGetEqual, 0, Number(kNew)).status == kOk; }
};

TEST_F(LinkedTransaction, IsNotHarmedByAnOpenThatIsRefused) {
  server::LinkFile nowhere = LinkTo("none");
  nowhere.schema = "nowhere";
  PutLink("nowhere", nowhere);
  ASSERT_EQ(Begin(), 0);
  ASSERT_EQ(file_.Insert(Record(kNew)), 0);
  EXPECT_EQ(OpenAt("nowhere", 1), kFileNotFound);
  EXPECT_EQ(End(), 0);
  EXPECT_TRUE(HasNew());
}

TEST_F(LinkedTransaction, IsNotSaidToBeMadeWhereTheServerHasUndoneIt) {
  PutLink("file.ddf", LinkTo("file_ddf"));
  ASSERT_EQ(Create("other", -1), 0);
  ASSERT_EQ(OpenAt("other", 1), 0);
  ASSERT_EQ(Begin(), 0);
  ASSERT_EQ(file_.Insert(Record(kNew)), 0);
  OtherLink()->Run("DROP TABLE \"" + Schema() + "\".other CASCADE");
  EXPECT_NE(file_.Call(kGetFirst, {.room = 12}, 1).status, 0);
  EXPECT_EQ(file_.Insert(Record(kNew + 1)), kTransactionNotWritten);
  EXPECT_EQ(End(), kTransactionNotWritten);
  EXPECT_FALSE(HasNew());
  EXPECT_EQ(file_.Insert(Record(kNew)), 0) << "outside of it";
  EXPECT_EQ(file_.Counts(), "1001 1001,101");
}

TEST_F(LinkedTransaction, HasNoPartInFilesThatAreCreated) {
  PutLink("file.ddf", LinkTo("file_ddf"));
  for (const bool isTaken : {false, true}) {
    ASSERT_EQ(Begin(), 0);
    ASSERT_EQ(file_.Insert(Record(kNew)), 0);
    ASSERT_EQ(Create(isTaken ? "new dat" : "new.dat", -1), 0);
    ASSERT_EQ(file_.Insert(Record(kNew + 1)), 0);
    ASSERT_EQ(file_.Call(kAbort, {}).status, 0);
    EXPECT_FALSE(HasNew());
    EXPECT_EQ(OpenAt("new.dat", 1), 0);
    EXPECT_EQ(file_.Close(1), 0);
  }
}

TEST_F(LinkedTransaction, ReachesOneFileByTwoLinks) {
  PutLink("second", LinkTo("pairs"));
  ASSERT_EQ(OpenAt("second", 1), 0);
  EXPECT_EQ(Create("second", 0), kCreateError);
  ASSERT_EQ(Begin(), 0);
  ASSERT_EQ(file_.Insert(Record(kNew)), 0);
  EXPECT_EQ(file_.Call(kInsert, {.data = Record(kNew + 1), .keyNumber = -1}, 1).status, 0);
  EXPECT_EQ(End(), 0);
  EXPECT_TRUE(HasNew());
  ASSERT_EQ(file_.Close(1), 0);
  ASSERT_EQ(file_.Close(), 0);
  ASSERT_EQ(file_.Open(-4), 0);
  EXPECT_EQ(OpenAt("second", 1), kIncompatibleMode);
}

// Also by who was told of nothing while the transaction was open.
TEST_F(LinkedTransaction, ThatIsAbortedLeavesAFileThatHearsOfOthers) {
  PutLink("file.ddf", LinkTo("file_ddf"));
  ASSERT_EQ(Create("other", -1), 0);
  ASSERT_EQ(Begin(), 0);
  ASSERT_EQ(file_.Insert(Record(kNew)), 0);
  ASSERT_EQ(OpenAt("other", 1), 0);
  ASSERT_EQ(file_.Call(kAbort, {}).status, 0);
  const std::string channel =
      server::ChannelOf(server::ReadServerSpec(*Link(), Schema(), "other").id);
  const uint64_t before = Link()->NoticesOf(channel);
  OtherLink()->Run("UPDATE \"" + Schema() + "\".btrieve_files SET records = records");
  for (int looks = 0; looks < 1000 && Link()->NoticesOf(channel) == before; ++looks) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  EXPECT_NE(Link()->NoticesOf(channel), before);
}

class BrokenLinks : public ServerSite {};

TEST_F(BrokenLinks, AreToldAtOpen) {
  const TestFile file;
  server::LinkFile elsewhere = LinkTo("none");
  elsewhere.schema = "nowhere";
  server::LinkFile unknown = LinkTo("none");
  unknown.server = AddressWith("port", "1");
  const std::pair<std::string, Status> kCases[] = {
      {server::WriteLinkFile(LinkTo("none")), kFileNotFound},
      {server::WriteLinkFile(elsewhere), kFileNotFound},
      {server::WriteLinkFile(unknown), kNotActive},
      {std::string(server::kLinkMark) + "\nserver=host=h password=x\n", kNotABtrieveFile},
      {std::string(server::kLinkMark) + std::string(5000, '\n'), kNotABtrieveFile},
  };
  ThisProcess process;
  for (const auto& [text, status] : kCases) {
    WriteText(file.Path(), text);
    EXPECT_EQ(process.Call(kOpen, 0, {.key = PathKey(file.Path())}).status, status) << text;
  }
}

class LinkedFolders : public ServerSite {};

// Tables', indexes' and types' names are of one kind to the server.
TEST_F(LinkedFolders, TakeNamesThatAreFree) {
  const qrn::test::TempFolder folder;
  WriteText(folder.Text() + "/file.ddf", server::WriteLinkFile(LinkTo("file")));
  Link()->Run("CREATE TYPE \"" + Schema() + "\".mood AS ENUM('good')");
  const std::pair<const char*, const char*> kTables[] = {{"btrieve_files", "_btrieve_files"},
                                                         {"r1.btr", "r1_btr"},
                                                         {"r1.btr.pkey", "r1_btr_pkey_2"},
                                                         {"r1_btr", "r1_btr_2"},
                                                         {"mood", "mood_2"},
                                                         {"R1.BTR.k1.idx", "r1_btr_k1_idx_2"}};
  ThisProcess process;
  for (const auto& [name, table] : kTables) {
    const std::string path = folder.Text() + "/" + name;
    const Bytes block =
        CreateBlock({.recordLength = 12}, {{.position = 1, .length = 4, .flags = 0x100}});
    ASSERT_EQ(process.Call(kCreate, 0, {.data = block, .key = PathKey(path)}).status, 0) << name;
    const auto link = server::LinkAt(path);
    ASSERT_TRUE(link) << name;
    EXPECT_EQ(link->table, table) << name;
    EXPECT_EQ(process.Call(kOpen, 0, {.key = PathKey(path)}).status, 0) << name;
  }
}

// Rows that no record manager has written: a status, and nothing of them given out.
TEST_F(LinkedPairs, TakesNoRowThatCannotBe) {
  const std::pair<const char*, Status> kHarms[] = {
      {"UPDATE $.pairs SET data = 'short' WHERE pos = 1", kIoError},
      {"UPDATE $.pairs SET num = 'x' WHERE pos = 1", kIoError},
      {"UPDATE $.pairs SET k1 = 'x' WHERE pos = 1", kIoError},
      {"ALTER TABLE $.pairs DROP COLUMN k1 CASCADE", kIoError},
      {"DROP TABLE $.pairs", kFileNotFound},
  };
  for (const auto& [harm, status] : kHarms) {
    std::string sql = harm;
    sql.replace(sql.find('$'), 1, "\"" + Schema() + "\"");
    const uint64_t before = Notices();
    OtherLink()->Run(sql);
    OtherLink()->Run("UPDATE \"" + Schema() + "\".btrieve_files SET records = records");
    AwaitNotice(before);
    const CallOut out = Get(kGetFirst);
    EXPECT_EQ(out.status, status) << harm;
    EXPECT_FALSE(out.dataTouched) << harm;
  }
}

}  // namespace
}  // namespace btrieve::test
