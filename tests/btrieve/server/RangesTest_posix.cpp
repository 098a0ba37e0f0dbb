// The ranges that the server counts by itself, which places in files are found by: right after
// whatever is done to a file, and told apart where they are not.
#include "ServerSite.h"
#include "clients/TestFile.h"
#include "kit/ModelRun.h"
#include "kit/ServerSchema.h"
#include "tests/support/Setting.h"

namespace btrieve::test {
namespace {

class Ranges : public ServerSite {
 protected:
  void SetUp() override {
    ServerSite::SetUp();
    MakeRangesSmall(*Link(), Schema());
  }
  uint64_t Wrong() const { return WrongRanges(*OtherLink(), Schema()); }
  int64_t Ask(const std::string& sql) const { return OtherLink()->Ask(Filled(sql)).Number(0, 0); }
  void Run(const std::string& sql) const { OtherLink()->Run(Filled(sql)); }

 private:
  static std::string Filled(std::string sql) {
    for (size_t at = sql.find('$'); at != sql.npos; at = sql.find('$')) {
      sql.replace(at, 1, server::Quoted(Schema()));
    }
    return sql;
  }
};

TEST_F(Ranges, FindEveryPlaceOfWhatWasMoved) {
  const uint32_t seed = qrn::test::Seed();
  for (uint32_t file = 0; file < qrn::test::Setting("QRN_SERVER_FILES", 6); ++file) {
    Choices choices(seed + file);
    const std::string table = "file" + std::to_string(file);
    const auto move = [&](const std::string& path) { Move(path, table); };
    ASSERT_EQ(RunModelThenRead(choices, 120, 200, move), "") << "QRN_SEED=" << seed + file;
    ASSERT_EQ(Wrong(), 0u) << "QRN_SEED=" << seed + file;
  }
}

// Numbers (key 0, unique), tens (key 1, duplicates, modifiable) and a value.
class RangedPairs : public Ranges {
 protected:
  static constexpr int32_t kRecords = 200;

  static Bytes Record(int32_t id, int32_t value = 0) {
    return Number(id) + Number(id / 10 + value) + Number(value);
  }
  void SetUp() override {
    Ranges::SetUp();
    const Bytes block =
        CreateBlock({.recordLength = 12},
                    {{.flags = 0x102, .type = 1}, {.position = 5, .flags = 0x103, .type = 1}});
    file_.Make(block);
    for (int32_t id = 0; id < kRecords; ++id) ASSERT_EQ(file_.Insert(Record(2 * id)), 0);
    ASSERT_EQ(file_.Close(), 0);
    Move(file_.Path(), "pairs");
    ASSERT_EQ(file_.Open(), 0);
  }
  Status Do(int operation, const Bytes& data = {}, int key = -1) {
    return file_.Call(operation, {.data = data, .room = 12, .keyNumber = key}).status;
  }
  // Changes all over the file; new numbers begin at `from`.
  void Work(int32_t from) {
    for (int32_t id = from; id < from + 40; ++id) {
      ASSERT_EQ(file_.Insert(Record(1 + 2 * (id % 2 != 0 ? id : 4000 - id))), 0);
    }
    for (int round = 0; round < 30; ++round) {
      ASSERT_EQ(Do(round == 0 ? kGetFirst : kGetNext, {}, 0), 0);
      if (round % 3 == 0) {
        ASSERT_EQ(Do(kDelete), 0);
      } else {
        const CallOut out = file_.Call(kGetPosition, {.room = 4});
        ASSERT_EQ(out.status, 0);
        const CallOut record =
            file_.Call(kGetDirect, {.data = out.data, .room = 12, .keyNumber = 0});
        const int32_t id = NumberAt<int32_t>(record.data, 0);
        ASSERT_EQ(Do(kUpdate, Record(id, round % 2 * (from + round)), 0), 0);
      }
    }
  }
  // Where a number stands along key 0, in hundredths of a percent.
  int PercentOf(int32_t id) {
    const CallOut out =
        file_.Call(kFindPercentage, {.data = Bytes(4), .key = Number(id), .keyNumber = 0});
    EXPECT_EQ(out.status, 0);
    return NumberAt<uint16_t>(out.data, 0);
  }

