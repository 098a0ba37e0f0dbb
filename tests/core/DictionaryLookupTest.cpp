#include <gtest/gtest.h>

#include <cstring>

#include "Support.h"
#include "core/DictionaryLookup.h"

namespace qrn::test {
namespace {

// Keys: 0 = segments 0..2, 1 = segment 3, 2 = segments 4..5.
OpenTable ThreeKeys() {
  return {{MakeField("Code", kString, 0, 4, 0, 10), MakeField("Name", kString, 4, 4, 0, 11),
           MakeField("Code", kString, 8, 4, 0, 12), MakeField("", kString, 12, 4, 0, 13)},
          {MakeSegment(0, 4, kSegmentContinues, 10), MakeSegment(4, 4, kSegmentContinues, 11),
           MakeSegment(8, 4, 0, 12), MakeSegment(4, 4, 0, 11),
           MakeSegment(12, 4, kSegmentContinues, 13), MakeSegment(0, 4, 0, 99)},
          16};
}

TEST(DictionaryLookup, PositionsAndKeyNumbersMeet) {
  OpenTable table = ThreeKeys();
  struct {
    int32_t position, keyNumber;
  } const toKey[] = {{-1, 255}, {-2, 0}, {0, 0}, {1, 0}, {2, 0},
                     {3, 1},    {4, 2},  {5, 2}, {6, 3}, {99, 3}};
  for (const auto& row : toKey) {
    EXPECT_EQ(DbSegmentToKey(*table, row.position), row.keyNumber) << row.position;
  }
  struct {
    int32_t keyNumber, position;
  } const toSegment[] = {{0, 0}, {1, 3}, {2, 4}, {3, 0}, {4, 0}, {-1, 0}};
  for (const auto& row : toSegment) {
    EXPECT_EQ(DbKeyToSegment(*table, row.keyNumber), row.position) << row.keyNumber;
  }
}

TEST(DictionaryLookup, KeysAreFoundByNameThenByTheirFirstField) {
  OpenTable table = ThreeKeys();
  DbFieldInfo names[] = {MakeField("ByName", kIndexName, 1, 0), MakeField("Code", kIndexName, 2, 0),
                         MakeField("Far", kIndexName, 9, 0)};
  struct {
    const char* name;
    int32_t unnamed, named, orFirst;
  } const cases[] = {
      {"Code", 0, 4, 4},   {"Name", 3, 3, 3}, {"ByName", -1, 3, 3}, {"Far", -1, 0, 0},
      {"code", -1, -1, 0}, {"", -1, -1, 4},   {nullptr, -1, -1, 0}, {"None", -1, -1, 0},
  };
  for (const auto& row : cases) {
    const std::string name = row.name != nullptr ? row.name : "(null)";
    table->NamedIndexCount = 0;
    EXPECT_EQ(DbFindIndex(*table, row.name), row.unnamed) << name;
    table->NamedIndexes = names;
    table->NamedIndexCount = 3;
    EXPECT_EQ(DbFindIndex(*table, row.name), row.named) << name;
    EXPECT_EQ(DbFindIndexOrFirst(*table, row.name), row.orFirst) << name;
  }
}

TEST(DictionaryLookup, FieldsAreFoundExactlyAndFirst) {
  OpenTable table = ThreeKeys();
  EXPECT_EQ(DbFindField(*table, "Code"), 0);
  EXPECT_EQ(DbFindField(*table, ""), 3);
  EXPECT_EQ(DbFindField(*table, "CODE"), -1);
  EXPECT_EQ(DbFindField(*table, nullptr), -1);
  EXPECT_EQ(DbFindFieldById(*table, 12)->Offset, 8);
  EXPECT_EQ(DbFindFieldById(*table, 1), nullptr);
  EXPECT_EQ(DbFieldAt(*table, 3)->FieldId, 13);
  EXPECT_EQ(DbFieldAt(*table, 4), nullptr);
  EXPECT_EQ(DbFieldAt(*table, -1), nullptr);
}

TEST(DictionaryLookup, TablesAreFoundExactly) {
  DbTableInfo tables[2] = {};
  std::strcpy(tables[0].Name, "One");
  std::strcpy(tables[1].Name, "Two");
  DbDictionary dictionary{};
  dictionary.Tables = tables;
  dictionary.TableCount = 2;
  EXPECT_EQ(DbFindTable(dictionary, "Two"), &tables[1]);
  EXPECT_EQ(DbFindTable(dictionary, "two"), nullptr);
  EXPECT_EQ(DbFindTable(dictionary, ""), nullptr);
  EXPECT_EQ(DbFindTable(dictionary, nullptr), nullptr);
}

TEST(DictionaryLookup, NamesLoseTheirTrailingBlanks) {
  struct {
    std::string padded;
    const char* trimmed;
  } const cases[] = {{"ab   ", "ab"},
                     {"a b  ", "a b"},
                     {"     ", ""},
                     {"abcde", "abcde"},
                     {std::string("ab \0 ", 5), "ab "}};
  for (const auto& row : cases) {
    char text[6] = {};
    std::memcpy(text, row.padded.data(), 5);
    DbTrimName(text, 5);
    EXPECT_STREQ(text, row.trimmed);
  }
}

}  // namespace
}  // namespace qrn::test
