// Keys that move the current cell: in the grid's window and in the edit box.
#include <gtest/gtest.h>

#include "PlayedScreen.h"
#include "grid/layout/GridKeys.h"

namespace qrn::test {
namespace {

constexpr uint32_t kKeyHome = 36;

// 20 rows and 8 columns in 200 by 100 pixels: whole in view are rows 1 to 3, columns 1 and 2.
struct Keys : ::testing::Test {
  void At(int32_t row, int32_t col, int32_t top = 1, int32_t left = 1) {
    model_.Row = row;
    model_.Col = col;
    model_.TopRow = top;
    model_.LeftCol = left;
    model_.vScrollPos = top;
    model_.hScrollPos = left;
  }
  std::string Place() const {
    return std::to_string(model_.Row) + "," + std::to_string(model_.Col) + " from " +
           std::to_string(model_.TopRow) + "," + std::to_string(model_.LeftCol);
  }
  std::string Press(uint32_t key) {
    const bool taken = keys_.OnGridKey(key);
    return (taken ? "" : "left: ") + screen_.Take() + Place();
  }
  std::string PressInEdit(uint32_t key, EditCaret caret) {
    const bool taken = keys_.OnEditKey(key, caret);
    return (taken ? "" : "left: ") + screen_.Take() + Place();
  }

