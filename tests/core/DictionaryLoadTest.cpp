#include <gtest/gtest.h>

#include <memory>

#include "FakeLexbase.h"
#include "Support.h"
#include "core/Dictionary.h"
#include "core/DictionaryLookup.h"

namespace qrn::test {
namespace {

struct DictionaryLoad : ::testing::Test {
  ~DictionaryLoad() override { DbDictFree(dictionary_); }

  Status Load() {
    DbDictFree(std::exchange(dictionary_, nullptr));
    return DbDictLoad(settings_, "/data", &dictionary_);
  }

  // "name@location#fileId/recordLength" of every table.
  std::string Tables() const {
    std::string text;
    for (int32_t i = 0; i < dictionary_->TableCount; ++i) {
      const DbTableInfo& table = dictionary_->Tables[i];
      text += std::string(table.Name) + "@" + table.Location + "#" + std::to_string(table.FileId) +
              "/" + std::to_string(table.RecordLength) + " ";
    }
    return text;
  }

  DbTableInfo& Table(int32_t id) { return dictionary_->Tables[id]; }

  QuorinSettings settings_;
  FakeLexbase lexbase_;
  Messages messages_;
  DbDictionary* dictionary_ = nullptr;
};

std::string Numbered(const char* stem, int number) {
  return std::string(stem).append(std::to_string(number));
}

std::string Show(const DbFieldInfo& field) {
  return std::string(field.Name) + ":" + std::to_string(field.Type) + "@" +
         std::to_string(field.Offset) + "+" + std::to_string(field.Size) + " id" +
         std::to_string(field.FieldId) + " dec" + std::to_string(field.Decimals) + " flags" +
         std::to_string(field.Flags);
}

std::string Show(const DbSegmentInfo& segment) {
  return std::to_string(segment.FieldId) + "@" + std::to_string(segment.Offset) + "+" +
         std::to_string(segment.Size) + " type" + std::to_string(segment.Type) + " part" +
         std::to_string(segment.Part) + " flags" + std::to_string(segment.Flags);
}

TEST_F(DictionaryLoad, IdsCloseUpWhereTheDictionarysOwnTablesAreLeftOut) {
  lexbase_.File(1, "X$File", "file.ddf", 16)
      .File(9, "Customer", "cust.btr")
      .File(2, "X$Field", "field.ddf", 16)
      .File(7, "Odd flags", "odd", 17)
      .File(5, "12345678901234567890", std::string(64, 'x').c_str());
  EXPECT_EQ(Load(), 0);
  EXPECT_EQ(Tables(), "Customer@cust.btr#9/0 Odd flags@odd#7/0 12345678901234567890@" +
                          std::string(64, 'x') + "#5/0 ");
  EXPECT_STREQ(dictionary_->DdfDir, "/data");
  EXPECT_EQ(lexbase_.Log(), "open(/data) close ");
  EXPECT_EQ(messages_.Take(), "");
}

TEST_F(DictionaryLoad, FieldsAndIndexNamesGoTheirWays) {
  lexbase_.File(4, "A", "a")
      .Field({1, 4, "Code", kString, 0, 5, 0, 0})
      .Field({2, 4, "Price", kDecimal, 6, 4, 2, 4})
      .Field({3, 4, "Xe$Own", kString, 0, 9})
      .Field({4, 4, "ByCode", kIndexName, 3, 0, 9, 0x104})
      .Field({5, 4, "Xi$Key", kIndexName, 3, 0})
      .Field({6, 4, "Check", kConstraintName, 0, 4})
      .Field({7, 99, "Lost", kString, 0, 4});
  ASSERT_EQ(Load(), 0);
  const DbTableInfo& table = Table(0);
  ASSERT_EQ(table.FieldCount, 2);
  EXPECT_EQ(Show(table.Fields[0]), "Code:0@0+5 id1 dec0 flags0");
  EXPECT_EQ(Show(table.Fields[1]), "Price:5@6+4 id2 dec2 flags4");
  ASSERT_EQ(table.NamedIndexCount, 1);
  // The flag word stands where the decimals should.
  EXPECT_EQ(Show(table.NamedIndexes[0]), "ByCode:255@3+0 id4 dec260 flags0");
}

struct PartsCase {
  const char* what;
  std::vector<std::pair<int16_t, int16_t>> rows;  // part, flags
  const char* flags;
};

TEST_F(DictionaryLoad, PartsCountedFromOneGoOnWithoutAFlag) {
  const PartsCase kCases[] = {
      {"two keys, the second of three parts", {{1, 3}, {1, 2}, {2, 2}, {3, 2}}, "3 18 18 2 "},
      {"flags that are there stay", {{1, 18}, {2, 2}, {1, 1}}, "18 2 1 "},
      {"counted from 0 the flag decides", {{0, 2}, {1, 2}, {2, 2}}, "2 2 2 "},
      {"one key a row", {{1, 2}, {1, 2}}, "2 2 "},
  };
  int16_t id = 4;
  for (const PartsCase& row : kCases) {
    lexbase_.File(id, row.what, "t");
    for (const auto& [part, flags] : row.rows) lexbase_.Index(id, 1, part, flags);
    ++id;
  }
  ASSERT_EQ(Load(), 0);
  for (int32_t table = 0; table < dictionary_->TableCount; ++table) {
    std::string flags;
    for (int32_t at = 0; at < Table(table).SegmentCount; ++at) {
      flags += std::to_string(Table(table).Segments[at].Flags) + " ";
    }
    EXPECT_EQ(flags, kCases[table].flags) << kCases[table].what;
  }
}

TEST_F(DictionaryLoad, RecordLengthIsTheEndOfTheLastField) {
  struct {
    const char* name;
    std::vector<FieldOf> fields;
    int32_t length;
  } const cases[] = {
      {"no field", {}, 0},
      {"one field at 0", {{1, 4, "a", kString, 0, 7}}, 7},
      {"all fields at 0", {{1, 4, "a", kString, 0, 7}, {2, 4, "b", kString, 0, 9}}, 7},
      {"in order", {{1, 4, "a", kString, 0, 7}, {2, 4, "b", kString, 7, 3}}, 10},
      {"out of order", {{1, 4, "b", kString, 7, 3}, {2, 4, "a", kString, 0, 70}}, 10},
      {"first of two that begin last", {{1, 4, "a", kString, 4, 1}, {2, 4, "b", kString, 4, 9}}, 5},
  };
  for (const auto& row : cases) {
    FakeLexbase rows;
    rows.File(4, "A", "a");
    for (const FieldOf& field : row.fields) rows.Field(field);
    ASSERT_EQ(Load(), 0) << row.name;
    EXPECT_EQ(Table(0).RecordLength, row.length) << row.name;
  }
}

TEST_F(DictionaryLoad, ListsGrowPastTheirBlocks) {
  lexbase_.File(4, "A", "a");
  for (int16_t i = 0; i < 100; ++i) {
    lexbase_.Field({i, 4, Numbered("f", i).c_str(), kString, i, 1});
    lexbase_.Field({i, 4, Numbered("n", i).c_str(), kIndexName, i, 1});
    lexbase_.Index(4, i, 0, 2);
  }
  ASSERT_EQ(Load(), 0);
  const DbTableInfo& table = Table(0);
  EXPECT_EQ(table.FieldCapacity, 128);
  EXPECT_EQ(table.SegmentCapacity, 100);
  for (int32_t i = 0; i < 100; ++i) {
    EXPECT_EQ(table.Fields[i].Name, Numbered("f", i));
    EXPECT_EQ(table.NamedIndexes[i].Name, Numbered("n", i));
    EXPECT_EQ(table.Segments[i].Offset, i);
  }
}

TEST_F(DictionaryLoad, TablesBeyondTheSlotsAreRefused) {
  for (int16_t i = 0; i < kMaxTables; ++i) lexbase_.File(i, "T", "t");
  EXPECT_EQ(Load(), 0);
  EXPECT_EQ(dictionary_->TableCount, kMaxTables);
  EXPECT_EQ(Table(kMaxTables).FieldCount, 0) << "the slot past the last is there and empty";
  lexbase_.File(4000, "T", "t");
  EXPECT_EQ(Load(), kFailure);
  EXPECT_EQ(dictionary_->TableCount, kMaxTables);
  EXPECT_EQ(lexbase_.OpenReadings(), 0);
}

TEST_F(DictionaryLoad, EveryLackOfMemoryIsReported) {
  lexbase_.File(4, "A", "a")
      .Field({1, 4, "f", kString, 0, 1})
      .Field({2, 4, "n", kIndexName, 0, 1})
      .Index(4, 1, 0, 0);
  int failures = 0;
  for (;; ++failures) {
    const MemoryRunsOut memory(failures);
    const Status status = Load();
    EXPECT_EQ(lexbase_.OpenReadings(), 0);
    if (!memory.Happened()) break;
    EXPECT_EQ(status, kFailure);
  }
  EXPECT_EQ(failures, 6) << "dictionary, tables, slots, and three lists";
}

TEST_F(DictionaryLoad, CopiesAreDeepAndClosed) {
  lexbase_.File(4, "A", "a").File(5, "B", "b");
  lexbase_.Field({1, 4, "f", kString, 0, 3}).Field({2, 4, "n", kIndexName, 0, 1}).Index(4, 1, 0, 0);
  ASSERT_EQ(Load(), 0);
  DbTableInfo& source = Table(0);
  source.IsOpen = source.IsVariable = 1;
  source.PosBlock[5] = 77;
  DbDictionary* copy = nullptr;
  ASSERT_EQ(DbDictCopy(*dictionary_, &copy), 0);
  const DbTableInfo& table = copy->Tables[0];
  EXPECT_STREQ(copy->DdfDir, "/data");
  EXPECT_EQ(table.IsOpen + table.IsVariable, 0);
  EXPECT_EQ(table.PosBlock[5], 77);
  EXPECT_EQ(table.RecordLength, 3);
  EXPECT_NE(table.Fields, source.Fields);
  EXPECT_STREQ(table.Fields[0].Name, "f");
  EXPECT_NE(table.Segments, source.Segments);
  EXPECT_NE(table.NamedIndexes, source.NamedIndexes);
  EXPECT_EQ(copy->Tables[1].Fields, nullptr) << "a table without fields is still to be loaded";
  DbDictFree(copy);
  source.IsOpen = 0;
}

TEST_F(DictionaryLoad, CopiesWithoutMemoryLeaveNothing) {
  lexbase_.File(4, "A", "a").Field({1, 4, "f", kString, 0, 3}).Index(4, 1, 0, 0);
  ASSERT_EQ(Load(), 0);
  for (int failing = 0; failing < 4; ++failing) {
    DbDictionary* copy = nullptr;
    const MemoryRunsOut memory(failing);
    EXPECT_EQ(DbDictCopy(*dictionary_, &copy), kFailure) << failing;
    EXPECT_EQ(copy, nullptr);
    EXPECT_EQ(messages_.Take().find("VE001 メモリ不足  Qrndb "), 0u);
  }
}

TEST_F(DictionaryLoad, NothingToFreeIsAFailure) { EXPECT_EQ(DbDictFree(nullptr), -1); }

struct DictionaryDeferred : DictionaryLoad {
  void SetUp() override {
    settings_.delayed_resolve = 1;
    lexbase_.File(4, "A", "a").File(6, "B", "b").File(8, "C", "c");
  }

