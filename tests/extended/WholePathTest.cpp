// The whole path of extended operations held against a plain walk: random tables of fields of all
// types in real files, random conditions, every operation, any size of batch. What a condition
// keeps is worked out here, record by record, from what was put in.

#include "RandomCondition.h"
#include "core/DictionaryLookup.h"
#include "core/FlatState.h"
#include "core/Record.h"
#include "extended/ExResultStore.h"
#include "extended/ExResults.h"
#include "extended/ExecuteExtended.h"
#include "extended/FillFromExtended.h"
#include "qrnbt350.h"
#include "tests/extended/ShownMessages.h"
#include "tests/support/Test.h"

namespace qrn::test {
namespace {

struct Direction {
  int16_t first, next, extended;
  int32_t fillOperation;
  bool alongKey;
};

constexpr Direction kDirections[] = {
    {12, 6, 36, OpGetNextEx, true},
    {13, 7, 37, OpGetPrevEx, true},
    {33, 24, 38, OpStepNextEx, false},
    {34, 35, 39, OpStepPrevEx, false},
};

// One record met: its number, where it stands, and the texts of the fields asked for.
struct Met {
  int32_t number, position;
  std::string texts;
};

std::string Line(const std::vector<Met>& met) {
  std::string line;
  for (const Met& each : met) {
    line += std::to_string(each.number) + "@" + std::to_string(each.position) + " " +
            CodePageToUtf8(each.texts) + "\n";
  }
  return line;
}

std::string OrEmpty(const char* text) { return text != nullptr ? text : ""; }

// The rows of a fill.
class Rows : public RowSink {
 public:
  explicit Rows(DbTableInfo& table) : table_(table) {}

  std::vector<Met> met;
  Status ended = 0;

  DbTableInfo* Table() override { return &table_; }
  void Empty(size_t) override { met.clear(); }
  bool Format(std::u16string&) override { return true; }
  bool AddRow(const char* text) override {
    met.push_back({std::atoi(text), 0, text});
    return true;
  }
  void GivePosition(uint32_t position) override {
    met.back().position = static_cast<int32_t>(position);
  }
  void BtrieveError(const char*, Status status) override { ended = status; }

 private:
  DbTableInfo& table_;
};

struct WholePath : testing::Test {
  ~WholePath() override {
    static_cast<void>(DbExSetMode(TheEngine(), "UC"));
    TheExResults().Clear();
    ::DbTerminate();
  }

  void Open(const RandomTable& table) {
    ASSERT_EQ(::DbInitialize(table.Directory().c_str()), 0) << table.Schema();
    ASSERT_EQ(::DbOpen(0), 0);
  }

  static DbTableInfo& Info() { return TheFlatState().CurrentDictionary->Tables[0]; }

  static std::string FieldTexts(const RandomFieldList& fields) {
    std::string texts;
    for (const int16_t field : fields.positions) {
      texts += (texts.empty() ? "" : " ") + OrEmpty(DbReadField(TheEngine(), Info(), field));
    }
    return texts;
  }

  // By one call a record, and this test's judgement.
  static std::vector<Met> Walk(const RandomTable& table, const RandomCondition& condition,
                               const RandomFieldList& fields, const Direction& way, int16_t key) {
    std::vector<Met> met;
    for (int32_t status = ::DbAccess(way.first, 0, key); status == 0;
         status = ::DbAccess(way.next, 0, key)) {
      const int number = std::atoi(DbReadField(TheEngine(), Info(), 0));
      if (!condition.Holds(table.Record(number))) continue;
      met.push_back({number, ::DbGetPosition(0), FieldTexts(fields)});
    }
    return met;
  }

  static void Take(int16_t result, int16_t count, const RandomFieldList& fields,
                   std::vector<Met>& met) {
    for (int16_t at = 0; at < count; ++at) {
      std::string texts;
      for (const int16_t field : fields.positions) {
        texts +=
            (texts.empty() ? "" : " ") + OrEmpty(DbExReadField(TheEngine(), result, field, at));
      }
      met.push_back({std::atoi(texts.c_str()), ::DbExGetPosition(result, at), texts});
    }
  }

  // By extended operations in batches, until the record manager says that it is over.
  static std::vector<Met> Read(const RandomCondition& condition, const RandomFieldList& fields,
                               const Direction& way, int16_t key, Dice& dice) {
    constexpr int16_t kSkips[] = {0, 1, 3, 20, -1};
    const int16_t skip = kSkips[Throw(dice, 5)];
    const auto most = static_cast<int16_t>(1 + Throw(dice, 30));
    std::vector<Met> met;
    int32_t status = ::DbAccess(way.first, 0, key);
    if (status != 0) return met;
    static_cast<void>(DbExSetMode(TheEngine(), "UC"));
    do {
      int16_t result = -1, count = 0;
      status = ::DbExAccess(way.extended, 0, condition.Text().c_str(), fields.text.c_str(), key,
                            skip, most, condition.IgnoresCase() ? 1 : 0, &result, &count);
      Take(result, count, fields, met);
      EXPECT_EQ(::DbExFree(result), 0);
      static_cast<void>(DbExSetMode(TheEngine(), "EG"));
    } while (status == 0 || status == 60);
    EXPECT_TRUE(status == 9 || (status == 64 && way.alongKey)) << "status " << status;
    return met;
  }

  static std::vector<Met> Fill(const RandomCondition& condition, const RandomFieldList& fields,
                               const Direction& way, int16_t key, Dice& dice) {
    ExFill fill;
    fill.ListIndexId = key;
    fill.DbExOperation = way.fillOperation;
    fill.DbCompareCase = condition.IgnoresCase();
    fill.DbSkipRecords = 0;
    fill.DbMaxRecords = static_cast<uint16_t>(1 + Throw(dice, 70));
    fill.SavePosition = true;
    fill.DbConditions = condition.Text().c_str();
    fill.DbListFields = fields.text.c_str();
    Rows rows(Info());
    FillFromExtended(TheEngine(), fill, rows);
    return rows.met;
  }

  ShownMessages messages_;
};

TEST_F(WholePath, KeepsWhatAPlainWalkKeeps) {
  size_t kept = 0;
  for (unsigned seed = 1; seed <= 25; ++seed) {
    Dice dice(seed);
    const RandomTable table(dice);
    Open(table);
    for (int round = 0; round < 25; ++round) {
      const RandomCondition condition(table, dice);
      const RandomFieldList fields(table, dice);
      const Direction& way = kDirections[Throw(dice, 4)];
      const int16_t key = way.alongKey ? static_cast<int16_t>(Throw(dice, 2)) : int16_t{-1};
      const std::vector<Met> expected = Walk(table, condition, fields, way, key);
      const auto told = [&] {
        return "seed " + std::to_string(seed) + " round " + std::to_string(round) + " operation " +
               std::to_string(way.extended) + " key " + std::to_string(key) + "\n" +
               CodePageToUtf8(condition.Text()) + (condition.IgnoresCase() ? " (any case)" : "") +
               "\n" + table.Schema();
      };
      ASSERT_EQ(Line(Read(condition, fields, way, key, dice)), Line(expected)) << told();
      ASSERT_EQ(Line(Fill(condition, fields, way, key, dice)), Line(expected)) << told();
      ASSERT_EQ(messages_.Take(), "") << told();
      kept += expected.size();
    }
    ASSERT_EQ(::DbTerminate(), 0);
  }
  EXPECT_GT(kept, 5000u) << "conditions that keep next to nothing prove little";
}

}  // namespace
}  // namespace qrn::test