  TestFile file_;
};

TEST_F(RangedPairs, AreCutWhereTheyGrowAndGoWhereTheyEmpty) {
  const std::string ofKey = "SELECT count(*) FROM $.btrieve_ranges WHERE key = 1";
  EXPECT_GT(Ask(ofKey), kRecords / 16);  // the root of the records, and twice that, in each
  Work(500);
  EXPECT_EQ(Wrong(), 0u);
  const int64_t before = Ask(ofKey);
  while (Do(kGetLast, {}, 0) == 0) ASSERT_EQ(Do(kDelete), 0);
  EXPECT_EQ(Wrong(), 0u);
  EXPECT_GT(before, 1);
  EXPECT_EQ(Ask("SELECT count(*) FROM $.btrieve_ranges"), 3);
  EXPECT_EQ(Ask("SELECT count(*) FROM $.btrieve_ranges WHERE n <> 0 OR low <> ''"), 0);
}

// What a transaction has only written down counts for its own percentages, and goes with it.
TEST_F(RangedPairs, FollowTransactions) {
  for (const int kind : {0, static_cast<int>(kConcurrent)}) {
    const int before = PercentOf(200);
    ASSERT_EQ(Do(kBegin + kind), 0);
    Work(500);
    EXPECT_NE(PercentOf(200), before) << kind;
    ASSERT_EQ(Do(kAbort), 0);
    EXPECT_EQ(Wrong(), 0u) << kind;
    EXPECT_EQ(PercentOf(200), before) << kind;
    ASSERT_EQ(Do(kBegin + kind), 0);
    Work(1000 + kind);
    const int within = PercentOf(200);
    ASSERT_EQ(Do(kEnd), 0);
    EXPECT_EQ(Wrong(), 0u) << kind;
    EXPECT_EQ(PercentOf(200), within) << kind;
  }
  EXPECT_EQ(Ask("SELECT count(*) FROM $.btrieve_pending"), 0);
}

TEST_F(RangedPairs, ComeAndGoWithKeys) {
  const Seg third{.position = 9, .flags = 0x103, .type = 1};
  ASSERT_EQ(Do(kCreateIndex, SegmentBytes(third), 0), 0);
  Work(500);
  EXPECT_EQ(Wrong(), 0u);
  EXPECT_EQ(Ask("SELECT count(DISTINCT key) FROM $.btrieve_ranges"), 4);
  ASSERT_EQ(file_.Call(kDropIndex, {.keyNumber = 1}).status, 0);
  EXPECT_EQ(Do(kCreateIndex, SegmentBytes({.position = 5, .flags = 0x102, .type = 1}), 0),
            kDuplicateKey)
      << "and nothing of it stays";
  Work(1000);
  EXPECT_EQ(Wrong(), 0u);
  EXPECT_EQ(Ask("SELECT count(DISTINCT key) FROM $.btrieve_ranges"), 3);
}

TEST_F(RangedPairs, AreAsTheyWereAfterADeathInATransaction) {
  ASSERT_EQ(Do(kBegin), 0);
  Work(500);
  Run("SELECT pg_catalog.pg_terminate_backend(pid) FROM pg_catalog.pg_stat_activity "
      "WHERE pid <> pg_catalog.pg_backend_pid() AND application_name LIKE 'w64btrv%'");
  EXPECT_NE(Do(kEnd), 0);
  EXPECT_EQ(Wrong(), 0u);
  EXPECT_EQ(Ask("SELECT sum(n) FROM $.btrieve_ranges"), 3 * kRecords);
}

struct HarmCase {
  const char* sql;
  uint64_t wrong;
};
const HarmCase kWrongs[] = {
    {"UPDATE $.btrieve_ranges SET n = n + 1 WHERE key = 0 AND low = ''", 1},
    {"DELETE FROM $.btrieve_ranges WHERE key = 1 AND low = ''", 1},
    {"DELETE FROM $.btrieve_ranges WHERE key = 2", 1},
    {"INSERT INTO $.btrieve_pending VALUES(1, 1, '', 1)", 1},
};

TEST_F(RangedPairs, AreFoundWrongWhereTheyAre) {
  for (const HarmCase& row : kWrongs) {
    Run(row.sql);
    EXPECT_EQ(Wrong(), row.wrong) << row.sql;
    Run("UPDATE $.btrieve_files SET records = records");
    const server::ServerSpec spec = server::ReadServerSpec(*OtherLink(), Schema(), "pairs");
    server::CountRanges(*OtherLink(), {Schema(), "pairs", spec.id}, spec.keyIds);
    EXPECT_EQ(Wrong(), 0u) << row.sql;
  }
}

}  // namespace
}  // namespace btrieve::test
