#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>

#include "FakeBtrieve.h"
#include "FakeLexbase.h"
#include "Support.h"
#include "core/Dictionary.h"
#include "core/Table.h"
#include "platform/CodePage.h"
#include "platform/Memory.h"
#include "tests/support/TempFolder.h"

namespace qrn::test {
namespace {

#ifdef _WIN32
constexpr char kSlash = '\\';
#else
constexpr char kSlash = '/';
#endif

// A closed table of one field of 10 bytes.
struct Table : ::testing::Test {
  Table() {
    FreeRecordBuffer(*table_);
    table_->IsOpen = 0;
    std::strcpy(table_->Location, "cust.btr");
  }

  // What the record manager says of the file.
  void Stat(int16_t recordLength, uint8_t flags) {
    btrieve_.Answer(15, [=](const BtrieveCall& call) {
      std::memcpy(call.data, &recordLength, 2);
      call.data[10] = flags;
      return int16_t{0};
    });
  }

  Status Open(const char* owner = "", int32_t mode = 0) {
    return DbTableOpen(engine_, *table_, directory_.Text().c_str(), owner, mode);
  }

  std::string State() {
    return "open=" + std::to_string(table_->IsOpen) +
           " variable=" + std::to_string(table_->IsVariable) +
           " size=" + std::to_string(table_->BufferSize) +
           " buffer=" + std::to_string(table_->BufferAllocated);
  }

