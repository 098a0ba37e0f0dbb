// Create, Open in its modes, owners, indexes added and dropped.
#include <gtest/gtest.h>

#include <fstream>

#include "btrieve/pages/CheckedVfs.h"
#include "btrieve/pages/Sqlite.h"
#include "btrieve/system/HostFile.h"
#include "clients/TestFile.h"

namespace btrieve::test {
namespace {

Status CreateAt(TestFile& file, const std::string& path, int keyNumber = 0) {
  return file
      .Call(kCreate, {.data = PairBlock(), .key = Padded(path, 255, '\0'), .keyNumber = keyNumber})
      .status;
}

Status OpenAt(TestFile& file, const std::string& path, int block = 0) {
  return file.Call(kOpen, {.key = Padded(path, 255, '\0')}, block).status;
}

TEST(Create, ReplacesAFileOrRefusesTo) {
  TestFile file;
  EXPECT_EQ(file.Create(PairBlock(), -1), 0);
  EXPECT_EQ(file.Create(PairBlock(), -1), kFileExists);
  ASSERT_EQ(file.Open(), 0);
  ASSERT_EQ(file.Insert(Pair(1)), 0);
  EXPECT_EQ(file.Create(PairBlock()), kCreateError) << "an open file";
  ASSERT_EQ(file.Close(), 0);
  EXPECT_EQ(file.Create(PairBlock()), 0);
  ASSERT_EQ(file.Open(), 0);
  EXPECT_EQ(file.Counts(), "0 0");
}

TEST(Create, RefusedOneLeavesTheFileThatIsThere) {
  TestFile file(PairBlock());
  ASSERT_EQ(file.Insert(Pair(1)), 0);
  ASSERT_EQ(file.Close(), 0);
  Bytes block = PairBlock();
  block[2] = 1;
  EXPECT_EQ(file.Create(block), kPageSize);
  ASSERT_EQ(file.Open(), 0);
  EXPECT_EQ(file.Walk(0), ToHex(Pair(1)));
}

TEST(Create, EachBrokenRuleThroughTheCall) {
  const struct {
    Head head;
    std::vector<Seg> segments;
    Status status;
  } kRows[] = {
      {{.pageSize = 4000}, {{}}, kPageSize},
      {{}, std::vector<Seg>(120), kNumberOfKeys},
      {{}, {{.position = 14}}, kKeyPosition},
      {{.recordLength = 3}, {}, kRecordLength},
      {{}, {{.length = 0}}, kKeyLength},
      {{}, {{.flags = 0x111}, {.flags = 0x100}}, kInconsistentKeyFlags},
      {{}, {{.flags = 0x120}}, kCollatingSequence},
      {{}, {{.type = 12}}, kKeyType},
      {{}, {{.flags = 0x101, .type = 15}}, kAutoIncrement},
  };
  TestFile file;
  for (const auto& row : kRows) {
    EXPECT_EQ(file.Create(CreateBlock(row.head, row.segments)), row.status) << row.status;
    EXPECT_EQ(file.Open(), kFileNotFound) << row.status;
  }
  EXPECT_EQ(file.Create(Bytes(15)), kDataBufferLength);
}

TEST(Create, TakesNamesThatFilesCanHaveOnly) {
  TestFile file;
  EXPECT_EQ(CreateAt(file, ""), kInvalidFileName);
  EXPECT_EQ(CreateAt(file, "   "), kInvalidFileName);
  EXPECT_EQ(CreateAt(file, std::string(255, 'x')), kInvalidFileName);
  EXPECT_EQ(CreateAt(file, "btrv:///?file=x.dat"), kInvalidFileName);
  const Status missing = CreateAt(file, file.Path("no/such/folder/x.dat"));
  EXPECT_TRUE(missing == kCreateError || missing == kDirectoryError) << missing;
  EXPECT_EQ(CreateAt(file, file.Path("a name.dat") + "  "), 0);
  EXPECT_EQ(OpenAt(file, file.Path("a name.dat")), 0);
}

TEST(Open, TellsWhatIsWrong) {
  TestFile file;
  EXPECT_EQ(OpenAt(file, file.Path("none.dat")), kFileNotFound);
  EXPECT_EQ(OpenAt(file, ""), kInvalidFileName);
  EXPECT_EQ(OpenAt(file, std::string(255, 'x')), kInvalidFileName);
  std::ofstream(file.Path("empty.dat")) << "";
  EXPECT_EQ(OpenAt(file, file.Path("empty.dat")), kNotABtrieveFile);
  std::ofstream(file.Path("text.dat")) << std::string(20000, 'x');
  EXPECT_EQ(OpenAt(file, file.Path("text.dat")), kNotABtrieveFile);
  std::filesystem::create_directory(file.Path("folder"));
  EXPECT_NE(OpenAt(file, file.Path("folder")), 0);
  EXPECT_EQ(file.Call(kStat, {.room = 100}).status, kNotOpen);
}

struct ModeCase {
  int first, second;
  Status status;
};

TEST(Open, ExclusiveMeetsNoOther) {
  const ModeCase kModes[] = {{0, 0, 0},    {0, -1, 0},   {0, -2, 0},    {-1, 0, 0},   {0, -4, 88},
                             {-4, 0, 88},  {-4, -2, 88}, {-4, -4, 88},  {-2, -4, 88}, {0, -36, 88},
                             {-68, 0, 88}, {0, -3, 0},   {-32, -64, 0}, {0, 5, 0}};
  for (const ModeCase& row : kModes) {
    TestFile file;
    ASSERT_EQ(file.Create(PairBlock()), 0);
    EXPECT_EQ(file.Open(row.first, 0), 0);
    EXPECT_EQ(file.Open(row.second, 1), row.status) << row.first << " " << row.second;
    EXPECT_EQ(file.Close(0), 0);
    EXPECT_EQ(file.Open(-4, 2), row.status == 0 ? 88 : 0) << row.first << " " << row.second;
  }
}

TEST(Open, ReadOnlyRefusesWrites) {
  for (const int mode : {-2, -34, -66}) {
    TestFile file(PairBlock());
    ASSERT_EQ(file.Insert(Pair(1)), 0);
    ASSERT_EQ(file.Close(), 0);
    ASSERT_EQ(file.Open(mode), 0);
    EXPECT_EQ(file.Walk(0), ToHex(Pair(1)));
    EXPECT_EQ(file.Insert(Pair(2)), kAccessDenied);
    ASSERT_EQ(file.Call(kGetFirst, {.room = 8}).status, 0);
    EXPECT_EQ(file.Call(kUpdate, {.data = Pair(1, 9)}).status, kAccessDenied);
    EXPECT_EQ(file.Call(kDelete, {}).status, kAccessDenied);
    EXPECT_EQ(file.Counts(), "1 1");
  }
}

TEST(Stop, ClosesEverything) {
  TestFile file(PairBlock());
  ASSERT_EQ(file.Insert(Pair(1)), 0);
  EXPECT_EQ(file.Call(kStop, {.noBlock = true}).status, 0);
  EXPECT_EQ(file.Call(kGetFirst, {.room = 8}).status, kNotOpen);
  EXPECT_EQ(file.Open(), 0);
  EXPECT_EQ(file.Walk(0), ToHex(Pair(1)));
}

Status SetOwner(TestFile& file, const std::string& name, int code, const std::string& second) {
  return file
      .Call(kSetOwner, {.data = Padded(name, name.size() + 1, '\0'),
                        .key = Padded(second, second.size() + 1, '\0'),
                        .keyNumber = code})
      .status;
}

Status OpenAs(TestFile& file, const std::string& owner) {
  const Bytes name = owner.empty() ? Bytes() : Padded(owner, owner.size() + 1, '\0');
  return file.Call(kOpen, {.data = name, .key = PathKey(file.Path())}).status;
}

TEST(Owner, KeepsTheFileFromOthers) {
  TestFile file(PairBlock());
  ASSERT_EQ(file.Insert(Pair(1)), 0);
  EXPECT_EQ(SetOwner(file, "secret", 0, "secret"), 0);
  EXPECT_EQ(SetOwner(file, "other", 0, "other"), kOwnerAlreadySet);
  ASSERT_EQ(file.Close(), 0);
  EXPECT_EQ(OpenAs(file, ""), kOwnerInvalid);
  EXPECT_EQ(OpenAs(file, "Secret"), kOwnerInvalid);
  EXPECT_EQ(OpenAs(file, "secret "), 0);
  EXPECT_EQ(file.Insert(Pair(2)), 0);
  EXPECT_EQ(file.Call(kClearOwner, {}).status, 0);
  ASSERT_EQ(file.Close(), 0);
  EXPECT_EQ(OpenAs(file, ""), 0);
  EXPECT_EQ(file.Counts(), "2 2");
}

TEST(Owner, CodeOneLetsOthersRead) {
  TestFile file(PairBlock());
  ASSERT_EQ(SetOwner(file, "secret", 1, "secret"), 0);
  ASSERT_EQ(file.Close(), 0);
  EXPECT_EQ(OpenAs(file, ""), 0);
  EXPECT_EQ(file.Insert(Pair(1)), kAccessDenied);
  EXPECT_EQ(file.Call(kClearOwner, {}).status, kAccessDenied);
  ASSERT_EQ(file.Close(), 0);
  EXPECT_EQ(OpenAs(file, "secret"), 0);
  EXPECT_EQ(file.Insert(Pair(1)), 0);
}

TEST(Owner, RefusesNamesThatAreNone) {
  TestFile file(PairBlock());
  EXPECT_EQ(SetOwner(file, "one", 0, "two"), kOwnerInvalid);
  EXPECT_EQ(SetOwner(file, "", 0, ""), kOwnerInvalid);
  EXPECT_EQ(SetOwner(file, "    ", 0, "    "), kOwnerInvalid);
  EXPECT_EQ(SetOwner(file, "nine char", 0, "nine char"), kOwnerInvalid);
  EXPECT_EQ(SetOwner(file, "secret", 2, "secret"), kNotAllowed);
  const Bytes name = Padded("a name of 24 characters!", 25, '\0');
  EXPECT_EQ(file.Call(17029, {.data = name, .key = name}).status, 0);
  ASSERT_EQ(file.Close(), 0);
  EXPECT_EQ(OpenAs(file, "a name of 24 characters!"), 0);
}

Bytes ThreeKeys() {
  return CreateBlock({.recordLength = 12}, {{.position = 1, .flags = 0x102, .type = 1},
                                            {.position = 5, .flags = 0x103, .type = 1},
                                            {.position = 9, .flags = 0x103, .type = 1}});
}

Bytes Triple(int32_t a, int32_t b, int32_t c) { return Number(a) + Number(b) + Number(c); }

std::string Ids(TestFile& file, int key) {
  std::string text;
  CallOut out = file.Call(kGetFirst, {.room = 12, .keyNumber = key});
  for (; out.status == 0; out = file.Call(kGetNext, {.room = 12, .keyNumber = key})) {
    text += std::to_string(NumberAt<int32_t>(out.data, 0));
  }
  return out.status == kEndOfFile ? text : "#" + std::to_string(out.status);
}

struct IndexTest : testing::Test {
  IndexTest() : file_(ThreeKeys()) {
    EXPECT_EQ(file_.Insert(Triple(1, 30, 2)), 0);
    EXPECT_EQ(file_.Insert(Triple(2, 20, 3)), 0);
    EXPECT_EQ(file_.Insert(Triple(3, 10, 1)), 0);
  }
  Status Drop(int keyNumber) { return file_.Call(kDropIndex, {.keyNumber = keyNumber}).status; }
  Status Add(const Seg& segment, int keyNumber = 0) {
    return file_.Call(kCreateIndex, {.data = SegmentBytes(segment), .keyNumber = keyNumber}).status;
  }