  Status LoadB() { return DbDictLoadTable(settings_, Table(1)); }
};

TEST_F(DictionaryDeferred, TablesComeWithoutTheirFields) {
  lexbase_.Field({1, 6, "f", kString, 0, 3});
  ASSERT_EQ(Load(), 0);
  EXPECT_EQ(Tables(), "A@a#4/0 B@b#6/0 C@c#8/0 ");
  EXPECT_EQ(Table(1).Fields, nullptr);
  EXPECT_STREQ(settings_.DeferredDirectory, "/data");
  EXPECT_EQ(lexbase_.Log(), "open(/data) close ");
}

TEST_F(DictionaryDeferred, ATableLoadsItsOwnRows) {
  lexbase_.Field({1, 4, "a", kString, 0, 3})
      .Field({2, 6, "b1", kString, 0, 3, 1, 4})
      .Field({3, 6, "Xe$b", kString, 0, 3})
      .Field({4, 6, "name", kIndexName, 0, 3})
      .Field({5, 6, "b2", kConstraintName, 100, 4})
      .Field({6, 8, "c", kString, 0, 3})
      .Field({7, 6, "too late", kString, 0, 9})
      .Index(1, 2, 0, 0)
      .Index(6, 2, 0, 0x22)
      .Index(8, 6, 0, 0)
      .Index(6, 2, 0, 0);
  ASSERT_EQ(Load(), 0);
  ASSERT_EQ(LoadB(), 0);
  const DbTableInfo& table = Table(1);
  ASSERT_EQ(table.FieldCount, 2);
  EXPECT_EQ(Show(table.Fields[0]), "b1:0@0+3 id2 dec1 flags0") << "flags are not taken";
  EXPECT_EQ(Show(table.Fields[1]), "b2:227@100+4 id5 dec0 flags0");
  EXPECT_EQ(table.NamedIndexCount, 0);
  ASSERT_EQ(table.SegmentCount, 1);
  EXPECT_EQ(Show(table.Segments[0]), "2@0+3 type0 part0 flags2");
  EXPECT_EQ(table.RecordLength, 7) << "the sum of the sizes, whatever the offsets";
}

TEST_F(DictionaryDeferred, ATableWithoutRowsHasNoLength) {
  ASSERT_EQ(Load(), 0);
  EXPECT_EQ(LoadB(), 0);
  EXPECT_EQ(Table(1).RecordLength, 0);
}

TEST_F(DictionaryDeferred, FailuresAreShown) {
  lexbase_.Field({1, 6, "f", kString, 0, 3}).Index(6, 1, 0, 0);
  ASSERT_EQ(Load(), 0);
  struct {
    const char* call;
    int32_t code;
    const char *listText, *tableText;
  } const cases[] = {
      {"open", 12, "VE028 DDFOpen APIエラー(12); ", "VE028 DDFOpen APIエラー(12); "},
      {"file", 22, "VE029 DDF読み込みエラー(22); ", ""},
      {"field", 22, "", "VE030 DDF読み込みエラー; "},
      {"index", 94, "", "VE031 DDF読み込みエラー(94); "},
      {"close", 77, "VE812 DDFファイルクローズ・エラー(77); ",
       "VE812 DDFファイルクローズ・エラー(77); "},
  };
  for (const auto& row : cases) {
    lexbase_.Fail(row.call, row.code);
    EXPECT_EQ(LoadB(), row.tableText[0] != '\0' ? kFailure : kSuccess) << row.call;
    EXPECT_EQ(messages_.Take(), row.tableText);
    DbDictionary* list = nullptr;
    EXPECT_EQ(DbDictLoadTableList(settings_, "/data", &list),
              row.listText[0] != '\0' ? kFailure : kSuccess);
    EXPECT_EQ(messages_.Take(), row.listText);
    DbDictFree(list);
    EXPECT_EQ(lexbase_.OpenReadings(), 0) << row.call;
  }
}

TEST_F(DictionaryDeferred, AFailedTableIsStillToBeLoaded) {
  lexbase_.Field({1, 6, "f", kString, 0, 3}).Index(6, 1, 0, 0);
  ASSERT_EQ(Load(), 0);
  for (int failing = 0; failing < 2; ++failing) {
    const MemoryRunsOut memory(failing);
    EXPECT_EQ(LoadB(), kFailure);
    EXPECT_EQ(Table(1).Fields, nullptr);
    EXPECT_EQ(messages_.Take().find("VE001 メモリ不足  Qrndb "), 0u);
  }
  EXPECT_EQ(LoadB(), 0);
}

}  // namespace
}  // namespace qrn::test
