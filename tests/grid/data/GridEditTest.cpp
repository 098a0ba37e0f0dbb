// What the user changes in a grid, on its way back to the records.

#include "GridOffice.h"

namespace qrn::test {
namespace {

constexpr char kWritten[] = "AfterColUpdate BeforeUpdate AfterUpdate";

struct GridEdit : GridOffice {
  void SetUp() override {
    InsertThree();
    grid_.model.AllowUpdate = grid_.model.AllowDelete = -1;
    Fill();
  }
  // The log without what is repainted.
  std::string Events(std::string log) {
    for (const std::string part : {" cell", " all", "cell ", "all "}) {
      for (size_t at = log.find(part); at != std::string::npos; at = log.find(part)) {
        log.erase(at, part.size());
      }
    }
    return log;
  }
  std::string EventsOf(int32_t row, int32_t col, const std::string& text) {
    return Events(TypeAndLeave(row, col, text));
  }
};

TEST_F(GridEdit, OfACellRunsItsEventsAndThenTheRows) {
  ASSERT_EQ(GoTo("3"), 0);
  grid_.Type(2, 2, "すもも");
  grid_.data.CommitCell();
  EXPECT_EQ(grid_.TakeLog(), "BeforeColUpdate(すもも) cell AfterColUpdate");
  EXPECT_EQ(grid_.model.rowDirty, 1);
  EXPECT_EQ(grid_.Cell(2, 2), "すもも");
  grid_.data.CommitRow(2);
  EXPECT_EQ(grid_.TakeLog(), "BeforeUpdate AfterUpdate");
  EXPECT_EQ(grid_.model.rowDirty, 0);
  EXPECT_EQ(Current(), "3") << "the form's record";
  EXPECT_EQ(Stored("2"), "すもも,Nara") << "fields that the grid does not show stay";
  EXPECT_EQ(messages_.Take(), "");
}

TEST_F(GridEdit, ThatChangesNothingIsNone) {
  EXPECT_EQ(TypeAndLeave(2, 2, "もも"), "");
  EXPECT_EQ(grid_.model.rowDirty, 0);
  grid_.Type(2, 2, "x");
  grid_.model.editActive = 0;
  EXPECT_EQ(Leave(2), "") << "the box does not stand there";
}

TEST_F(GridEdit, OfAnEmptyCellIsComparedWithTheCellBefore) {
  grid_.PutLine(3, 2, "");
  grid_.Type(2, 2, "もも");
  grid_.Type(3, 2, "");
  grid_.data.CommitCell();
  EXPECT_EQ(Events(grid_.TakeLog()), "BeforeColUpdate() AfterColUpdate");
}

TEST_F(GridEdit, WritesEmptyTextsButNoRowWithoutAny) {
  EXPECT_EQ(EventsOf(2, 2, ""), std::string("BeforeColUpdate() ") + kWritten);
  EXPECT_EQ(Stored("2"), ",Nara");
  ASSERT_EQ(GoTo("1"), 0);
  EXPECT_EQ(EventsOf(2, 1, ""), "BeforeColUpdate() AfterColUpdate BeforeUpdate");
  EXPECT_EQ(grid_.model.rowDirty, 1);
  EXPECT_EQ(Current(), "1") << "a button's update meets the form's record";
  EXPECT_EQ(Stored("2"), ",Nara");
}

TEST_F(GridEdit, WithoutLeaveOrRecordIsNotWritten) {
  grid_.model.rowDirty = 1;
  grid_.model.AllowUpdate = 0;
  EXPECT_EQ(Leave(2), "");
  grid_.model.AllowUpdate = -1;
  for (const int32_t row : {0, -1, 4, INT32_MAX, INT32_MIN}) EXPECT_EQ(Leave(row), "") << row;
  grid_.names.table = "";
  EXPECT_EQ(Leave(2), "");
  EXPECT_EQ(grid_.model.rowDirty, 1);
  grid_.names.table = "People";
  grid_.model.rowDirty = 0;
  EXPECT_EQ(Leave(2), "");
}

TEST_F(GridEdit, FillsTheSelectionWhereTextsDo) {
  grid_.model.FillStyle = kFillSelection;
  grid_.model.SelStartRow = 1;
  grid_.model.SelEndRow = 2;
  grid_.model.SelStartCol = grid_.model.SelEndCol = 2;
  EXPECT_EQ(TypeAndLeave(2, 2, "x"),
            "BeforeColUpdate(x) all AfterColUpdate BeforeUpdate AfterUpdate");
  EXPECT_EQ(grid_.Cells(1, 2, 3, 2), "x/x/さくら");
  EXPECT_EQ(Stored("2"), "x,Nara");
  EXPECT_EQ(Stored("1"), "うめ,Nara") << "only the row that is left is written";
}

TEST_F(GridEdit, StoresFieldsByTheirNameAndDropsOthers) {
  grid_.names.fields = "Town,2,Pay";
  Fill();
  grid_.Type(1, 2, "ignored");
  grid_.data.CommitCell();
  grid_.Type(1, 3, "12.5");
  EXPECT_EQ(Events(Leave(1)), std::string("BeforeColUpdate(ignored) AfterColUpdate ") +
                                  "BeforeColUpdate(12.5) " + kWritten);
  EXPECT_EQ(Stored("1"), "うめ,Nara");
  EXPECT_EQ(office_.Field("People", "Pay"), "12.50");
}

struct RefusedCase {
  const char* what;
  std::function<void()> before;  // the row is left
  const char *log, *message;
};

TEST_F(GridEdit, ThatIsRefusedIsToldAndEndsTheRowsBeingChanged) {
  const auto cutOff = [this] { ASSERT_TRUE(grid_.model.positions.Set(1, 0x7FFFFFF0)); };
  const RefusedCase cases[] = {
      {"the record has gone", cutOff, "BeforeUpdate BtrieveError(People,43)",
       "VE820 GetPositionに失敗しました(43); "},
      {"a key that cannot change", [this] { grid_.PutLine(2, 1, "9"); },
       "BeforeUpdate BtrieveError(People,10)", "VE821 Updateに失敗しました(10); "},
      {"the table is closed", [this] { office_.Close("People"); },
       "BeforeUpdate BtrieveError(People,3)", "VE820 GetPositionに失敗しました(3); "},
  };
  for (const RefusedCase& each : cases) {
    OpenPeople();
    ASSERT_EQ(GoTo("3"), 0);
    Fill();
    for (const Status handled : {-1, 0, 99}) {
      each.before();
      grid_.handled = handled;
      grid_.model.rowDirty = 1;
      EXPECT_EQ(Leave(2), each.log) << each.what;
      EXPECT_EQ(grid_.model.rowDirty, 0) << each.what;
      const std::string shown = messages_.Take();
      if (handled < 0) {
        EXPECT_EQ(shown, each.message) << each.what;
      } else {
        EXPECT_EQ(shown.empty(), handled == 0) << each.what << shown;
      }
      if (office_.OpenTableOf("People") != nullptr) {
        EXPECT_EQ(Current(), "3") << each.what;
      } else {
        OpenPeople();
        ASSERT_EQ(GoTo("3"), 0);
      }
    }
    grid_.handled = -1;
  }
  EXPECT_EQ(Stored("2"), "もも,Nara");
}

TEST_F(GridEdit, WhoseFormsRecordHasGoneTellsTheWayBack) {
  ASSERT_EQ(GoTo("1"), 0);
  grid_.on["BeforeUpdate"] = [this] { EXPECT_EQ(DbButtonDelete(office_.engine, button_), 0); };
  EXPECT_EQ(EventsOf(2, 2, "x"),
            "BeforeColUpdate(x) AfterColUpdate BeforeUpdate BtrieveError(People,43)");
  EXPECT_EQ(messages_.Take(), "VE822 GetDirectに失敗しました(43); ");
  EXPECT_EQ(grid_.model.rowDirty, 0);
  EXPECT_EQ(Stored("2"), "x,Nara");
}

TEST_F(GridEdit, SurvivesWhatHandlersDo) {
  const struct {
    const char *what, *event;
    std::function<void()> handler;
    const char *log, *stored;
  } cases[] = {
      {"the grid is filled anew before the cell is taken", "BeforeColUpdate",
       [this] { grid_.data.ReloadList(); },
       "BeforeColUpdate(x) filled AfterColUpdate BeforeUpdate AfterUpdate", "x,Nara"},
      {"and before the row is", "BeforeUpdate", [this] { grid_.data.ReloadList(); },
       "BeforeColUpdate(x) AfterColUpdate BeforeUpdate filled AfterUpdate", "もも,Nara"},
      {"it has no such row any more", "BeforeUpdate",
       [this] {
         grid_.names.conditions = "@Code = 1";
         grid_.data.ReloadList();
       },
       "BeforeColUpdate(x) AfterColUpdate BeforeUpdate filled", "もも,Nara"},
      {"the form closes before the cell is taken", "BeforeColUpdate",
       [this] { grid_.window = nullptr; }, "BeforeColUpdate(x)", "もも,Nara"},
      {"the database goes before the row is taken", "BeforeUpdate",
       [this] { grid_.findTable = [](const GridNames&) { return nullptr; }; },
       "BeforeColUpdate(x) AfterColUpdate BeforeUpdate", "もも,Nara"},
      {"the focus goes", "BeforeColUpdate",
       [this] {
         grid_.data.CommitCell();
         grid_.data.CommitRow(2);
         grid_.model.editActive = 0;
       },
       "BeforeColUpdate(x) AfterColUpdate BeforeUpdate AfterUpdate", "x,Nara"},
      {"the focus goes from the row", "BeforeUpdate",
       [this] {
         grid_.data.CommitCell();
         grid_.data.CommitRow(2);
         grid_.data.DeleteCurrentRow();
       },
       "BeforeColUpdate(x) AfterColUpdate BeforeUpdate AfterUpdate", "x,Nara"},
      {"the form goes to another record", "BeforeUpdate", [this] { EXPECT_EQ(GoTo("1"), 0); },
       "BeforeColUpdate(x) AfterColUpdate BeforeUpdate AfterUpdate", "x,Nara"},
      {"the cells are fewer", "BeforeUpdate", [this] { grid_.model.PutCols(2); },
       "BeforeColUpdate(x) AfterColUpdate BeforeUpdate BtrieveError(People,10)", "もも,Nara"},
  };
  const auto findTable = grid_.findTable;
  const GridNames names = grid_.names;
  for (const auto& each : cases) {
    grid_.on.clear();
    grid_.findTable = findTable;
    grid_.names = names;
    grid_.window = &grid_;
    grid_.model.Cols = 3;
    ASSERT_EQ(Stored("2"), "もも,Nara") << each.what;
    Fill();
    grid_.model.rowDirty = grid_.model.rowSelected = 0;
    grid_.on[each.event] = each.handler;
    EXPECT_EQ(EventsOf(2, 2, "x"), each.log) << each.what;
    EXPECT_EQ(Stored("2"), each.stored) << each.what;
    grid_.on.clear();
    grid_.findTable = findTable;
    messages_.Take();
    if (Stored("2") != "もも,Nara") {
      form_.texts = {{"Code", "2"}, {"Name", "もも"}, {"Town", "Nara"}};
      ASSERT_EQ(DbButtonUpdate(office_.engine, button_, false), 0);
    }
  }
}

}  // namespace
}  // namespace qrn::test