  TestFile file_;
};

TEST_F(IndexTest, DroppedKeyMovesTheOthersDown) {
  EXPECT_EQ(Drop(1), 0);
  EXPECT_EQ(file_.Counts(), "3 3,3");
  EXPECT_EQ(Ids(file_, 1), "312");
  EXPECT_EQ(Ids(file_, 2), "#6");
  EXPECT_EQ(file_.Insert(Triple(4, 5, 0)), 0);
  EXPECT_EQ(Ids(file_, 1), "4312");
}

TEST_F(IndexTest, DroppedKeyMayLeaveAGap) {
  EXPECT_EQ(Drop(128 + 1), 0);
  EXPECT_EQ(Ids(file_, 1), "#6");
  EXPECT_EQ(Ids(file_, 2), "312");
  EXPECT_EQ(Add({.position = 5, .flags = 0x143, .type = 1}), 0);
  EXPECT_EQ(Ids(file_, 1), "123");
  EXPECT_EQ(Ids(file_, 2), "312");
  ASSERT_EQ(file_.Close(), 0);
  ASSERT_EQ(file_.Open(), 0);
  EXPECT_EQ(Ids(file_, 1) + " " + Ids(file_, 2), "123 312");
}

TEST_F(IndexTest, AddedKeyHoldsAllRecordsAndNewOnes) {
  EXPECT_EQ(Add({.position = 9, .flags = 0x142, .type = 1}), 0);
  EXPECT_EQ(Ids(file_, 3), "213");
  EXPECT_EQ(file_.Insert(Triple(4, 5, 9)), 0);
  EXPECT_EQ(file_.Insert(Triple(5, 5, 9)), kDuplicateKey);
  EXPECT_EQ(Ids(file_, 3), "4213");
  EXPECT_EQ(file_.Counts(), "4 4,4,4,4");
}

TEST_F(IndexTest, CollidingRecordsLeaveNothingBehind) {
  ASSERT_EQ(file_.Insert(Triple(4, 30, 4)), 0);
  const std::string before = ToHex(file_.Call(kStat, {.room = 999}).Returned());
  EXPECT_EQ(Add({.position = 5, .type = 1}), kDuplicateKey);
  EXPECT_EQ(ToHex(file_.Call(kStat, {.room = 999}).Returned()), before);
  EXPECT_EQ(Ids(file_, 3), "#6");
  EXPECT_EQ(Add({.position = 5, .flags = 0x101, .type = 1}), 0);
  EXPECT_EQ(Ids(file_, 3), "3214");
}

// Keys have come and gone until one id was left. A refused key spends none, and the file is as good
// as before when all are spent.
TEST_F(IndexTest, TheLastKeyIdIsGivenOnce) {
  ASSERT_EQ(file_.Insert(Triple(4, 30, 4)), 0);
  ASSERT_EQ(file_.Close(), 0);
  {
    ASSERT_TRUE(RegisterCheckedVfs());
    const Connection connection(SqliteName(file_.Path()), SQLITE_OPEN_READWRITE);
    connection.Run("UPDATE spec SET ids=x'FEFF010002000300'");
  }
  ASSERT_EQ(file_.Open(), 0);
  for (int tries = 0; tries < 2; ++tries) EXPECT_EQ(Add({.position = 5, .type = 1}), kDuplicateKey);
  EXPECT_EQ(Add({.position = 5, .flags = 0x101, .type = 1}), 0);
  EXPECT_EQ(Add({.position = 5, .flags = 0x141, .type = 1}), kNumberOfKeys);
  EXPECT_EQ(Drop(3), 0);
  EXPECT_EQ(Add({.position = 5, .flags = 0x101, .type = 1}), kNumberOfKeys);
  ASSERT_EQ(file_.Close(), 0);
  ASSERT_EQ(file_.Open(), 0);
  EXPECT_EQ(file_.Counts(), "4 4,3,4");
  EXPECT_EQ(Ids(file_, 0), "1234");
}

TEST_F(IndexTest, NumbersThatAreNoneOrTaken) {
  EXPECT_EQ(Drop(3), kInvalidKeyNumber);
  EXPECT_EQ(Drop(128 + 3), kInvalidKeyNumber);
  EXPECT_EQ(Add({}, 128 + 1), kInvalidKeyNumber);
  EXPECT_EQ(Add({}, 128 + 7), 0);
  EXPECT_EQ(Ids(file_, 7).size(), 3u);
}

TEST_F(IndexTest, ReadOnlyFileKeepsItsKeys) {
  ASSERT_EQ(file_.Close(), 0);
  ASSERT_EQ(file_.Open(-2), 0);
  EXPECT_EQ(Add({}), kAccessDenied);
  EXPECT_EQ(Drop(0), kAccessDenied);
}

TEST_F(IndexTest, DuplicatesOfAnAddedKeyStandByPosition) {
  ASSERT_EQ(file_.Insert(Triple(4, 10, 9)), 0);
  ASSERT_EQ(Drop(128 + 1), 0);
  ASSERT_EQ(Add({.position = 5, .flags = 0x103, .type = 1}, 128 + 1), 0);
  EXPECT_EQ(Ids(file_, 1), "3421");
  ASSERT_EQ(file_.Insert(Triple(0, 10, 9)), 0);
  EXPECT_EQ(Ids(file_, 1), "34021");
}

TEST(Stat, GivesTheBlockBack) {
  TestFile file(CreateBlock({.recordLength = 16, .flags = 130},
                            {{.flags = 256 + 128 + 8192 + 16384, .type = 1},
                             {.position = 5, .flags = 0x113, .nullValue = 7},
                             {.position = 9, .flags = 0x143, .type = 14, .nullValue = 8}}));
  const Bytes reply = file.Call(kStat, {.room = 200, .keyNumber = 0}).Returned();
  EXPECT_EQ(ToHex(reply),
            "10000010020000000000820000000000"
            "0100040080610000000001000000"
            "0000"
            "05000400130100000000000700000100"
            "090004004301000000000e0800000100");
}

TEST(Open, OneCursorTooManyLeavesItsFileClosed) {
  constexpr size_t kMostCursors = 8192;
  TestFile file(PairBlock());
  Bytes path = PathKey(file.Path());
  std::vector<Bytes> blocks(kMostCursors - 1, Bytes(128));
  for (Bytes& block : blocks) {
    ASSERT_EQ(BTRCALL(kOpen, block.data(), nullptr, nullptr, path.data(), 0, 0), kOk);
  }
  const std::string other = file.Path("other.dat");
  ASSERT_EQ(CreateAt(file, other), kOk);
  EXPECT_EQ(OpenAt(file, other, 1), kHandleTableFull);
  EXPECT_FALSE(std::filesystem::exists(other + "-wal"));
  ASSERT_EQ(file.Close(), kOk);
  EXPECT_EQ(OpenAt(file, other, 1), kOk);
}

}  // namespace
}  // namespace btrieve::test
