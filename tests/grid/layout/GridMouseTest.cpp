// The left button: current cell, selections, borders; and the bars.
#include <gtest/gtest.h>

#include "PlayedScreen.h"
#include "grid/layout/GridMouse.h"
#include "grid/layout/GridScroll.h"

namespace qrn::test {
namespace {

// 20 rows and 8 columns, 20 by 50 pixels each, in 200 by 100.
struct Mouse : ::testing::Test {
  std::string Selection() const {
    return std::to_string(model_.SelStartRow) + "," + std::to_string(model_.SelStartCol) + "-" +
           std::to_string(model_.SelEndRow) + "," + std::to_string(model_.SelEndCol);
  }
  std::string Press(int32_t x, int32_t y) {
    mouse_.Press(x, y);
    return screen_.Take() + std::to_string(model_.Row) + "," + std::to_string(model_.Col) + " " +
           Selection();
  }
  std::string Move(int32_t x, int32_t y, bool held = true) {
    mouse_.Move(held, x, y);
    return screen_.Take();
  }
  std::string Release() {
    mouse_.Release();
    return screen_.Take() + Selection();
  }

  SizedModel model_{20, 8};
  PlayedScreen screen_{model_};
  GridMouse mouse_{model_, screen_};
};

TEST_F(Mouse, EachAreaHasItsPress) {
  const struct {
    int32_t x, y;
    const char* result;
    int32_t rowSelected;
  } cases[] = {
      {10, 10, "Change 1,1 1,1-20,8", 0},
      {75, 10, "Change 1,1 1,1-20,1", 0},
      {130, 10, "Change 1,2 1,2-20,2", 0},
      {99, 10, "5,5 9,9-9,9", 0},  // on the border between 1 and 2
      {98, 10, "Change 1,1 1,1-20,1", 0},
      {10, 50, "Change 2,1 2,1-2,8", 1},
      {10, 60, "5,5 9,9-9,9", 0},
      {50, 50, "5,5 9,9-9,9", 0},
      {75, 20, "5,5 9,9-9,9", 0},
      {75, 50, "cell Change row5 edit(2,1) 2,1 2,1-2,1", 0},
      {51, 21, "cell Change row5 edit(1,1) 1,1 1,1-1,1", 0},
      {180, 90, "cell Change row5 edit(4,3) 4,3 4,3-4,3", 0},
  };
  for (const auto& row : cases) {
    model_.Row = model_.Col = 5;
    model_.SelStartRow = model_.SelEndRow = model_.SelStartCol = model_.SelEndCol = 9;
    model_.rowSelected = 1;
    EXPECT_EQ(Press(row.x, row.y), row.result) << row.x << "," << row.y;
    EXPECT_EQ(model_.rowSelected, row.rowSelected) << row.x << "," << row.y;
    Release();
  }
}

TEST_F(Mouse, BehindTheLastCellNothingIsPressed) {
  model_.LeftCol = 7;
  model_.TopRow = 19;
  model_.rowSelected = 1;
  for (const auto& [x, y] : {std::pair{100, 30}, {75, 40}, {10, 40}, {100, 10}}) {
    EXPECT_EQ(Press(x, y), "1,1 0,0-0,0") << x << "," << y;
  }
  EXPECT_EQ(model_.rowSelected, 1);
  EXPECT_EQ(Press(99, 39), "cell Change row1 edit(19,7) 19,7 19,7-19,7");
}

// Without resizing a border is a part of its column or row.
TEST_F(Mouse, BordersGripWhereTheyAreAllowed) {
  const struct {
    int32_t option;
    bool columns, rows;
  } cases[] = {{kResizeNone, false, false},
               {kResizeCol, true, false},
               {kResizeRow, false, true},
               {kResizeBoth, true, true},
               {9, false, false}};
  for (const auto& row : cases) {
    model_.AllowUserResizing = row.option;
    EXPECT_EQ(Move(99, 10, false), row.columns ? "cursor| " : "pointer ") << row.option;
    EXPECT_EQ(Move(10, 41, false), row.rows ? "cursor- " : "pointer ") << row.option;
    EXPECT_EQ(Press(99, 10).starts_with("Change"), !row.columns);
    EXPECT_EQ(Press(10, 41).starts_with("Change"), !row.rows);
    EXPECT_EQ(Move(99, 21, false), "pointer ") << "below the fixed rows";
    EXPECT_EQ(Move(51, 41, false), "pointer ");
  }
}

TEST_F(Mouse, ABorderIsDragged) {
  EXPECT_EQ(Move(100, 10), "cursor| hide line|100:100 ");
  EXPECT_EQ(Move(130, 60), "line|100:100 line|130:100 cursor| hide ");
  EXPECT_EQ(Move(130, 60, false), "pointer ") << "kept in hand without the button";
  EXPECT_EQ(Move(20, 60), "line|130:100 line|51:100 cursor| hide ") << "a pixel is left";
  EXPECT_EQ(Release(), "bars repaint edit(1,1) 0,0-0,0");
  EXPECT_EQ(model_.ColWidthPx(1), 1);
  EXPECT_EQ(model_.fixedColsWidth, 50);

  EXPECT_EQ(Move(49, 10), "cursor| hide line|49:100 ");
  Move(80, 10);
  Release();
  EXPECT_EQ(model_.ColWidthPx(0), 80);
  EXPECT_EQ(model_.fixedColsWidth, 80) << "the fixed part grows with it";

  EXPECT_EQ(Move(10, 61), "cursor- hide line-61:200 ");
  Move(10, 90);
  Release();
  EXPECT_EQ(model_.RowHeightPx(2), 50);
  Move(10, 20);
  Move(10, 45);
  Release();
  EXPECT_EQ(model_.RowHeightPx(0), 45);
  EXPECT_EQ(model_.fixedRowsHeight, 45);
  EXPECT_EQ(Release(), "0,0-0,0") << "nothing is in hand any more";
}

TEST_F(Mouse, ExtentsPutAtRunTimeCountFromTheNextMove) {
  model_.FixedCols = 2;
  model_.SetRowHeightPx(0, 33);
  Move(150, 90, false);
  EXPECT_EQ(model_.fixedColsWidth, 100);
  EXPECT_EQ(model_.fixedRowsHeight, 33);
}

TEST_F(Mouse, SelectsToTheCellUnderThePoint) {
  Press(130, 50);
  EXPECT_EQ(Move(140, 55), "pointer ") << "the same cell";
  EXPECT_EQ(Move(75, 90), "paint(2,2)-(4,1) pointer ");
  EXPECT_EQ(Move(75, 5000), "paint(2,2)-(2,1) pointer ") << "no row there: the first one's";
  EXPECT_EQ(Move(75, 70), "paint(2,2)-(3,1) pointer ");
  EXPECT_EQ(Release(), "focus(2,2) SelChange 2,1-3,2");
  Press(130, 50);
  EXPECT_EQ(Release(), "SelChange 2,2-2,2");
  Press(130, 50);
  Move(75, 90, false);
  EXPECT_EQ(Release(), "2,2-2,2") << "the button came up elsewhere";
}

TEST_F(Mouse, ASelectionBeyond16BitsIsCutTheCurrentCellIsNot) {
  SizedModel many(40000, 3, {65000, 64});
  PlayedScreen screen(many);
  GridMouse mouse(many, screen);
  many.TopRow = 32766;
  for (const auto& [y, selected] : {std::pair{50, 32767}, {70, -32768}, {90, -32767}}) {
    mouse.Press(75, y);
    EXPECT_EQ(many.SelStartRow, selected);
    EXPECT_EQ(many.Row, 32766 + (y - 20) / 20);
  }
}

TEST_F(Mouse, HandlersMayTakeTheCellAway) {
  screen_.onEvent = [&](const std::string& event) {
    if (event == "cell") model_.Rows = 3;
  };
  EXPECT_EQ(Press(75, 70), "cell 1,1 0,0-0,0");
}

struct Bars : Mouse {
  std::string Notice(GridDirection direction, uint32_t notice, int32_t thumb = 0) {
    scroll_.OnNotice(direction, notice, thumb, {1, 7});
    return screen_.Take() + std::to_string(model_.TopRow) + "," + std::to_string(model_.LeftCol);
  }
  GridScroll scroll_{model_, screen_};
};

TEST_F(Bars, EveryNotice) {
  const struct {
    uint32_t notice;
    int32_t thumb;
    const char* down;    // from row 3 of position 3
    const char* across;  // from column 3
  } cases[] = {
      {kLineBack, 0, "repaint bar-2 edit(3,3) 2,3", "repaint bar|2 edit(3,3) 3,2"},
      {kPageBack, 0, "repaint bar-2 edit(3,3) 2,3", "repaint bar|2 edit(3,3) 3,2"},
      {kLineOn, 0, "repaint bar-4 edit(3,3) 4,3", "repaint bar|4 edit(3,4) 3,4"},
      {kPageOn, 0, "repaint bar-4 edit(3,3) 4,3", "repaint bar|4 edit(3,4) 3,4"},
      {kThumbDropped, 7, "repaint bar-7 edit(3,3) 7,3", "repaint bar|7 edit(3,7) 3,7"},
      {kThumbDropped, 1, "repaint bar-1 edit(3,3) 1,3", "repaint bar|1 edit(3,1) 3,1"},
      {kThumbDropped, 8, "3,3", "3,3"},
      {kThumbDropped, 0, "3,3", "3,3"},
      {kThumbDropped, 3, "3,3", "3,3"},
      {5, 6, "3,3", "3,3"},
      {8, 6, "3,3", "3,3"},
  };
  for (const auto& row : cases) {
    for (const auto direction : {GridDirection::Vertical, GridDirection::Horizontal}) {
      model_.Row = model_.Col = model_.TopRow = model_.LeftCol = 3;
      model_.vScrollPos = model_.hScrollPos = 3;
      const bool down = direction == GridDirection::Vertical;
      EXPECT_EQ(Notice(direction, row.notice, row.thumb), down ? row.down : row.across)
          << row.notice << " " << row.thumb;
    }
  }
}

TEST_F(Bars, EndAtTheirRange) {
  EXPECT_EQ(Notice(GridDirection::Vertical, kLineBack), "1,1");
  EXPECT_EQ(Notice(GridDirection::Horizontal, kPageBack), "1,1");
  model_.vScrollPos = model_.hScrollPos = 7;
  EXPECT_EQ(Notice(GridDirection::Vertical, kLineOn), "1,1");
  EXPECT_EQ(Notice(GridDirection::Horizontal, kPageOn), "1,1");
}

}  // namespace
}  // namespace qrn::test
