// What another station does to the records that a grid shows.

#include "GridOffice.h"
#include "tests/bound/OtherStation.h"

namespace qrn::test {
namespace {

struct GridStations : GridOffice {
  void SetUp() override {
    InsertThree();
    grid_.model.AllowUpdate = grid_.model.AllowDelete = -1;
    Fill();
  }

  void OtherDeletes(uint8_t code) {
    ASSERT_EQ(other_.Reads(code), 0);
    ASSERT_EQ(other_.Deletes(), 0);
  }
  void OtherChangesTown(uint8_t code, char first) {
    ASSERT_EQ(other_.Reads(code), 0);
    ASSERT_EQ(other_.Updates(OtherStation::kTown, first), 0);
  }

  OtherStation other_{office_};
};

TEST_F(GridStations, ARecordDeletedElsewhereCannotBeWrittenOrDeleted) {
  ASSERT_EQ(GoTo("3"), 0);
  OtherDeletes(2);
  EXPECT_EQ(TypeAndLeave(2, 2, "x"),
            "BeforeColUpdate(x) cell AfterColUpdate BeforeUpdate BtrieveError(People,43)");
  EXPECT_EQ(messages_.Take(), "VE820 GetPositionに失敗しました(43); ");
  EXPECT_EQ(grid_.Cell(2, 2), "x") << "the cell keeps what was typed";
  EXPECT_EQ(Delete(2), "BtrieveError(People,43)");
  EXPECT_EQ(messages_.Take(), "VE820 GetPositionに失敗しました(43); ");
  EXPECT_EQ(Current(), "3");
  Fill();
  EXPECT_EQ(grid_.AllCells(), "|Code|Name/   1|1|うめ/   2|3|さくら/   3||");
}

TEST_F(GridStations, OfARecordChangedElsewhereWhatTheGridDoesNotShowStays) {
  OtherChangesTown(2, 'K');
  TypeAndLeave(2, 2, "x");
  EXPECT_EQ(messages_.Take(), "");
  EXPECT_EQ(Stored("2"), "x,Kara");
}

TEST_F(GridStations, ALockElsewhereRefusesBoth) {
  ASSERT_EQ(GoTo("3"), 0);
  ASSERT_EQ(other_.Reads(2, OtherStation::kNoWait), 0);
  office_.engine.LockBias = OtherStation::kNoWait;
  EXPECT_EQ(TypeAndLeave(2, 2, "x"),
            "BeforeColUpdate(x) cell AfterColUpdate BeforeUpdate BtrieveError(People,84)");
  EXPECT_EQ(messages_.Take(), "VE821 Updateに失敗しました(84); ");
  EXPECT_EQ(Delete(2), "BeforeDelete BtrieveError(People,84)");
  EXPECT_EQ(messages_.Take(), "VE821 Updateに失敗しました(84); ");
  EXPECT_EQ(grid_.Cell(2, 1), "2");
  EXPECT_EQ(Positions(), 3u);
  EXPECT_EQ(Current(), "3");
  other_.Dies();
  grid_.model.rowDirty = 1;
  EXPECT_EQ(Leave(2), "BeforeUpdate AfterUpdate");
}

TEST_F(GridStations, ALockThatAFillCannotTakeEndsItWithItsMessage) {
  ASSERT_EQ(other_.Reads(2, OtherStation::kNoWait), 0);
  grid_.model.DbLocks = kLockMultiNoWait;
  EXPECT_EQ(Fill(), "filled");
  EXPECT_EQ(messages_.Take(), "VE039 Extended Operationエラー(84); ");
}

TEST_F(GridStations, AChangeWhileTheUserIsAskedIsAConflict) {
  grid_.on["BeforeDelete"] = [this] { OtherChangesTown(2, 'K'); };
  EXPECT_EQ(Delete(2), "BeforeDelete BtrieveError(People,80)");
  EXPECT_EQ(messages_.Take(), "VE821 Updateに失敗しました(80); ");
  EXPECT_EQ(Stored("2"), "もも,Kara");
}

}  // namespace
}  // namespace qrn::test
