// A record deleted from a grid.

#include "GridOffice.h"

namespace qrn::test {
namespace {

struct GridDelete : GridOffice {
  void SetUp() override {
    InsertThree();
    grid_.model.AllowDelete = -1;
    Fill();
  }
};

TEST_F(GridDelete, OfTheLastRowGoesOneUp) {
  EXPECT_EQ(Delete(3), "BeforeDelete AfterDelete all");
  EXPECT_EQ(grid_.model.Row, 2);
  EXPECT_EQ(Current(), "2");
  EXPECT_EQ(Delete(2), "BeforeDelete AfterDelete all");
  EXPECT_EQ(Delete(1), "BeforeDelete AfterDelete all");
  EXPECT_EQ(grid_.model.Row, 0) << "no row is left";
  EXPECT_EQ(grid_.AllCells(), "|Code|Name/   1||/   2||/   3||");
  EXPECT_EQ(Delete(1), "");
}

TEST_F(GridDelete, NeedsLeaveSelectionAndARecord) {
  grid_.model.AllowDelete = 0;
  EXPECT_EQ(Delete(1), "");
  grid_.model.AllowDelete = -1;
  for (const int32_t row : {0, -1, 4, INT32_MAX, INT32_MIN}) EXPECT_EQ(Delete(row), "") << row;
  grid_.model.Row = 1;
  grid_.model.rowSelected = 0;
  grid_.data.DeleteCurrentRow();
  EXPECT_EQ(grid_.TakeLog(), "");
  grid_.names.table = "";
  EXPECT_EQ(Delete(1), "");
  EXPECT_EQ(grid_.model.rowSelected, 1);
  EXPECT_EQ(Positions(), 3u);
}

TEST_F(GridDelete, CancelledKeepsTheSelection) {
  ASSERT_EQ(GoTo("3"), 0);
  grid_.cancel = "BeforeDelete";
  grid_.on["BeforeDelete"] = [this] { EXPECT_EQ(Current(), "1"); };
  EXPECT_EQ(Delete(1), "BeforeDelete");
  EXPECT_EQ(grid_.model.rowSelected, 1);
  EXPECT_EQ(Current(), "3") << "a button's update meets the form's record";
  EXPECT_EQ(Stored("1"), "うめ,Nara");
}

TEST_F(GridDelete, ThatIsRefusedIsTold) {
  ASSERT_EQ(GoTo("3"), 0);
  ASSERT_TRUE(grid_.model.positions.Set(0, 0x7FFFFFF0));
  EXPECT_EQ(Delete(1), "BtrieveError(People,43)");
  EXPECT_EQ(messages_.Take(), "VE820 GetPositionに失敗しました(43); ");
  EXPECT_EQ(grid_.model.rowSelected, 0);
  EXPECT_EQ(Current(), "3");
  grid_.handled = 0;
  EXPECT_EQ(Delete(1), "BtrieveError(People,43)");
  EXPECT_EQ(messages_.Take(), "");
  office_.Close("People");
  EXPECT_EQ(Delete(2), "BtrieveError(People,3)");
  EXPECT_EQ(Positions(), 3u);
}

TEST_F(GridDelete, WhoseNextRecordHasGoneTellsItAndIsDone) {
  ASSERT_TRUE(grid_.model.positions.Set(1, 0x7FFFFFF0));
  EXPECT_EQ(Delete(1), "BeforeDelete BtrieveError(People,43) AfterDelete all");
  EXPECT_EQ(messages_.Take(), "VE820 GetPositionに失敗しました(43); ");
  EXPECT_EQ(Positions(), 2u);
  EXPECT_EQ(Stored("1"), "status 4");
}

TEST_F(GridDelete, SurvivesWhatHandlersDo) {
  const struct {
    const char* what;
    std::function<void()> handler;
    const char* log;
    const char* cells;  // column 1
    const char* message;
  } cases[] = {
      {"looks at another record", [this] { EXPECT_EQ(GoTo("3"), 0); },
       "BeforeDelete AfterDelete all", "Code/1/3/", ""},
      {"fills the grid the other way round",
       [this] {
         grid_.model.DbExOperation = OpGetPrevEx;
         grid_.data.ReloadList();
       },
       "BeforeDelete filled AfterDelete all", "Code/3/1/", ""},
      {"fills the grid without it",
       [this] {
         grid_.names.conditions = "@Code <> 2";
         grid_.data.ReloadList();
       },
       "BeforeDelete filled AfterDelete all", "Code/1/3/", ""},
      {"closes the table", [this] { office_.Close("People"); },
       "BeforeDelete BtrieveError(People,3)", "Code/1/2/3", "VE820 GetPositionに失敗しました(3); "},
      {"ends the database", [this] { grid_.findTable = [](const GridNames&) { return nullptr; }; },
       "BeforeDelete", "Code/1/2/3", ""},
      {"deletes again",
       [this] {
         grid_.data.DeleteCurrentRow();
         grid_.data.CommitRow(1);
       },
       "BeforeDelete AfterDelete all", "Code/1/3/", ""},
      {"deletes it itself", [this] { EXPECT_EQ(DbButtonDelete(office_.engine, button_), 0); },
       "BeforeDelete BtrieveError(People,43)", "Code/1/2/3",
       "VE820 GetPositionに失敗しました(43); "},
  };
  const auto findTable = grid_.findTable;
  const GridNames names = grid_.names;
  for (const auto& each : cases) {
    grid_.on.clear();
    grid_.findTable = findTable;
    grid_.names = names;
    grid_.model.DbExOperation = OpGetNextEx;
    OpenPeople();
    if (Stored("2") == "status 4") Insert({{"2", "もも"}});
    Fill();
    grid_.on["BeforeDelete"] = each.handler;
    EXPECT_EQ(Delete(2), each.log) << each.what;
    EXPECT_EQ(grid_.Cells(0, 1, 3, 1), each.cells) << each.what;
    EXPECT_EQ(messages_.Take(), each.message) << each.what;
  }
}

struct FullGrid : GridOffice {
  FullGrid() : GridOffice({.maxRows = 4, .maxCols = 3}) {}
};

// Row and column stand at the store's very end: nothing beyond it is read.
TEST_F(FullGrid, LosesItsLastRow) {
  InsertMany(5);
  grid_.model.AllowDelete = -1;
  Fill();
  EXPECT_EQ(grid_.AllCells(), "|Code|Name/   1|1|x/   2|2|x/   3|3|x");
  EXPECT_EQ(Delete(2), "BeforeDelete AfterDelete all");
  EXPECT_EQ(grid_.AllCells(), "|Code|Name/   1|1|x/   2|3|x/   3||");
  EXPECT_EQ(Positions(), 2u) << "the empty row stands for no record that did not fit";
}

}  // namespace
}  // namespace qrn::test
