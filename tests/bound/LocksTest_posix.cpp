// What a second process does to a form's records: locks, changes, deletions.

#include "OtherStation.h"

namespace qrn::test {
namespace {

struct TwoForms : ::testing::Test {
  void SetUp() override {
    for (const char* code : {"1", "2"}) {
      form_.texts = {{"Code", code}, {"Name", "x"}};
      ASSERT_EQ(DbButtonInsert(office_.engine, button_, false), 0);
    }
  }

  Status Read(const char* code) {
    form_.texts = {{"Code", code}, {"Name", "screen"}};
    return DbButtonRead(office_.engine, BtrOpGetEqual, button_);
  }

  Office office_;
  PlayedForm form_;
  PlayedButton button_{office_, form_, "People"};
  OtherStation other_{office_};
};

TEST_F(TwoForms, ALockElsewhereRefusesLocksAndWritesButNoPlainRead) {
  ASSERT_EQ(other_.Reads(1, OtherStation::kNoWait), 0);
  button_.locks = kLockSingleNoWait;
  EXPECT_EQ(Read("1"), 84);
  EXPECT_EQ(form_.texts["Name"], "screen") << "nothing is shown";
  EXPECT_EQ(Read("2"), 0);
  button_.locks = kLockNone;
  EXPECT_EQ(Read("1"), 0);
  EXPECT_EQ(form_.texts["Name"], "x");
  button_.locks = kLockSingleNoWait;
  form_.texts["Name"] = "mine";
  EXPECT_EQ(DbButtonUpdate(office_.engine, button_, false), 84);
  EXPECT_EQ(DbButtonDelete(office_.engine, button_), 84);
  other_.Dies();
  EXPECT_EQ(DbButtonUpdate(office_.engine, button_, false), 0);
}

}  // namespace
}  // namespace qrn::test