  SizedModel model_{20, 8};
  PlayedScreen screen_{model_};
  GridKeys keys_{model_, screen_};
};

TEST_F(Keys, MoveInTheGridsWindow) {
  const struct {
    uint32_t key;
    int32_t row, col, top, left;
    const char* result;
  } cases[] = {
      {kKeyRight, 2, 1, 1, 1, "cell focus(2,1) focus(2,2) edit(2,2) 2,2 from 1,1"},
      {kKeyReturn, 2, 1, 1, 1, "cell focus(2,1) focus(2,2) edit(2,2) 2,2 from 1,1"},
      {kKeyRight, 2, 2, 1, 1, "cell bar|2 edit(2,3) repaint 2,3 from 1,2"},
      {kKeyRight, 2, 7, 1, 6, "left: 2,7 from 1,6"},
      {kKeyReturn, 2, 7, 1, 6, "left: 2,7 from 1,6"},
      // The row is seen in part: the cell is not in view, its text is not taken.
      {kKeyRight, 4, 1, 1, 1, "bar|2 edit(4,2) repaint 4,2 from 1,2"},
      {kKeyLeft, 2, 2, 1, 1, "focus(2,2) focus(2,1) edit(2,1) 2,1 from 1,1"},
      {kKeyLeft, 2, 3, 1, 3, "focus(2,3) focus(2,2) bar|2 edit(2,2) repaint 2,2 from 1,2"},
      {kKeyLeft, 2, 1, 1, 1, "left: 2,1 from 1,1"},
      {kKeyUp, 2, 1, 1, 1, "cell row2 focus(2,1) focus(1,1) edit(1,1) 1,1 from 1,1"},
      {kKeyUp, 5, 1, 5, 1, "cell row5 focus(5,1) focus(4,1) bar-4 edit(4,1) repaint 4,1 from 4,1"},
      {kKeyUp, 1, 1, 1, 1, "left: 1,1 from 1,1"},
      {kKeyDown, 2, 1, 1, 1, "cell row2 focus(2,1) focus(3,1) edit(3,1) 3,1 from 1,1"},
      {kKeyDown, 3, 1, 1, 1,
       "cell row3 focus(3,1) focus(4,1) bar-2 edit(4,1) repaint 4,1 from 2,1"},
      {kKeyDown, 19, 1, 17, 1, "left: 19,1 from 17,1"},
      {kKeyHome, 2, 2, 1, 1, "left: 2,2 from 1,1"},
      {kKeyDelete, 2, 2, 1, 1, "left: 2,2 from 1,1"},
      // Scrolled away: the first cell that shows takes its place, then the key is run.
      {kKeyDown, 2, 2, 6, 3, "focus(6,3) cell row6 focus(6,3) focus(7,3) edit(7,3) 7,3 from 6,3"},
      {kKeyHome, 12, 2, 6, 3, "left: focus(6,3) 6,3 from 6,3"},
      {kKeyHome, 0, 0, 1, 1, "left: 1,1 from 1,1"},
  };
  for (const auto& row : cases) {
    At(row.row, row.col, row.top, row.left);
    EXPECT_EQ(Press(row.key), row.result) << row.key;
  }
}

TEST_F(Keys, InTheEditBoxLeaveTheCellAtItsEnds) {
  constexpr EditCaret kFirst{0, 0, 4};
  constexpr EditCaret kMiddle{2, 2, 4};
  constexpr EditCaret kLast{4, 4, 4};
  constexpr EditCaret kAll{0, 4, 4};
  constexpr EditCaret kNoText{0, 0, 0};
  model_.AllowUpdate = -1;
  const struct {
    uint32_t key;
    EditCaret caret;
    int32_t row, col;
    const char* result;
  } cases[] = {
      {kKeyLeft, kFirst, 2, 2, "cell focus(2,2) focus(2,1) edit(2,1) 2,1 from 1,1"},
      {kKeyLeft, kNoText, 2, 2, "cell focus(2,2) focus(2,1) edit(2,1) 2,1 from 1,1"},
      {kKeyLeft, kMiddle, 2, 2, "left: 2,2 from 1,1"},
      {kKeyLeft, kAll, 2, 2, "left: 2,2 from 1,1"},
      {kKeyLeft, kFirst, 2, 1, "left: 2,1 from 1,1"},
      {kKeyRight, kLast, 2, 1, "cell focus(2,1) focus(2,2) edit(2,2) 2,2 from 1,1"},
      {kKeyRight, kLast, 2, 2, "cell bar|2 edit(2,3) repaint 2,3 from 1,2"},
      {kKeyRight, kAll, 2, 1, "left: 2,1 from 1,1"},
      {kKeyRight, kFirst, 2, 1, "left: 2,1 from 1,1"},
      {kKeyRight, kLast, 2, 7, "left: 2,7 from 1,1"},
      {kKeyUp, kMiddle, 2, 1, "cell row2 focus(2,1) focus(1,1) edit(1,1) 1,1 from 1,1"},
      {kKeyUp, kMiddle, 1, 1, "left: 1,1 from 1,1"},
      {kKeyDown, kAll, 19, 1, "left: 19,1 from 1,1"},
      {kKeyReturn, kLast, 2, 1, "left: 2,1 from 1,1"},
      {kKeyDelete, kLast, 2, 1, "left: 2,1 from 1,1"},
  };
  for (const auto& row : cases) {
    At(row.row, row.col);
    EXPECT_EQ(PressInEdit(row.key, row.caret), row.result) << row.key << " " << row.col;
  }
}

TEST_F(Keys, DeleteAsksWhatIsSelectedAndAllowed) {
  const struct {
    bool update, allowed, selected;
    bool inGrid, inEdit;
  } cases[] = {
      {false, true, true, true, true},   {false, true, false, false, false},
      {false, false, true, true, false},  // the deletion itself refuses then
      {true, true, true, false, true},   {true, false, true, false, false},
  };
  for (const auto& row : cases) {
    model_.AllowUpdate = row.update ? -1 : 0;
    model_.AllowDelete = row.allowed ? -1 : 0;
    model_.rowSelected = row.selected;
    const std::string done = "delete edit(1,1) repaint 1,1 from 1,1";
    const std::string left = "left: 1,1 from 1,1";
    EXPECT_EQ(Press(kKeyDelete), row.inGrid ? done : left);
    EXPECT_EQ(PressInEdit(kKeyDelete, {0, 0, 0}), row.inEdit ? done : left);
  }
}

TEST_F(Keys, WithTheEditBoxHiddenLeftIsItsOwn) {
  model_.AllowUpdate = -1;
  At(2, 2);
  EXPECT_EQ(Press(kKeyLeft), "left: 2,2 from 1,1");
}

TEST_F(Keys, UpwardsTheLastRowsAreNotScrolledBackToWithSeveralFixedRows) {
  model_.FixedRows = 3;
  model_.fixedRowsHeight = 60;
  At(8, 1, 8);
  model_.vScrollPos = 6;
  for (int32_t i = 0; i < 5; ++i) Press(kKeyUp);
  EXPECT_EQ(Place(), "4,1 from 5,1") << "position 3 is not above 3";
}

// A column that no window shows whole.
TEST_F(Keys, TheViewNeverBeginsInTheFixedColumns) {
  model_.SetColWidthPx(1, 900);
  At(1, 2, 1, 2);
  Press(kKeyLeft);
  EXPECT_EQ(Place(), "1,1 from 1,1");
  model_.SetColWidthPx(2, 900);
  At(1, 2, 1, 1);
  Press(kKeyHome);
  EXPECT_EQ(Place(), "1,1 from 1,1");
}

TEST_F(Keys, HandlersMayTakeAwayWhereTheKeyWasGoing) {
  const struct {
    uint32_t key;
    std::function<void()> handler;
    const char* place;
  } cases[] = {
      {kKeyDown, [&] { model_.Rows = 3; }, "2,2 from 1,1"},
      {kKeyDown, [&] { model_.Row = 10; }, "11,2 from 2,1"},
      {kKeyUp, [&] { model_.FixedRows = 2; }, "2,2 from 1,1"},
      {kKeyRight, [&] { model_.Cols = 3; }, "2,2 from 1,1"},
      {kKeyRight, [&] { model_.Col = 100; }, "2,100 from 1,1"},
  };
  for (const auto& row : cases) {
    model_.Rows = 20;
    model_.Cols = 8;
    model_.FixedRows = 1;
    At(2, 2);
    screen_.onEvent = [&](const std::string& event) {
      if (event == "cell") row.handler();
    };
    keys_.OnGridKey(row.key);
    EXPECT_EQ(Place(), row.place) << row.key;
  }
}

}  // namespace
}  // namespace qrn::test
