// The fill of a grid.

#include "GridOffice.h"
#include "core/FillTurn.h"
#include "core/RecordPosition.h"
#include "qrnbt350.h"

namespace qrn::test {
namespace {

using GridFillTest = GridOffice;

constexpr char kThree[] = "|Code|Name/   1|1|うめ/   2|2|もも/   3|3|さくら";

TEST_F(GridFillTest, ReadsInTheOrderAndTheBatchesThatAreAskedFor) {
  InsertThree();
  const struct {
    int32_t operation;
    const char *index, *condition;
    int32_t atOnce;
    int16_t skip;
    const char* column;  // the second
  } cases[] = {
      {OpGetNextEx, "ByCode", "", 300, 100, "Code/1/2/3"},
      {OpGetPrevEx, "ByCode", "", 300, 100, "Code/3/2/1"},
      {OpStepNextEx, "ByCode", "", 300, 100, "Code/3/1/2"},
      {OpStepPrevEx, "ByCode", "", 300, 100, "Code/2/1/3"},
      {OpGetNextEx, "ByName", "", 300, 100, "Code/1/3/2"},
      {OpGetNextEx, "", "", 300, 100, "Code/1/2/3"},
      {OpGetNextEx, "unknown", "", 300, 100, "Code/1/2/3"},
      {OpGetNextEx, "ByCode", "", 1, 100, "Code/1/2/3"},
      {OpGetNextEx, "ByCode", "", 2, 100, "Code/1/2/3"},
      {OpGetNextEx, "ByCode", "", 65537, 100, "Code/1/2/3"},
      {OpGetNextEx, "ByCode", "@Code >= 2", 300, 100, "Code/2/3/"},
      {OpGetNextEx, "ByCode", "@Code = 3", 300, 1, "Code/3//"},
  };
  for (const auto& each : cases) {
    grid_.model.DbExOperation = each.operation;
    grid_.names.index = each.index;
    grid_.names.conditions = each.condition;
    grid_.model.DbMaxRecords = each.atOnce;
    grid_.model.DbSkipRecords = each.skip;
    EXPECT_EQ(Fill(), "filled");
    EXPECT_EQ(grid_.Cells(0, 1, 3, 1), each.column) << each.operation << each.index << each.atOnce;
  }
}

TEST_F(GridFillTest, TakesTheLockInItsBatchesAlone) {
  InsertThree();
  grid_.model.DbLocks = kLockMultiNoWait;
  CallLog log;
  Fill();
  const std::string calls = log.Take();
  EXPECT_NE(calls.find(" 12/0:"), std::string::npos) << calls;
  EXPECT_NE(calls.find(" 436/0:"), std::string::npos) << calls;
  EXPECT_NE(calls.find(" 23/0:"), std::string::npos) << calls;
}

TEST_F(GridFillTest, OfAnEmptyTableLeavesEverythingAndTellsNine) {
  grid_.Put(1, 1, "before");
  grid_.TakeLog();
  EXPECT_EQ(Fill(), "BtrieveError(People,9)");
  EXPECT_EQ(grid_.AllCells(), "|/|before");
  EXPECT_EQ(messages_.Take(), "");
}

TEST_F(GridFillTest, ThatCannotBeginLeavesEverything) {
  InsertThree();
  const struct {
    const char* what;
    std::function<void()> spoil;
    const char* message;
  } cases[] = {
      {"no table", [this] { grid_.names.table = ""; }, ""},
      {"unknown table", [this] { grid_.names.table = "people"; }, ""},
      {"a designer", [this] { grid_.runTime = false; }, ""},
      {"no window", [this] { grid_.window = nullptr; }, ""},
      {"no field list", [this] { grid_.names.fields = ""; }, "VE040"},
      {"unknown field", [this] { grid_.names.fields = "Code,name"; }, "VE818"},
      {"bad condition", [this] { grid_.names.conditions = "@Nothing = 1"; }, "VE818"},
      {"no operation", [this] { grid_.model.DbExOperation = 4; }, "VE044"},
      {"a table that cannot be opened",
       [this] {
         office_.Close("People");
         grid_.openTable = [](DbTableInfo&) { return false; };
       },
       ""},
  };
  const GridNames names = grid_.names;
  ASSERT_TRUE(grid_.model.positions.Set(0, 99));
  for (const auto& each : cases) {
    grid_.names = names;
    grid_.runTime = true;
    grid_.window = &grid_;
    grid_.model.DbExOperation = OpGetNextEx;
    grid_.Put(1, 1, "before");
    grid_.TakeLog();
    each.spoil();
    EXPECT_EQ(Fill(), "") << each.what;
    EXPECT_EQ(grid_.AllCells(), "|/|before") << each.what;
    EXPECT_EQ(Positions(), 1u) << each.what;
    EXPECT_EQ(messages_.Take().substr(0, 5), each.message) << each.what;
  }
}

TEST_F(GridFillTest, OpensAClosedTable) {
  InsertThree();
  office_.Close("People");
  EXPECT_EQ(Fill(), "filled");
  EXPECT_EQ(grid_.AllCells(), kThree);
}

TEST_F(GridFillTest, KeepsPositionsForWhoMayChangeRecords) {
  InsertThree();
  Fill();
  int32_t position = 0;
  EXPECT_EQ(grid_.model.GetPhysicalPosition(0, position), GridResult::InvalidIndex);
  for (int16_t GridState::*const allow : {&GridState::AllowUpdate, &GridState::AllowDelete}) {
    grid_.model.*allow = -1;
    Fill();
    EXPECT_EQ(Positions(), 3u);
    grid_.model.*allow = 0;
  }
  ASSERT_EQ(GoTo("2"), 0);
  EXPECT_EQ(grid_.model.GetPhysicalPosition(1, position), GridResult::Done);
  EXPECT_EQ(position, DbGetPositionOf(office_.engine, *office_.Table("People")));
  Fill();
  EXPECT_EQ(Positions(), 0u);
}

TEST_F(GridFillTest, PassesEachRowThroughItsEvent) {
  InsertThree();
  grid_.onFormat = [](std::u16string& text) {
    if (text.starts_with(u"1")) text += u"\tmore";
    if (text.starts_with(u"2")) DbExSetFormattedString("from\tthe call");
    if (text.starts_with(u"3")) text.clear();
  };
  grid_.model.PutCols(4);
  Fill();
  EXPECT_EQ(grid_.AllCells(), "|Code|Name|/   1|1|うめ|more/   2|from|the call|/   3|||");
}

TEST_F(GridFillTest, EndsWhereAHandlerAborts) {
  InsertMany(7);
  grid_.model.AllowUpdate = -1;
  grid_.model.Abort = -1;  // of another fill
  int rows = 0;
  grid_.onFormat = [&](std::u16string&) {
    EXPECT_EQ(grid_.model.Abort, 0);
    if (++rows == 5) grid_.model.Abort = -1;
  };
  EXPECT_EQ(Fill(), "filled");
  EXPECT_EQ(grid_.model.Rows, 5);
  EXPECT_EQ(grid_.Cells(4, 1, 4, 2), "4|x");
  EXPECT_EQ(Positions(), 5u) << "that of the row left out stays";
}

TEST_F(GridFillTest, NeverTakesRowsAway) {
  InsertThree();
  Fill();
  ASSERT_EQ(GoTo("2"), 0);
  ASSERT_EQ(DbButtonDelete(office_.engine, button_), 0);
  Fill();
  EXPECT_EQ(grid_.AllCells(), "|Code|Name/   1|1|うめ/   2|3|さくら/   3||");
}

TEST_F(GridFillTest, ClearsWhatStoodBeyondTheRecords) {
  InsertThree();
  grid_.model.PutRows(6);
  grid_.Put(0, 0, "corner");
  grid_.Put(5, 2, "rest");
  Fill();
  EXPECT_EQ(grid_.AllCells(), std::string(kThree) + "/   4||/   5||");
}

// A record that does not fit is not read into a row that no property reaches.
TEST_F(GridFillTest, EndsWhenTheGridIsFull) {
  InsertMany(25);
  grid_.model.AllowDelete = -1;
  for (const int32_t cols : {3, 8}) {
    grid_.model.PutCols(cols);
    EXPECT_EQ(Fill(), "filled");
    EXPECT_EQ(grid_.model.Rows, 20);
    EXPECT_EQ(grid_.Cells(19, 0, 19, 2), "  19|19|x");
    EXPECT_EQ(Positions(), 19u);
  }
  EXPECT_EQ(grid_.Cell(20, 1), "");
}

struct DressCase {
  const char* what;
  int32_t fixedRows, fixedCols;
  bool names, numbers;
  const char* cells;
};

TEST_F(GridFillTest, WritesNamesAndNumbersWhereThereIsRoomForThem) {
  InsertThree();
  const DressCase cases[] = {
      {"neither", 1, 1, false, false, "|||/|1|うめ|/|2|もも|/|3|さくら|/|||"},
      {"no fixed column: no names", 1, 0, true, false, "|||/1|うめ||/2|もも||/3|さくら||/|||"},
      {"no fixed row: names over a record", 0, 1, true, true,
       "|Code|Name|/|2|もも|/|3|さくら|/|||/|||"},
      {"two fixed rows: the last has no number", 2, 1, false, true,
       "|||/|||/   1|1|うめ|/   2|2|もも|/|3|さくら|"},
      {"two fixed columns", 1, 2, true, true,
       "||Code|Name/   1||1|うめ/   2||2|もも/   3||3|さくら/   4|||"},
      {"no fixed column, numbers over a field", 1, 0, false, true,
       "|||/   1|うめ||/   2|もも||/   3|さくら||/   4|||"},
  };
  for (const DressCase& each : cases) {
    grid_.model.Cols = 4;
    grid_.model.Rows = 5;
    grid_.model.FixedRows = each.fixedRows;
    grid_.model.FixedCols = each.fixedCols;
    grid_.model.SetColNames = each.names ? -1 : 0;
    grid_.model.SetRecordNumbers = each.numbers ? -1 : 0;
    Fill();
    EXPECT_EQ(grid_.AllCells(), each.cells) << each.what;
  }
}

TEST_F(GridFillTest, FitsColumnsToTheirNamesWhereAsked) {
  InsertThree();
  Fill();
  EXPECT_EQ(grid_.model.ColWidthPx(1), 50);
  grid_.model.SetColWidth = -1;
  grid_.names.fields = "Code,Town";
  grid_.names.fields = "Town,Name";
  Fill();
  EXPECT_EQ(grid_.model.ColWidthPx(0), 50);
  EXPECT_EQ(grid_.model.ColWidthPx(1), 35);
  EXPECT_EQ(grid_.model.ColWidthPx(2), 35);
  grid_.model.SetColNames = 0;
  grid_.model.SetColWidthPx(1, 70);
  Fill();
  EXPECT_EQ(grid_.model.ColWidthPx(1), 70) << "only with the names";
}

TEST_F(GridFillTest, LimitsTypingToTheStoredSize) {
  InsertThree();
  grid_.names.fields = "Name,Pay,2";
  ASSERT_EQ(grid_.model.PutCellMaxLength(1, 3), GridResult::Done);
  Fill();
  EXPECT_EQ(grid_.model.CellMaxLength.Get(1), 3) << "only where cells can be edited";
  grid_.model.AllowUpdate = -1;
  Fill();
  const ShortArray& limits = grid_.model.CellMaxLength;
  ASSERT_EQ(limits.Size(), 3u);
  EXPECT_EQ(limits.Get(0), 20);
  EXPECT_EQ(limits.Get(1), 5) << "of a number too";
  EXPECT_EQ(limits.Get(2), 0) << "a field by its number has no name";
}

TEST_F(GridFillTest, DoesNotNest) {
  InsertThree();
  int nested = 0;
  grid_.onFormat = [&](std::u16string&) {
    EXPECT_TRUE(FillTurn::IsTaken());
    grid_.data.ReloadList();
    ++nested;
  };
  EXPECT_EQ(Fill(), "filled");
  EXPECT_EQ(nested, 3);
  EXPECT_EQ(grid_.AllCells(), kThree);
  EXPECT_FALSE(FillTurn::IsTaken());
}

TEST_F(GridFillTest, SurvivesWhatAHandlerDoes) {
  InsertThree();
  const struct {
    const char* what;
    std::function<void()> handler;
    const char *log, *cells;
  } cases[] = {
      {"the table is closed", [this] { office_.Close("People"); }, "filled", kThree},
      {"the window goes", [this] { grid_.window = nullptr; }, "", "||/|1|うめ/|2|もも/|3|さくら"},
      {"another window comes", [this] { grid_.window = &office_; }, "",
       "||/|1|うめ/|2|もも/|3|さくら"},
      {"the names change", [this] { grid_.names = {}; }, "filled", kThree},
      {"the cells are cleared", [this] { grid_.model.ClearCells(); }, "filled",
       "|Code|Name/   1||/   2||/   3|3|さくら"},
      {"the rows are put", [this] { grid_.model.PutRows(0); }, "filled", ""},
      {"the columns are put", [this] { grid_.model.PutCols(-7); }, "filled", "///"},
      {"the current record moves", [this] { EXPECT_EQ(GoTo("3"), 0); }, "filled", nullptr},
  };
  const GridNames names = grid_.names;
  for (const auto& each : cases) {
    grid_.names = names;
    grid_.window = &grid_;
    grid_.model.Rows = 2;
    grid_.model.Cols = 3;
    grid_.model.ClearCells();
    grid_.onFormat = [&](std::u16string&) {
      if (office_.OpenTableOf("People") != nullptr) each.handler();
    };
    EXPECT_EQ(Fill(), each.log) << each.what;
    if (each.cells != nullptr) {
      EXPECT_EQ(grid_.AllCells(), each.cells) << each.what;
    }
    if (office_.OpenTableOf("People") == nullptr) OpenPeople();
  }
}

TEST_F(GridFillTest, WithoutMemoryShowsTheRowsThatStandForTheirRecords) {
  InsertMany(6);
  grid_.model.AllowUpdate = -1;
  Fill();
  {
    const MemoryRunsOut memory(1);
    EXPECT_EQ(Fill(), "filled");
    EXPECT_TRUE(memory.Happened());
  }
  const std::string shown = messages_.Take();
  EXPECT_EQ(std::ranges::count(shown, ';'), 1) << "one message, not one a cell: " << shown;
  EXPECT_EQ(shown.find("VE001 メモリ不足  QRNGridUtil "), 0u);
  EXPECT_EQ(Fill(), "filled");
  EXPECT_EQ(grid_.Cells(6, 0, 6, 2), "   6|6|x");
}

}  // namespace
}  // namespace qrn::test
