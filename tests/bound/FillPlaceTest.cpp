// Every fill ends at the record it began at, whole and without a lock.

#include "Office.h"
#include "core/ListFill.h"
#include "core/Table.h"
#include "extended/FillFromExtended.h"

namespace qrn::test {
namespace {

using FillFunction = void (*)(Office&, PlayedList&, const char* field);

void FillPlainly(Office& office, PlayedList& list, const char* field) {
  EXPECT_EQ(DbFillList(office.engine, list, field, 0), 0);
}

void FillExtended(Office& office, PlayedList& list, const char* field) {
  ExFill fill;
  fill.DbListFields = field;
  EXPECT_TRUE(FillFromExtended(office.engine, fill, list));
}

struct FillPlace : ::testing::TestWithParam<FillFunction> {
  void InsertPaper(const char* no, const std::string& head, const std::string& body) {
    form_.texts = {{"No", no}, {"Head", head}, {"Body", body}};
    ASSERT_EQ(DbButtonInsert(office_.engine, papers_, false), 0);
  }

  Status GoTo(const char* no) {
    form_.texts = {{"No", no}, {"Head", ""}, {"Body", ""}};
    return DbButtonRead(office_.engine, BtrOpGetEqual, papers_);
  }

  void Fill() {
    list_.rows.clear();
    GetParam()(office_, list_, "No");
  }

  Office office_;
  PlayedForm form_;
  PlayedButton papers_{office_, form_, "Papers"};
  PlayedList list_{office_, "Papers"};
};

TEST_P(FillPlace, ARecordThatOnlyAPlainReadHasCutComesBackWhole) {
  InsertPaper("1", "short", "body");
  InsertPaper("2", std::string(100, 'h'), std::string(60000, 'b'));
  office_.Close("Papers");
  ASSERT_EQ(DbOpenAllTables(office_.engine, *office_.Dictionary(), office_.Directory(), "", 0), 0);
  DbTableInfo& table = *papers_.Table();
  ASSERT_EQ(DbRecordCall(office_.engine, table, BtrOpGetLast, 0), 22) << "the place is there now";
  Fill();
  EXPECT_EQ(list_.rows, "1;2;");
  EXPECT_EQ(office_.Field("Papers", "Head"), std::string(100, 'h'));
  EXPECT_EQ(office_.Field("Papers", "Body"), std::string(4096, 'b')) << "what a text holds of it";
}

TEST_P(FillPlace, TheLockInForceIsNotTakenOnTheWayBack) {
  InsertPaper("1", "head", "body");
  ASSERT_EQ(GoTo("1"), 0);
  office_.engine.LockBias = 400;
  CallLog log;
  Fill();
  const std::string calls = log.Take();
  EXPECT_NE(calls.find(" 23/0:64512 "), std::string::npos) << calls;
  EXPECT_EQ(calls.find("423/"), std::string::npos) << calls;
}

TEST_P(FillPlace, AFillWithoutAPlaceEndsWhereItWalked) {
  InsertPaper("1", "head", "body");
  office_.Close("Papers");
  ASSERT_EQ(DbOpenAllTables(office_.engine, *office_.Dictionary(), office_.Directory(), "", 0), 0);
  CallLog log;
  Fill();
  EXPECT_EQ(log.Take().find(" 23/"), std::string::npos);
  EXPECT_EQ(list_.rows, "1;");
}

INSTANTIATE_TEST_SUITE_P(Fills, FillPlace, ::testing::Values(&FillPlainly, &FillExtended),
                         [](const auto& fill) { return fill.index == 0 ? "Plain" : "Extended"; });

}  // namespace
}  // namespace qrn::test
