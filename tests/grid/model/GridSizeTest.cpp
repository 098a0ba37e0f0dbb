// How many columns and rows a grid has, how large they are, and what it refuses.
#include <gtest/gtest.h>

#include "tests/core/Support.h"
#include "tests/fields/IniFile.h"
#include "tests/grid/PlayedGrid.h"

namespace qrn::test {
namespace {

using Put = GridResult (GridModel::*)(int32_t);

struct SizeCase {
  const char* what;
  Put put;
  int32_t value;
  bool taken;
};

struct Sizes : ::testing::Test {
  Sizes() {
    grid_.model.PutCols(4);
    grid_.model.PutRows(5);
    grid_.model.PutFixedCols(2);
    grid_.model.PutFixedRows(2);
  }
  std::string Counts() const {
    const GridModel& grid = grid_.model;
    return std::to_string(grid.Cols) + "," + std::to_string(grid.Rows) + "," +
           std::to_string(grid.FixedCols) + "," + std::to_string(grid.FixedRows);
  }
  PlayedGrid grid_{{.maxRows = 10, .maxCols = 8}};
};

TEST_F(Sizes, RefuseWhatIsTooManyAndTheVeryNumberOfTheFixedOnes) {
  const SizeCase cases[] = {
      {"all columns there can be", &GridModel::PutCols, 8, true},
      {"one more", &GridModel::PutCols, 9, false},
      {"as many as are fixed", &GridModel::PutCols, 2, false},
      {"one fewer than are fixed", &GridModel::PutCols, 1, true},
      {"none", &GridModel::PutCols, 0, true},
      {"fewer than none", &GridModel::PutCols, -1, true},
      {"all rows there can be", &GridModel::PutRows, 10, true},
      {"one more row", &GridModel::PutRows, 11, false},
      {"as many rows as are fixed", &GridModel::PutRows, 2, false},
      {"one fewer row than are fixed", &GridModel::PutRows, 1, true},
      {"all columns but one fixed", &GridModel::PutFixedCols, 3, true},
      {"all columns fixed", &GridModel::PutFixedCols, 4, false},
      {"no column fixed", &GridModel::PutFixedCols, 0, true},
      {"fewer than no column fixed", &GridModel::PutFixedCols, -3, true},
      {"more fixed than there can be", &GridModel::PutFixedCols, 9, false},
      {"all rows but one fixed", &GridModel::PutFixedRows, 4, true},
      {"all rows fixed", &GridModel::PutFixedRows, 5, false},
      {"no row fixed", &GridModel::PutFixedRows, 0, true},
  };
  for (const SizeCase& each : cases) {
    const std::string before = Counts();
    const GridResult result = (grid_.model.*each.put)(each.value);
    EXPECT_EQ(result, each.taken ? GridResult::Done : GridResult::InvalidValue) << each.what;
    EXPECT_EQ(Counts() == before, !each.taken) << each.what << ": " << Counts();
    grid_.model.Cols = 4;
    grid_.model.Rows = 5;
    grid_.model.FixedCols = grid_.model.FixedRows = 2;
  }
}

TEST_F(Sizes, AFieldListMakesRoomForItsFields) {
  const struct {
    const char* fields;
    int32_t cols;
  } cases[] = {{"", 4},     {"A,B", 4},           {"A,B,C,D", 6},          {"A,B,C,D,E,F", 8},
               {"A,,,", 6}, {"A,B,C,D,E,F,G", 4}, {"\x83\x5C,\x81\x5B", 4}};
  for (const auto& each : cases) {
    grid_.model.Cols = 4;
    grid_.model.MakeRoomForFields(each.fields);
    EXPECT_EQ(grid_.model.Cols, each.cols) << each.fields;
  }
}

TEST_F(Sizes, AreTwipsOutsideAndPixelsInside) {
  grid_.model.Create();
  int32_t twips = 0;
  EXPECT_EQ(grid_.model.GetColWidth(0, twips), GridResult::Done);
  EXPECT_EQ(twips, 750);
  EXPECT_EQ(grid_.model.GetRowHeight(0, twips), GridResult::Done);
  EXPECT_EQ(twips, 300);
  const struct {
    int32_t put, px;
  } cases[] = {{29, 1}, {14, 0}, {-29, -1}, {0, 0}, {15, 1}, {INT32_MAX, 143165576}};
  for (const auto& each : cases) {
    EXPECT_EQ(grid_.model.PutColWidth(1, each.put), GridResult::Done);
    EXPECT_EQ(grid_.model.ColWidthPx(1), each.px) << each.put;
    grid_.model.GetColWidth(1, twips);
    EXPECT_EQ(twips, each.px * 15) << each.put;
    EXPECT_EQ(grid_.model.PutRowHeight(3, each.put), GridResult::Done);
    EXPECT_EQ(grid_.model.RowHeightPx(3), each.px) << each.put;
  }
  EXPECT_EQ(grid_.model.ColWidthPx(0), 50) << "others stay";
  EXPECT_EQ(grid_.TakeLog(), "") << "none repaints";
}

TEST_F(Sizes, KnowTheirIndexes) {
  grid_.model.Create();
  const struct {
    int32_t index;
    bool col, row;
  } cases[] = {{-1, false, true},       {0, true, true},   {4, true, true},
               {5, false, true},        {6, false, false}, {INT32_MAX, false, false},
               {INT32_MIN, false, true}};
  for (const auto& each : cases) {
    int32_t twips = 7;
    const auto answer = [](bool good) {
      return good ? GridResult::Done : GridResult::InvalidIndex;
    };
    EXPECT_EQ(grid_.model.GetColWidth(each.index, twips), answer(each.col)) << each.index;
    EXPECT_EQ(grid_.model.PutColWidth(each.index, 30), answer(each.col)) << each.index;
    EXPECT_EQ(grid_.model.GetRowHeight(each.index, twips), answer(each.row)) << each.index;
    EXPECT_EQ(grid_.model.PutRowHeight(each.index, 30), answer(each.row)) << each.index;
  }
}

TEST_F(Sizes, OfFixedOnesMoveTheViewInADesignerAlone) {
  grid_.runTime = false;
  grid_.model.Create();
  EXPECT_FALSE(grid_.model.HasCells());
  grid_.model.SetColWidthPx(0, 70);
  grid_.model.SetRowHeightPx(2, 33);
  EXPECT_EQ(grid_.model.PutFixedCols(1), GridResult::Done);
  EXPECT_EQ(grid_.model.fixedColsWidth, 70);
  EXPECT_EQ(grid_.model.Col, 1);
  EXPECT_EQ(grid_.model.LeftCol, 1);
  EXPECT_EQ(grid_.model.PutFixedRows(3), GridResult::Done);
  EXPECT_EQ(grid_.model.fixedRowsHeight, 73);
  EXPECT_EQ(grid_.model.Row, 3);
  EXPECT_EQ(grid_.model.TopRow, 3);
  grid_.runTime = true;
  EXPECT_EQ(grid_.model.PutFixedCols(3), GridResult::Done);
  EXPECT_EQ(grid_.model.fixedColsWidth, 70);
  EXPECT_EQ(grid_.model.Col, 1);
}

TEST(GridCapacity, ComesFromTheSettingsFile) {
  IniFile file;
  EXPECT_EQ(GridCapacity::Read().maxRows, 1024);
  EXPECT_EQ(GridCapacity::Read().maxCols, 64);
  file.Set("grid_max_row", "65000");
  file.Set("grid_max_col", "5");
  EXPECT_EQ(GridCapacity::Read().maxRows, 65000);
  EXPECT_EQ(GridCapacity::Read().maxCols, 5);
}

TEST(TextSlots, OfMoreThanMemoryCanCountAreNotMade) {
  TextSlots slots;
  EXPECT_FALSE(slots.Make(int64_t{INT32_MAX} * INT32_MAX));
  EXPECT_TRUE(slots.Set(0, "x"));
  EXPECT_EQ(slots.Get(0), nullptr);
}

TEST(GridMemory, ThatRunsOutIsToldAndTheGridGoesOnWithoutThePart) {
  for (int failing = 0; failing < 4; ++failing) {
    Messages messages;
    PlayedGrid grid;
    {
      const MemoryRunsOut memory(failing);
      grid.model.Create();
      EXPECT_TRUE(memory.Happened()) << failing;
    }
    const std::string shown = messages.Take();
    EXPECT_EQ(std::count(shown.begin(), shown.end(), ';'), 4 - failing) << shown;
    grid.model.SetColWidthPx(1, 70);
    EXPECT_EQ(grid.model.ColWidthPx(1), failing > 0 ? 70 : 50);
    grid.Put(1, 1, "x");
    EXPECT_EQ(grid.Cell(1, 1), failing > 2 ? "x" : "");
  }
}

}  // namespace
}  // namespace qrn::test
