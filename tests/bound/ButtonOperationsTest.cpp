// What a button does to a table and to the screen.

#include "Office.h"
#include "core/DictionaryLookup.h"
#include "core/RecordPosition.h"

namespace qrn::test {
namespace {

constexpr int32_t kByPlace = 1;
constexpr int32_t kByName = 3;  // index position: ByPlace has two segments

struct Button : ::testing::Test {
  Status Insert(const char* code, const char* name, const char* town, const char* pay = "1.50") {
    form_.texts = {{"Code", code}, {"Name", name}, {"Town", town}, {"Pay", pay}};
    return DbButtonInsert(office_.engine, button_, false);
  }

  void InsertFour() {
    EXPECT_EQ(Insert("1003", "安部", "大阪"), 0);
    EXPECT_EQ(Insert("1001", "伊藤", "東京"), 0);
    EXPECT_EQ(Insert("1004", "Abe", "大阪"), 0);
    EXPECT_EQ(Insert("1002", "安部", "東京"), 0);
  }

  // The screen's code afterwards, with the status where it is not 0.
  std::string Read(int32_t operation) {
    const Status status = DbButtonRead(office_.engine, operation, button_);
    return form_.texts["Code"] + (status != 0 ? "#" + std::to_string(status) : "");
  }

  Office office_;
  PlayedForm form_;
  PlayedButton button_{office_, form_, "People"};
};

TEST(ButtonOperation, BecomesTheRecordManagersNumber) {
  const int32_t expected[] = {-1, -1, -1, 5, 12, 13, 6, 7, 8, 10, 9, 11, 33, 34, 24, 35, -1, -1};
  for (int32_t value = 0; value < 18; ++value) EXPECT_EQ(DbOpToBtrieve(value), expected[value]);
  for (const int32_t value : {-1, 18, 0x7FFFFFFF}) EXPECT_EQ(DbOpToBtrieve(value), -1);
}

TEST_F(Button, FindsByWhatTheScreenHolds) {
  InsertFour();
  const struct {
    int32_t index, operation;
    std::map<std::string, std::string> screen;
    const char* answer;
  } cases[] = {
      {0, BtrOpGetEqual, {{"Code", "1002"}}, "1002"},
      {0, BtrOpGetEqual, {{"Code", "1005"}}, "1005#4"},
      {0, BtrOpGetGreater, {{"Code", "1002"}}, "1003"},
      {0, BtrOpGetGreaterOrEqual, {{"Code", "1002"}}, "1002"},
      {0, BtrOpGetLess, {{"Code", "1002"}}, "1001"},
      {0, BtrOpGetLessOrEqual, {{"Code", "1000"}}, "1000#9"},
      {0, BtrOpGetGreater, {{"Code", "junk"}}, "1001"},
      {0, BtrOpGetFirst, {{"Code", ""}}, "1001"},
      {0, BtrOpGetLast, {{"Code", ""}}, "1004"},
      {kByPlace, BtrOpGetEqual, {{"Code", "1002"}, {"Town", "東京"}}, "1002"},
      {kByPlace, BtrOpGetGreater, {{"Code", ""}, {"Town", "東京"}}, "1001"},
      {kByName, BtrOpGetEqual, {{"Code", ""}, {"Name", "安部"}}, "1003"},
  };
  for (const auto& row : cases) {
    form_.texts = row.screen;
    button_.index = row.index;
    EXPECT_EQ(Read(row.operation), row.answer) << row.operation << " on " << row.index;
  }
}

TEST_F(Button, SendsTheOperationItsLockAndItsLength) {
  InsertFour();
  CallLog log;
  const struct {
    int32_t locks;
    const char *read, *step, *update;
  } cases[] = {
      {0, "5/1:42 ", "24/0:41 ", "3/1:41 "},      {1, "105/1:42 ", "124/0:41 ", "103/1:41 "},
      {2, "205/1:42 ", "224/0:41 ", "203/1:41 "}, {3, "305/1:42 ", "324/0:41 ", "303/1:41 "},
      {4, "405/1:42 ", "424/0:41 ", "403/1:41 "}, {5, "5/1:42 ", "24/0:41 ", "3/1:41 "}};
  button_.index = kByPlace;
  for (const auto& row : cases) {
    button_.locks = row.locks;
    form_.texts = {{"Code", "1001"}, {"Town", "東京"}};
    EXPECT_EQ(DbButtonRead(office_.engine, BtrOpGetEqual, button_), 0) << row.locks;
    EXPECT_EQ(log.Take(), row.read);
    EXPECT_EQ(DbButtonUpdate(office_.engine, button_, false), 0) << row.locks;
    EXPECT_EQ(log.Take(), row.update);
    EXPECT_EQ(DbButtonStep(office_.engine, BtrOpStepNext, button_), 0) << row.locks;
    EXPECT_EQ(log.Take(), row.step);
    for (const int32_t kind : {-2, 0}) {
      static_cast<void>(DbUnlockRecord(office_.engine, *button_.Table(), kind));
    }
    log.Take();
  }
}

TEST_F(Button, NoCurrencyChangeSendsNoKeyNumber) {
  CallLog log;
  form_.texts = {{"Code", "1"}};
  button_.index = kByName;
  EXPECT_EQ(DbButtonInsert(office_.engine, button_, false), 0);
  form_.texts = {{"Code", "5"}};
  EXPECT_EQ(DbButtonInsert(office_.engine, button_, true), 0);
  EXPECT_EQ(DbButtonUpdate(office_.engine, button_, true), 0);
  EXPECT_EQ(log.Take(), "2/2:41 2/255:41 3/255:41 ");
}

TEST_F(Button, InsertEmptiesWhatHasNoControlAndUpdateKeepsIt) {
  EXPECT_EQ(Insert("7", "名前", "東京", "9.25"), 0);
  form_.texts = {{"Code", "7"}, {"Town", "京都"}};
  EXPECT_EQ(Read(BtrOpGetEqual), "7");
  form_.texts["Town"] = "奈良";
  EXPECT_EQ(DbButtonUpdate(office_.engine, button_, false), 0);
  form_.written.clear();
  EXPECT_EQ(Read(BtrOpGetEqual), "7");
  EXPECT_EQ(form_.written, "Code=7 Name=名前 Town=奈良 Pay=9.25 ");
  form_.texts = {{"Code", "8"}};
  EXPECT_EQ(DbButtonInsert(office_.engine, button_, false), 0);
  form_.written.clear();
  EXPECT_EQ(Read(BtrOpGetEqual), "8");
  EXPECT_EQ(form_.written, "Code=8 Name= Town= Pay=0.00 ");
}

TEST_F(Button, DeletesTheCurrentRecord) {
  InsertFour();
  form_.texts = {{"Code", "1002"}};
  EXPECT_EQ(Read(BtrOpGetEqual), "1002");
  CallLog log;
  button_.locks = kLockSingleNoWait;
  EXPECT_EQ(DbButtonDelete(office_.engine, button_), 0);
  EXPECT_EQ(log.Take(), "204/0:- ");
  EXPECT_EQ(Read(BtrOpGetNext), "1003");
  office_.Close("People");
  EXPECT_EQ(DbButtonDelete(office_.engine, button_), -3);
}

TEST_F(Button, ARefusalReachesNoRecordManager) {
  InsertFour();
  int asked = 0;
  button_.setData = [&] { return ++asked > 0; };
  CallLog log;
  EXPECT_EQ(DbButtonRead(office_.engine, BtrOpGetFirst, button_), -2);
  EXPECT_EQ(DbButtonInsert(office_.engine, button_, false), -2);
  EXPECT_EQ(DbButtonUpdate(office_.engine, button_, true), -2);
  EXPECT_EQ(DbButtonDelete(office_.engine, button_), -2);
  EXPECT_EQ(asked, 4);
  EXPECT_EQ(log.Take(), "");
}

TEST_F(Button, AHandlerThatClosesTheTableEndsTheOperation) {
  InsertFour();
  button_.setData = [&] {
    office_.Close("People");
    return false;
  };
  EXPECT_EQ(DbButtonRead(office_.engine, BtrOpGetFirst, button_), -3);
  EXPECT_EQ(DbButtonInsert(office_.engine, button_, false), -3) << "closed from the start";
}

TEST_F(Button, AClosingHandlerOfChangeEndsTheShowing) {
  InsertFour();
  form_.texts = {{"Code", "1001"}};
  form_.written.clear();
  form_.onChange = [&](const std::string& field) {
    if (field == "Name") office_.Close("People");
  };
  EXPECT_EQ(DbButtonRead(office_.engine, BtrOpGetEqual, button_), 0);
  EXPECT_EQ(form_.written, "Code=1001 Name=伊藤 ");
}

TEST_F(Button, WithoutThatKeyThereIsNoCall) {
  Messages messages;
  CallLog log;
  button_.index = 4;
  form_.texts = {{"Code", "1"}};
  EXPECT_EQ(DbButtonRead(office_.engine, BtrOpGetFirst, button_), -1);
  EXPECT_EQ(DbButtonInsert(office_.engine, button_, false), -1);
  EXPECT_EQ(DbButtonUpdate(office_.engine, button_, false), -1);
  EXPECT_EQ(DbScrollCall(office_.engine, BtrOpGetNext, button_), -1);
  EXPECT_EQ(log.Take(), "");
  const std::string one = "VE804 インデックスの指定が不正です。; ";
  EXPECT_EQ(messages.Take(), one + one + one + one);
}

TEST_F(Button, NullIndicatorsAreWalkedPast) {
  PlayedButton days(office_, form_, "Days");
  form_.texts = {{"Day", "2024/02/29"}, {"Left", "12:34:56"}, {"Word", "曜日"}};
  CallLog log;
  EXPECT_EQ(DbButtonInsert(office_.engine, days, false), 0);
  EXPECT_EQ(log.Take(), "2/0:15 ") << "date, indicator, time, word";
  form_.texts["Left"] = form_.texts["Word"] = "";
  form_.written.clear();
  EXPECT_EQ(DbButtonRead(office_.engine, BtrOpGetEqual, days), 0);
  EXPECT_EQ(form_.written, "Day=2024/02/29 Left=12:34:56 Word=曜日 ");
  form_.texts.erase("Left");
  form_.texts["Word"] = "月";
  EXPECT_EQ(DbButtonUpdate(office_.engine, days, false), 0);
  form_.written.clear();
  EXPECT_EQ(DbButtonRead(office_.engine, BtrOpGetFirst, days), 0);
  EXPECT_EQ(form_.written, "Day=2024/02/29 Left=12:34:56 Word=月 ");
}

TEST_F(Button, AScrollCallTakesItsKeyFromTheScreenAndLocksNothing) {
  InsertFour();
  form_.texts = {{"Code", "1002"}};
  button_.locks = kLockMultiNoWait;
  button_.setData = [] { return true; };
  CallLog log;
  EXPECT_EQ(DbScrollCall(office_.engine, BtrOpGetEqual, button_), 0);
  EXPECT_EQ(DbScrollCall(office_.engine, BtrOpGetNext, button_), 0);
  EXPECT_EQ(log.Take(), "5/0:42 6/0:42 ");
  EXPECT_EQ(form_.texts["Code"], "1003");
  form_.texts["Code"] = "9999";
  EXPECT_EQ(DbScrollCall(office_.engine, BtrOpGetGreater, button_), 9);
  EXPECT_EQ(form_.texts["Code"], "9999");
}

}  // namespace
}  // namespace qrn::test