  QuorinSettings settings_;
  DbEngine engine_{settings_};
  FakeBtrieve btrieve_;
  Messages messages_;
  TempFolder directory_;
  OpenTable table_{{MakeField("a", kString, 0, 10)}, {}, 10};
};

TEST_F(Table, PathsFollowTheLocation) {
  char shortPath[300];
  std::strcpy(table_->Location, "x.y");
  DbResolveFileName(*table_, directory_.Text().c_str(), shortPath);
  const std::string root = std::string(shortPath, std::strlen(shortPath) - 3);
  EXPECT_EQ(root.back(), kSlash);
  struct {
    const char* location;
    std::string path;
  } const cases[] = {
      {"cust.dat", root + "cust.dat"},  {"cust", root + "cust.btr"},
      {"C:\\d\\c.btr", "C:\\d\\c.btr"}, {"c:rel", "c:rel"},
      {"\\\\srv\\c", "\\\\srv\\c"},     {"", root + ".btr"},
      {"a.b.c", root + "a.b.c"},
  };
  for (const auto& row : cases) {
    CopyText(table_->Location, row.location);
    char path[kFilePathSize];
    EXPECT_EQ(DbResolveFileName(*table_, directory_.Text().c_str(), path), 0);
    EXPECT_EQ(path, row.path) << row.location;
  }
}

TEST_F(Table, APathThatDoesNotFitIsNoPath) {
  char path[kFilePathSize] = "stale";
  const std::string longer(kFilePathSize, 'd');
  EXPECT_EQ(DbResolveFileName(*table_, longer.c_str(), path), 0);
  EXPECT_STREQ(path, "") << "never the directory itself";
}

TEST_F(Table, OpenModesMapForTheControlsMethods) {
  const int32_t modes[] = {0, -1, -2, -3, -4, -32, -64, 0, 0};
  for (int32_t i = 0; i < 9; ++i) EXPECT_EQ(DbMapOpenMode(i), modes[i]);
  EXPECT_EQ(DbMapOpenMode(-1), 0);
}

TEST_F(Table, AFixedFileOpens) {
  Stat(10, 0);
  std::string path, owner;
  btrieve_.Answer(0, [&](const BtrieveCall& call) {
    path = reinterpret_cast<char*>(call.key);
    owner = reinterpret_cast<char*>(call.data);
    EXPECT_EQ(call.keyLength, static_cast<uint8_t>(path.size()));
    EXPECT_EQ(*call.dataLength, 7u);
    EXPECT_EQ(call.keyNumber, -2);
    return int16_t{0};
  });
  EXPECT_EQ(Open("Secret", 0x1FE), 0);
  EXPECT_EQ(owner, "Secret");
  EXPECT_TRUE(path.ends_with(std::string(1, kSlash) + "cust.btr")) << path;
  EXPECT_EQ(State(), "open=1 variable=0 size=10 buffer=11");
  EXPECT_EQ(messages_.Take(), "");
}

TEST_F(Table, ALongPathsLengthWraps) {
  Stat(10, 0);
  CopyText(table_->Location, std::string(60, 'x') + ".b");
  std::string deep = directory_.Text();
  while (deep.size() < 240) deep += "/.";
  size_t length = 0;
  btrieve_.Answer(0, [&](const BtrieveCall& call) {
    length = std::strlen(reinterpret_cast<char*>(call.key));
    EXPECT_EQ(call.keyLength, static_cast<uint8_t>(length));
    return int16_t{0};
  });
  ASSERT_EQ(DbTableOpen(engine_, *table_, deep.c_str(), "", 0), 0);
  EXPECT_GT(length, 255u);
}

TEST_F(Table, AVariableFileGetsTheLongBuffer) {
  Stat(3, 1);
  EXPECT_EQ(Open(), 0);
  EXPECT_EQ(State(), "open=1 variable=1 size=10 buffer=64512");
  EXPECT_EQ(DbTableClose(engine_, *table_), 0);
  EXPECT_EQ(State(), "open=0 variable=1 size=10 buffer=0") << "once variable, always";
}

TEST_F(Table, AnotherRecordLengthIsSuccessAndNoOpenTable) {
  Stat(12, 0);
  EXPECT_EQ(Open(), 0);
  EXPECT_EQ(messages_.Take(),
            "VE806 BtrieveﾌｧｲﾙとDDFファイルの定義が合致していません。(file=T,Btrieve=12,DDF=10); ");
  EXPECT_EQ(State(), "open=0 variable=0 size=10 buffer=11");
}

TEST_F(Table, FailedOpensPassTheirStatus) {
  EXPECT_EQ(DbTableOpen(engine_, *table_, "", "", 0), kNoShortPath);
  EXPECT_EQ(DbTableOpen(engine_, *table_, directory_.Path("none").c_str(), "", 0), kNoShortPath);
  EXPECT_EQ(btrieve_.TakeLog(), "");
  btrieve_.Answer(0, 12);
  EXPECT_EQ(Open(), 12);
  EXPECT_EQ(State(), "open=0 variable=0 size=10 buffer=11");
  btrieve_.Answer(0, 0);
  btrieve_.Answer(15, 3);
  EXPECT_EQ(Open(), 3);
  EXPECT_EQ(State(), "open=0 variable=0 size=10 buffer=11");
  EXPECT_EQ(messages_.Take(), "");
}

TEST_F(Table, OpensWithoutMemoryAreReported) {
  Stat(10, 1);
  const MemoryRunsOut memory(0);
  EXPECT_EQ(Open(), kFailure);
  EXPECT_EQ(State(), "open=0 variable=0 size=10 buffer=0");
  EXPECT_EQ(messages_.Take().find("VE001 メモリ不足  Qrndb "), 0u);
  const MemoryRunsOut later(1);
  EXPECT_EQ(Open(), kFailure);
  EXPECT_EQ(State(), "open=1 variable=1 size=10 buffer=11");
  EXPECT_EQ(messages_.Take().find("VE001 メモリ不足  Qrndb "), 0u);
}

TEST_F(Table, ATableWithoutFieldsLoadsThemFirst) {
  FakeLexbase lexbase;
  lexbase.Field({1, 4, "f", kString, 0, 6});
  DbTableInfo table{};
  table.FileId = 4;
  std::strcpy(settings_.DeferredDirectory, "/late");
  Stat(6, 0);
  EXPECT_EQ(DbTableOpen(engine_, table, directory_.Text().c_str(), "", 0), 0);
  EXPECT_EQ(lexbase.Log(), "open(/late) close ");
  EXPECT_EQ(table.IsOpen, 1);
  DbTableClose(engine_, table);
  lexbase.Fail("open", 35);
  DbTableInfo other{};
  EXPECT_EQ(DbTableOpen(engine_, other, directory_.Text().c_str(), "", 0), kFailure);
  EXPECT_EQ(DbTableCreate(engine_, other, "x"), kFailure);
  EXPECT_EQ(messages_.Take(), "VE028 DDFOpen APIエラー(35); VE028 DDFOpen APIエラー(35); ");
  FreeMemory(table.Fields);
}

TEST_F(Table, CreateSpecificationsComeFromTheDictionary) {
  constexpr int32_t kMore = kSegmentContinues;
  OpenTable table({MakeField("a", kString, 0, 10), MakeField("b", kInteger, 10, 4)},
                  {MakeSegment(0, 10, kMore | 2), MakeSegment(10, 4, 0x103), MakeSegment(4, 2, 1)},
                  14);
  table->Segments[1].Type = kAutoInc;
  engine_.NullKeyValue = 0x20;
  std::string specs, path;
  btrieve_.Answer(14, [&](const BtrieveCall& call) {
    specs = Hex(call.data, *call.dataLength);
    path = reinterpret_cast<char*>(call.key);
    EXPECT_NE(call.posBlock, table->PosBlock);
    EXPECT_EQ(call.keyLength + call.keyNumber, 0);
    return int16_t{0};
  });
  EXPECT_EQ(DbTableCreate(engine_, *table, "/d/new.btr"), 0);
  EXPECT_EQ(path, "/d/new.btr");
  EXPECT_EQ(specs,
            "0E000010020000000000820000000000"
            "01000A00120000000000002000000000"
            "0B000400030100000000"
            "0F2000000000"
            "05000200010000000000002000000000");
  btrieve_.Answer(14, 25);
  EXPECT_EQ(DbTableCreate(engine_, *table, "/d/new.btr"), 25);
  EXPECT_EQ(messages_.Take(), "VE007 Btrieveファイルの生成に失敗(rc=25); ");
  const MemoryRunsOut memory(0);
  EXPECT_EQ(DbTableCreate(engine_, *table, "/d/new.btr"), kFailure);
}

TEST_F(Table, VariableFilesEndTheirFixedPartAtTheFirstLongText) {
  struct {
    const char* name;
    std::vector<DbFieldInfo> fields;
    const char* spec;  // length, page size, keys, 4 zeros, flags
  } const cases[] = {
      {"note last",
       {MakeField("a", kString, 0, 10), MakeField("n", kNote, 10, 500)},
       "0A00001000000000000083"},
      {"two of them",
       {MakeField("l", kLVar, 3, 50), MakeField("n", kNote, 60, 500)},
       "0000001000000000000083"},
      {"sizes, not offsets",
       {MakeField("a", kString, 90, 7), MakeField("n", kLVar, 2, 9)},
       "0700001000000000000083"},
      {"none", {MakeField("a", kString, 0, 10)}, "1E00001000000000000082"},
  };
  for (const auto& row : cases) {
    OpenTable table(row.fields, {}, 30);
    btrieve_.Answer(14, [&](const BtrieveCall& call) {
      EXPECT_EQ(Hex(call.data, 11), row.spec) << row.name;
      EXPECT_EQ(*call.dataLength, 16u);
      return int16_t{0};
    });
    EXPECT_EQ(DbTableCreate(engine_, *table, "/d/new.btr"), 0);
  }
}

TEST_F(Table, OpeningAllCreatesWhatIsMissing) {
  DbTableInfo tables[3] = {*table_, *table_, *table_};
  std::strcpy(tables[0].Location, "there.btr");
  std::strcpy(tables[1].Location, "open.btr");
  std::strcpy(tables[2].Location, "missing.btr");
  tables[1].IsOpen = 1;
  DbDictionary dictionary{};
  dictionary.Tables = tables;
  dictionary.TableCount = 3;
  std::ofstream(directory_.Path("there.btr")) << "x";
  Stat(10, 0);
  std::string made;
  btrieve_.Answer(14, [&](const BtrieveCall& call) {
    made += reinterpret_cast<char*>(call.key);
    return int16_t{0};
  });
  EXPECT_EQ(DbOpenAllTables(engine_, dictionary, directory_.Text().c_str(), "", 0), 0);
  EXPECT_TRUE(made.ends_with("missing.btr")) << made;
  EXPECT_EQ(tables[0].IsOpen + tables[2].IsOpen, 2);
  EXPECT_EQ(DbDictCloseAll(engine_, dictionary), 0);

  btrieve_.Answer(0, 46);
  EXPECT_EQ(DbOpenAllTables(engine_, dictionary, directory_.Text().c_str(), "", 0), 46);
  EXPECT_EQ(messages_.Take(), "VE803 Btrieveファイル T のオープンに失敗。(46); ");
  FreeRecordBuffer(tables[0]);
}

TEST_F(Table, WithoutADirectoryNothingIsMade) {
  EXPECT_EQ(DbTableCreateIn(engine_, *table_, ""), kNoShortPath);
  EXPECT_EQ(DbOpenOrCreate(engine_, *table_, "", "", 0), kNoShortPath);
  EXPECT_EQ(btrieve_.TakeLog(), "");
  EXPECT_EQ(messages_.Take(), "VE803 Btrieveファイル T のオープンに失敗。(-16); ");
  std::string made;
  btrieve_.Answer(14, [&](const BtrieveCall& call) {
    made = reinterpret_cast<char*>(call.key);
    return int16_t{0};
  });
  CopyText(table_->Location, "C:\\d\\c.btr");
  EXPECT_EQ(DbTableCreateIn(engine_, *table_, ""), 0) << "a whole path needs none";
  EXPECT_EQ(made, "C:\\d\\c.btr");
}

// What stands there but cannot be looked at is not replaced: a file's owner may have locked it up.
TEST_F(Table, OnlyAFileThatIsCertainlyMissingIsMade) {
#ifdef _WIN32
  CopyText(table_->Location, "a|b.btr");
#else
  CopyText(table_->Location, "loop.btr");
  std::filesystem::create_symlink("loop.btr", directory_.Path("loop.btr"));
#endif
  btrieve_.Answer(0, 94);
  EXPECT_EQ(DbOpenOrCreate(engine_, *table_, directory_.Text().c_str(), "", 0), 94);
  EXPECT_EQ(btrieve_.TakeLog().substr(0, 2), "0 ");
  EXPECT_EQ(messages_.Take(), "VE803 Btrieveファイル T のオープンに失敗。(94); ");
}

TEST_F(Table, ClosingAllGoesOnAfterAFailure) {
  DbTableInfo tables[2] = {*table_, *table_};
  tables[0].IsOpen = tables[1].IsOpen = 1;
  DbDictionary dictionary{};
  dictionary.Tables = tables;
  dictionary.TableCount = 2;
  btrieve_.Answer(1, 41);
  EXPECT_EQ(DbDictCloseAll(engine_, dictionary), 0);
  EXPECT_EQ(messages_.Take(),
            "VE813 Btrieveファイル T のクローズ・エラー(41); "
            "VE813 Btrieveファイル T のクローズ・エラー(41); ");
  btrieve_.Answer(1, 0);
  EXPECT_EQ(DbReset(engine_, &dictionary), 0);
  EXPECT_EQ(tables[0].IsOpen + tables[1].IsOpen, 0);
  btrieve_.TakeLog();
  btrieve_.Answer(28, 20);
  EXPECT_EQ(DbReset(engine_, nullptr), 20);
  EXPECT_EQ(btrieve_.TakeLog(), "28 noblock len=0 key=- kn=0; ");
}

TEST_F(Table, LocationsTakeSixtySixBytes) {
  EXPECT_EQ(DbSetFileName(*table_, std::string(66, 'y').c_str()), 0);
  EXPECT_EQ(DbSetFileName(*table_, std::string(67, 'z').c_str()), kFailure);
  EXPECT_EQ(table_->Location, std::string(66, 'y'));
  table_->IsOpen = 1;
  EXPECT_EQ(DbSetFileName(*table_, "x"), kAlreadyOpen);
  EXPECT_EQ(table_->Location, std::string(66, 'y'));
}

}  // namespace
}  // namespace qrn::test
