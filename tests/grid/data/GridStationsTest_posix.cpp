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

  void OtherChangesTown(uint8_t code, char first) {
    ASSERT_EQ(other_.Reads(code), 0);
    ASSERT_EQ(other_.Updates(OtherStation::kTown, first), 0);
  }

  OtherStation other_{office_};
};

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

TEST_F(GridStations, AChangeWhileTheUserIsAskedIsAConflict) {
  grid_.on["BeforeDelete"] = [this] { OtherChangesTown(2, 'K'); };
  EXPECT_EQ(Delete(2), "BeforeDelete BtrieveError(People,80)");
  EXPECT_EQ(messages_.Take(), "VE821 Updateに失敗しました(80); ");
  EXPECT_EQ(Stored("2"), "もも,Kara");
}

}  // namespace
}  // namespace qrn::test
