// Whole files on their way to a server and back: nothing of them is lost, what differs is found.
#include "ServerSite.h"
#include "btrieve/server/CopyIn.h"
#include "clients/TestFile.h"
#include "kit/ModelRun.h"
#include "tests/support/Setting.h"

namespace btrieve::test {
namespace {

using server::CopyIn;
using What = Difference::What;

class TransferTest : public ServerSite {
 protected:
  static std::unique_ptr<Storage> Local(const std::string& path) {
    auto file = std::make_unique<Storage>();
    file->Open(path);
    file->EnterRead();
    return file;
  }
  std::unique_ptr<Storage> Linked(const std::string& table) const {
    auto file = std::make_unique<Storage>();
    file->OpenForeign(std::make_unique<server::ServerFile>(LinkTo(table)));
    return file;
  }
  // "what slot rank" of the first difference.
  static std::string Differing(Storage& left, Storage& right) {
    const auto found = FindDifference(left, right, [](uint64_t) {});
    if (!found) return "none";
    return std::to_string(static_cast<int>(found->what)) + " " + std::to_string(found->slot) + " " +
           std::to_string(found->rank);
  }
  static std::string Expected(What what, int slot = kPhysicalSlot, int rank = 0) {
    return std::to_string(static_cast<int>(what)) + " " + std::to_string(slot) + " " +
           std::to_string(rank);
  }
  void CopyThere(const std::string& path, const std::string& table) const {
    const auto file = Local(path);
    server::ServerTransaction transaction(Link());
    server::CopyToServer(*file, *Link(), Schema(), table);
    transaction.Commit();
  }
};

// In the place of the file comes what has been to the server; the model then reads that.
TEST_F(TransferTest, BringsEveryFileBackAsItWas) {
  const uint32_t seed = qrn::test::Seed();
  for (uint32_t number = 0; number < qrn::test::Setting("QRN_SERVER_FILES", 12); ++number) {
    Choices choices(seed + number);
    const std::string table = "file" + std::to_string(number);
    const auto thereAndBack = [&](const std::string& path) {
      CopyThere(path, table);
      const auto linked = Linked(table);
      server::CopyToFile(*linked, path + ".back");
      EXPECT_EQ(Differing(*Local(path), *linked), "none");
      EXPECT_EQ(Differing(*Local(path), *Local(path + ".back")), "none");
      ASSERT_TRUE(PutInPlace(path + ".back", path));
    };
    ASSERT_EQ(RunModelThenRead(choices, 120, 200, thereAndBack), "")
        << "QRN_SEED=" << seed + number;
  }
}

class TransferredPairs : public TransferTest {
 protected:
  void SetUp() override {
    TransferTest::SetUp();
    file_.Make(CreateBlock({.recordLength = 8},
                           {{.flags = 0x102, .type = 1}, {.flags = 0x103, .type = 1}}));
    for (int32_t id = 0; id < 5; ++id) ASSERT_EQ(file_.Insert(Number(id) + Number(id)), 0);
    ASSERT_EQ(file_.Close(), 0);
    CopyThere(file_.Path(), "pairs");
  }
  TestFile file_;
};

struct ChangeCase {
  const char* sql;  // $ stands for the table
  What what;
  int slot, rank;
};
const ChangeCase kChanges[] = {
    {"UPDATE $ SET data = '\\x0200000009000000' WHERE pos = 3", What::Record, kPhysicalSlot, 2},
    {"UPDATE $ SET ver = 99 WHERE pos = 5", What::Record, kPhysicalSlot, 4},
    {"DELETE FROM $ WHERE pos = 4", What::Record, kPhysicalSlot, 3},
    {"DELETE FROM $ WHERE pos = 5", What::Missing, kPhysicalSlot, 4},
    {"INSERT INTO $ VALUES(9, 9, '', '\\x0900000009000000')", What::More, kPhysicalSlot, 5},
    {"UPDATE $ SET k2 = '\\x800000000000000900000000' WHERE pos = 1", What::Record, 1, 0},
    {"UPDATE $ SET k1 = null WHERE pos = 5", What::Missing, 0, 4},
};

TEST_F(TransferredPairs, DifferWhereOneRowDoes) {
  const auto local = Local(file_.Path());
  EXPECT_EQ(Differing(*local, *Linked("pairs")), "none");
  for (const ChangeCase& row : kChanges) {
    const server::ServerTransaction undone(Link());
    std::string sql = row.sql;
    Link()->Run(sql.replace(sql.find('$'), 1, server::TableName(Schema(), "pairs")));
    EXPECT_EQ(Differing(*local, *Linked("pairs")), Expected(row.what, row.slot, row.rank))
        << row.sql;
  }
}

TEST_F(TransferredPairs, ComeBackAlikeWhereAKeyHasGone) {
  ASSERT_EQ(file_.Open(), 0);
  ASSERT_EQ(file_.Call(kGetFirst, {.room = 8}).status, 0);
  const Bytes moved = Number(int32_t{77}) + Number(int32_t{0});  // to the end of its duplicates
  ASSERT_EQ(file_.Call(kUpdate, {.data = moved, .keyNumber = -1}).status, 0);
  ASSERT_EQ(file_.Call(kDropIndex, {.keyNumber = 1}).status, 0);
  ASSERT_EQ(file_.Close(), 0);
  const std::string back = file_.Path() + ".back";
  CopyThere(file_.Path(), "less");
  server::CopyToFile(*Linked("less"), back);
  EXPECT_EQ(Differing(*Local(file_.Path()), *Local(back)), "none");
}

TEST_F(TransferredPairs, TakeNoRowThatTheServerRefuses) {
  const std::string table = server::TableName(Schema(), "pairs");
  const auto copyTwice = [&] {
    CopyIn copy(*Link(), table + "(pos, ver, num, data)", 4);
    for (int64_t round = 0; round < 40000; ++round) {
      copy.BeginRow();
      copy.Add(int64_t{7});
      copy.Add(round);
      copy.Add(ByteView());
      copy.Add(ByteView());
    }
    copy.Finish();
  };
  EXPECT_EQ(StatusOf(copyTwice), kDuplicateKey);
  EXPECT_EQ(StatusOf([&] { CopyIn(*Link(), Schema() + ".nothing", 1).Finish(); }), kFileNotFound);
  {
    CopyIn givenUp(*Link(), table, 6);
    givenUp.BeginRow();
  }
  EXPECT_EQ(Link()->Ask("SELECT count(*) FROM " + table).Number(0, 0), 5);
}

}  // namespace
}  // namespace btrieve::test
