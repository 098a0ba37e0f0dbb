#include "core/Dictionary.h"
#include "core/RecordBuffer.h"
#include "extended/ExResultStore.h"
#include "extended/ExResults.h"
#include "tests/extended/Replies.h"
#include "tests/extended/TestTable.h"

namespace qrn::test {
namespace {

struct ResultStore : testing::Test {
  ~ResultStore() override { TheExResults().Clear(); }

  int16_t Keep(const char* fields, const std::vector<uint8_t>& reply) {
    const auto plan = ParseFieldList(engine_, table_.Info(), fields);
    return TheExResults().Keep(table_.Info(), fields, *plan, reply);
  }

  std::string ByNumber(int16_t id, int32_t field, int32_t location) {
    const char* text = DbExReadField(engine_, id, field, location);
    return text != nullptr ? text : "(none)";
  }

  std::string ByName(int16_t id, const char* field, int32_t location) {
    const char* text = DbExReadFieldByName(engine_, id, field, location);
    return text != nullptr ? text : "(none)";
  }

  QuorinSettings settings_;
  DbEngine engine_{settings_};
  ShownMessages messages_;
  TestTable table_{{{"Code", kInteger, 2},
                    {"Name", kString, 4},
                    {"Code", kInteger, 2},
                    {"Pic", kBlob, 8},
                    {"Bit", kBit, 1}}};
};

// Records "Name, Code": 'Abe' 1 at 16, 'Ito' 2 at 32.
const std::vector<uint8_t> kNameField =
    Reply({{16, {'A', 'b', 'e', ' ', 1, 0}}, {32, {'I', 't', 'o', ' ', 2, 0}}});

TEST_F(ResultStore, ANameMeansTheFirstFieldOfThatName) {
  const int16_t id = Keep("2", Reply({{16, {7, 0}}}));
  EXPECT_EQ(ByNumber(id, 2, 0), "7");
  EXPECT_EQ(ByName(id, "Code", 0), "(none)");
}

TEST_F(ResultStore, AFieldCutByItsRecordsEndReadsWhatIsThere) {
  const int16_t id = Keep("0,1", Reply({{16, {5, 0, 'x', 'y'}}, {20, {6, 0}}, {24, {}}}));
  EXPECT_EQ(ByNumber(id, 1, 0), "xy");
  EXPECT_EQ(ByNumber(id, 1, 1), "");
  EXPECT_EQ(ByNumber(id, 0, 2), "");
}

TEST_F(ResultStore, ABlobIsLookedForInTheTablesPresentRecord) {
  const int16_t id = Keep("Pic", Reply({{16, {3, 0, 0, 0, 2, 0, 0, 0}}, {20, {9, 0, 0}}}));
  EXPECT_EQ(ByName(id, "Pic", 0), "") << "the table has no record";
  table_.MakeBuffer("..abcdefghi");
  EXPECT_EQ(ByName(id, "Pic", 0), "abc");
  EXPECT_EQ(ByName(id, "Pic", 1), "") << "half a descriptor";
  table_.MakeBuffer("..a");
  EXPECT_EQ(ByName(id, "Pic", 0).substr(0, 1), "a") << "a value past the record's end";
}

TEST_F(ResultStore, OutlivesItsDictionary) {
  DbDictionary* dictionary = nullptr;
  DbDictionary source{};
  source.Tables = &table_.Info();
  source.TableCount = 1;
  ASSERT_EQ(DbDictCopy(source, &dictionary), 0);
  DbTableInfo& table = dictionary->Tables[0];
  const auto plan = ParseFieldList(engine_, table, "Name,Pic");
  std::vector<uint8_t> data = {'A', 'b', 'e', ' ', 3, 0, 0, 0, 0, 0, 0, 0};
  const auto reply = Reply({{16, data}});
  const int16_t id = TheExResults().Keep(table, "Name,Pic", *plan, reply);
  ASSERT_TRUE(AllocateRecordBuffer(table, 8));
  const int16_t other = Keep("Name,Pic", reply);
  DbDictFree(dictionary);
  EXPECT_EQ(ByName(id, "Name", 0), "Abe");
  EXPECT_EQ(ByName(id, "Pic", 0), "");
  table_.MakeBuffer("xyz");
  EXPECT_EQ(ByName(other, "Pic", 0), "xyz");
}

TEST_F(ResultStore, FreesOnce) {
  const int16_t id = Keep("0", Reply({}));
  EXPECT_EQ(DbExFreeResult(id), 0);
  for (const int16_t bad : {id, int16_t{48}, int16_t{49}, int16_t{-1}}) {
    EXPECT_EQ(DbExFreeResult(bad), -1) << bad;
  }
}

TEST_F(ResultStore, LaterRepliesFollowTheFirst) {
  const int16_t id = Keep("Name,0", kNameField);
  const uint32_t serial = TheExResults().Find(id)->Serial;
  EXPECT_TRUE(TheExResults().Append(id, serial, Reply({{48, {'U', 'n', 'o', ' ', 3, 0}}})));
  EXPECT_TRUE(TheExResults().Append(id, serial, kNameField));
  std::string names;
  for (int location = 0; location < 6; ++location) names += ByName(id, "Name", location) + " ";
  EXPECT_EQ(names, "Abe Ito Uno Abe Ito (none) ");
  EXPECT_EQ(DbExPositionOf(id, 4), 32);
}

TEST_F(ResultStore, ALaterResultUnderTheIdTakesNoForeignReply) {
  const int16_t id = Keep("0", Reply({}));
  const uint32_t serial = TheExResults().Find(id)->Serial;
  TheExResults().Free(id);
  EXPECT_FALSE(TheExResults().Append(id, serial, kNameField));
  ASSERT_EQ(Keep("Name,0", kNameField), id);
  EXPECT_FALSE(TheExResults().Append(id, serial, kNameField));
  EXPECT_EQ(TheExResults().Find(id)->Records.size(), 2u);
}

}  // namespace
}  // namespace qrn::test
