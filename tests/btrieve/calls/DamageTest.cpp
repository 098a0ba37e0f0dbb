// Files that are wrong under right page checksums: each kind of row that nobody could have written
// is status 2 where it is met, every call comes back, and what is read is as long as a record.

#include "btrieve/pages/CheckedVfs.h"
#include "btrieve/pages/Sqlite.h"
#include "btrieve/system/HostFile.h"
#include "kit/DamagedFile.h"
#include "kit/EveryRead.h"
#include "tests/support/Test.h"

namespace btrieve::test {
namespace {

void RunOn(const std::string& path, const std::string& sql) {
  ASSERT_TRUE(RegisterCheckedVfs());
  const Connection connection(SqliteName(path), SQLITE_OPEN_READWRITE);
  connection.Run(sql.c_str());
}

bool IsAsLong(const Bytes& record) { return record.size() == kGoodRecord; }

// Opens the file, reads it in every way, writes a little: the statuses met.
std::set<Status> StatusesOn(const std::string& path) {
  ThisProcess process;
  const Status opened = process.Call(kOpen, 0, {.key = PathKey(path)}).status;
  if (opened != 0) return {opened};
  EveryRead reads({.keys = 2, .recordLength = kGoodRecord, .wasWritten = IsAsLong});
  EXPECT_EQ(reads.Run(process, 0), "");
  const Bytes index = SegmentBytes({.position = 9, .length = 8, .flags = 0x101});
  reads.met.insert(process.Call(kCreateIndex, 0, {.data = index}).status);
  return reads.met;
}

std::set<Status> StatusesOf(const Bytes& file) {
  const Folder folder;
  WriteBytes(folder.Path("bad.dat"), file);
  return StatusesOn(folder.Path("bad.dat"));
}

struct RowCase {
  const char *what, *sql;
};

// clang-format off
const RowCase kRowCases[] = {
    {"a record shorter than the fixed part",   "UPDATE rec SET data=x'0102' WHERE pos=7"},
    {"an empty record",                        "UPDATE rec SET data=x'' WHERE pos=300"},
    {"a record longer than fixed ones are",    "UPDATE rec SET data=zeroblob(41) WHERE pos=7"},
    {"a record longer than any",               "UPDATE rec SET data=zeroblob(70000) WHERE pos=7"},
    {"a row longer than any",                  "UPDATE rec SET data=zeroblob(5000000) WHERE pos=7"},
    {"a number for a record",                  "UPDATE rec SET data=12345 WHERE pos=7"},
    {"order numbers that are cut off",         "UPDATE rec SET num=x'010203' WHERE pos=7"},
    {"a record at position 0",                 "UPDATE rec SET pos=0 WHERE pos=7"},
    {"a record below all positions",           "UPDATE rec SET pos=-5 WHERE pos=7"},
    {"a record above all positions",           "UPDATE rec SET pos=5000000000 WHERE pos=7"},
    {"an entry without its record",            "DELETE FROM rec WHERE pos=7"},
    {"an entry that is cut off",               "UPDATE k2 SET e=x'80' WHERE pos=7"},
    {"an entry longer than any",               "UPDATE k2 SET e=zeroblob(900) WHERE pos=7"},
    {"an empty entry",                         "UPDATE k1 SET e=x'' WHERE pos=7"},
    {"an entry that leads to position 0",      "UPDATE k1 SET pos=0 WHERE pos=7"},
    {"an entry that leads above all",          "UPDATE k1 SET pos=4294967303 WHERE pos=7"},
    {"an entry that leads to a text",          "UPDATE k1 SET pos='seven' WHERE pos=7"},
    {"no counters",                            "DELETE FROM head"},
    {"counters cut off",                       "UPDATE head SET n=x'0102'"},
    {"next position 0",                        "UPDATE head SET n=zeroblob(32)"},
    {"more records than positions",            "UPDATE head SET n=x'0500000006000000'||zeroblob(24)"},
    {"more values than records",               "UPDATE head SET n=x'2D0100002C010000'||zeroblob(16)||x'FF00000000100000'"},
    {"no specification",                       "DELETE FROM spec"},
    {"key ids cut off",                        "UPDATE spec SET ids=x'0300'"},
    {"one id for two keys",                    "UPDATE spec SET ids=x'030001000100'"},
    {"an id that is still to be given",        "UPDATE spec SET ids=x'020001000200'"},
    {"an owner name longer than any",          "UPDATE spec SET owner=zeroblob(26)"},
    {"an owner mode that none is",             "UPDATE spec SET owner=x'094142'"},
    {"no counts of a key",                     "DELETE FROM range WHERE k=1"},
    {"a first stretch that begins late",       "UPDATE range SET low=x'80000001' WHERE k=1"},
    {"a stretch that begins with half an entry", "INSERT INTO range VALUES(1, x'8000', 0)"},
    {"a count below zero",                     "UPDATE range SET n=-1 WHERE k=2"},
    {"a count without end",                    "UPDATE range SET n=2147483647 WHERE k=2"},
    {"a count that is too low",                "UPDATE range SET n=100 WHERE k=0"},
    {"a table that is none of ours",           "CREATE TABLE other(a)"},
    {"a trigger",                              "CREATE TRIGGER t AFTER INSERT ON rec BEGIN DELETE FROM rec; END"},
    {"a view in a table's place",              "DROP TABLE redo; CREATE VIEW redo AS WITH RECURSIVE r(i) AS "
                                               "(SELECT 1 UNION ALL SELECT i FROM r) SELECT i FROM r"},
    {"an index on a table",                    "CREATE INDEX other ON rec(ver)"},
    {"a table of another form",                "DROP TABLE redo; CREATE TABLE redo(tx, file, pos, num, data)"},
    {"a key's table missing",                  "DROP TABLE k2"},
};
// clang-format on

TEST(DamageTest, RowsThatCannotBe) {
  for (const RowCase& row : kRowCases) {
    SCOPED_TRACE(row.what);
    const Folder folder;
    const std::string path = folder.Path("bad.dat");
    WriteBytes(path, GoodFile());
    RunOn(path, row.sql);
    EXPECT_TRUE(StatusesOn(path).contains(kIoError));
  }
}

TEST(DamageTest, TheGoodFileHasNone) { EXPECT_FALSE(StatusesOf(GoodFile()).contains(kIoError)); }

// Counters that could be a file's, and are not this one's: what would take one below zero, or leave
// more values than records, is not done, for nobody could open the file afterwards.
TEST(DamageTest, WrongCountersOfALivingFileRefuseADelete) {
  const RowCase kCounters[] = {
      {"no values", "UPDATE head SET n=CAST(substr(n,1,24)||zeroblob(8) AS BLOB)"},
      {"no records",
       "UPDATE head SET n=CAST(substr(n,1,4)||zeroblob(4)||substr(n,9,16)||"
       "zeroblob(8) AS BLOB)"},
      {"one record",
       "UPDATE head SET n=CAST(substr(n,1,4)||x'01000000'||substr(n,9,16)||"
       "x'0100000001000000' AS BLOB)"},
  };
  const auto call = [](Client& client, int operation) {
    return client.Call(operation, 0, {.room = kGoodRecord}).status;
  };
  for (const RowCase& row : kCounters) {
    for (const int begin : {0, +kBegin, kBegin + kConcurrent}) {
      SCOPED_TRACE(std::string(row.what) + " " + std::to_string(begin));
      const Folder folder;
      const std::string path = folder.Path("bad.dat");
      WriteBytes(path, GoodFile());
      RunOn(path, row.sql);
      ThisProcess process;
      ASSERT_EQ(process.Call(kOpen, 0, {.key = PathKey(path)}).status, 0);
      if (begin != 0) {
        ASSERT_EQ(call(process, begin), 0);
      }
      ASSERT_EQ(call(process, kGetFirst), 0);
      const Status deleted = call(process, kDelete);
      const Status ended = begin != 0 ? call(process, kEnd) : kOk;
      EXPECT_EQ(begin != 0 ? ended : deleted, begin != 0 ? kTransactionNotWritten : kIoError);
      EXPECT_EQ(call(process, kClose), 0);
      EXPECT_EQ(process.Call(kOpen, 0, {.key = PathKey(path)}).status, 0);
      EXPECT_EQ(process.Call(kGetFirst, 0, {.room = kGoodRecord}).data, GoodRecord(0));
    }
  }
}

// The pages of a tree by kind: 5 and 2 lead on to others, 13 and 10 hold rows and entries.
std::vector<size_t> PagesOfKind(const Bytes& file, uint8_t kind) {
  std::vector<size_t> pages;
  for (size_t at = kStoragePageSize; at < file.size(); at += kStoragePageSize) {
    if (file[at] == kind) pages.push_back(at);
  }
  return pages;
}

void PointAll(Bytes& file, size_t inner, uint32_t child) {
  const uint8_t bytes[] = {0, 0, 0, static_cast<uint8_t>(child)};
  std::copy_n(bytes, 4, &file[inner + 8]);
  const int cells = file[inner + 3] << 8 | file[inner + 4];
  for (int cell = 0; cell < cells; ++cell) {
    const int offset = file[inner + 12 + 2 * cell] << 8 | file[inner + 13 + 2 * cell];
    std::copy_n(bytes, 4, &file[inner + offset]);
  }
}

struct TreeCase {
  const char* what;
  uint8_t kind;
  uint32_t
      child;  // the page all of them lead to; 0 the first leaf, 1 the page itself, 2 past the end
};
const TreeCase kTrees[] = {
    {"records: one leaf again and again", 5, 0},
    {"records: pages in a circle", 5, 1},
    {"records: past the end", 5, 2},
    {"entries: one leaf again and again", 2, 0},
    {"entries: pages in a circle", 2, 1},
    {"entries: past the end", 2, 2},
};

TEST(DamageTest, TreesThatLeadAstray) {
  for (const TreeCase& tree : kTrees) {
    SCOPED_TRACE(tree.what);
    Bytes file = GoodFile();
    for (const size_t inner : PagesOfKind(file, tree.kind)) {
      const uint32_t first = file[inner + file[inner + 12] * 256 + file[inner + 13] + 3];
      const uint32_t targets[] = {first, static_cast<uint32_t>(inner / kStoragePageSize + 1), 250};
      PointAll(file, inner, targets[tree.child]);
    }
    RenewPageSums(file);
    EXPECT_TRUE(StatusesOf(file).contains(kIoError));
  }
}

// Each leaf in the place of the next one, which is of another key or table where one ends.
TEST(DamageTest, PagesOfOtherTrees) {
  const Bytes& good = GoodFile();
  int told = 0;
  int untold = 0;
  for (const uint8_t kind : {uint8_t{10}, uint8_t{13}}) {
    const std::vector<size_t> leaves = PagesOfKind(good, kind);
    ASSERT_GT(leaves.size(), 2u);
    for (size_t at = 0; at < leaves.size(); ++at) {
      Bytes file = good;
      std::copy_n(&good[leaves[at]], kStoragePageSize, &file[leaves[(at + 1) % leaves.size()]]);
      RenewPageSums(file);
      StatusesOf(file).contains(kIoError) ? ++told : ++untold;
    }
  }
  // A table that nothing asks for may hold anything.
  EXPECT_GT(told, 3 * untold);
}

// What is held of the page would keep the state that was read from ever being let go of.
TEST(DamageTest, ARootThatIsNoneHoldsNoStateBack) {
  const Folder folder;
  const std::string path = folder.Path("bad.dat");
  Bytes bytes = GoodFile();
  WriteBytes(path, bytes);
  {
    ASSERT_TRUE(RegisterCheckedVfs());
    const Connection connection(SqliteName(path), SQLITE_OPEN_READWRITE);
    Statement root = connection.Prepare("SELECT rootpage FROM sqlite_schema WHERE name='k2'");
    ASSERT_TRUE(root.Step());
    bytes[static_cast<size_t>(root.Number(0) - 1) * kStoragePageSize] = 77;
  }
  RenewPageSums(bytes);
  WriteBytes(path, bytes);
  ThisProcess process;
  ASSERT_EQ(process.Call(kOpen, 0, {.key = PathKey(path)}).status, 0);
  ASSERT_EQ(process.Call(kGetFirst, 0, {.room = kGoodRecord, .keyNumber = 1}).status, kIoError);
  RunOn(path, "UPDATE rec SET ver=ver+1, data=substr(data,1,39)||x'21' WHERE pos=1");
  const CallOut first = process.Call(kStepFirst, 0, {.room = kGoodRecord});
  EXPECT_EQ(first.status, 0);
  EXPECT_EQ(first.data.back(), 0x21);
}

// A record that goes on in further pages, each of which is read with its checksum.
TEST(DamageTest, LongRecordsAreCheckedWhole) {
  const Folder folder;
  const std::string path = folder.Path("long.dat");
  const Bytes create = CreateBlock({.recordLength = 8, .flags = 1}, {{.flags = 0x102, .type = 1}});
  const Bytes record = Number(1) + Bytes(30000, 'x');
  {
    ThisProcess process;
    ASSERT_EQ(process.Call(kCreate, 0, {.data = create, .key = PathKey(path)}).status, 0);
    ASSERT_EQ(process.Call(kOpen, 0, {.key = PathKey(path)}).status, 0);
    ASSERT_EQ(process.Call(kInsert, 0, {.data = record}).status, 0);
  }
  ThisProcess process;
  ASSERT_EQ(process.Call(kOpen, 0, {.key = PathKey(path)}).status, 0);
  Bytes file = ReadBytes(path);
  const Bytes piece(64, 'x');
  *std::find_end(file.begin(), file.end(), piece.begin(), piece.end()) = 'y';
  WriteBytes(path, file);
  EXPECT_EQ(process.Call(kGetFirst, 0, {.room = 40000}).status, kIoError);
}

}  // namespace
}  // namespace btrieve::test
