// How texts get into cells and out of them, and what columns do to them.

#include "tests/core/Support.h"
#include "tests/grid/PlayedGrid.h"
#include "tests/support/Test.h"

namespace qrn::test {
namespace {

struct Texts : ::testing::Test {
  Texts() {
    grid_.model.PutCols(4);
    grid_.model.PutRows(4);
    grid_.model.Create();
    grid_.formats["<>"] = [](const std::string& text) { return "<" + text + ">"; };
  }
  void Format(int32_t col) { grid_.model.PutFormatString(col, "<>"); }
  void Select(int32_t row, int32_t col, int32_t lastRow, int32_t lastCol) {
    grid_.model.FillStyle = kFillSelection;
    grid_.model.SelStartRow = row;
    grid_.model.SelStartCol = col;
    grid_.model.SelEndRow = lastRow;
    grid_.model.SelEndCol = lastCol;
  }

  PlayedGrid grid_{{.maxRows = 10, .maxCols = 8}};
};

struct LineCase {
  const char* what;
  int32_t row, col;
  const char* text;
  int32_t written;
  const char* cells;  // of rows 0 to 2
};

TEST_F(Texts, OfALineKeepEmptyFieldsAndGoOnInTheNextRow) {
  const LineCase cases[] = {
      {"one field", 1, 1, "a", 1, "|||/|a|o|o/|o|o|o"},
      {"an empty line clears", 1, 1, "", 1, "|||/||o|o/|o|o|o"},
      {"fields side by side", 1, 1, "a\tb\tc", 3, "|||/|a|b|c/|o|o|o"},
      {"an empty one between", 1, 1, "a\t\tc", 3, "|||/|a||c/|o|o|o"},
      {"an empty one in front", 1, 1, "\tb", 2, "|||/||b|o/|o|o|o"},
      {"a tab at the end adds none", 1, 1, "a\tb\t", 2, "|||/|a|b|o/|o|o|o"},
      {"a tab alone", 1, 1, "\t", 1, "|||/||o|o/|o|o|o"},
      {"two tabs alone", 1, 1, "\t\t", 2, "|||/|||o/|o|o|o"},
      {"into the next row's first cell", 1, 3, "a\tb\tc", 3, "|||/|o|o|a/|b|c|o"},
      {"from a fixed column", 0, 0, "a\tb", 2, "a|b||/|o|o|o/|o|o|o"},
      {"a negative row", -1, 1, "a", 0, "|||/|o|o|o/|o|o|o"},
      {"a negative column", 1, -1, "a\tb", 0, "|||/|o|o|o/|o|o|o"},
  };
  for (const LineCase& each : cases) {
    grid_.model.ClearCells();
    for (int row = 1; row <= 2; ++row) grid_.PutLine(row, 1, "o\to\to");
    EXPECT_EQ(grid_.PutLine(each.row, each.col, each.text), each.written) << each.what;
    EXPECT_EQ(grid_.Cells(0, 0, 2, 3), each.cells) << each.what;
  }
}

TEST_F(Texts, PutIntoTheCurrentCellDropEmptyFields) {
  const LineCase cases[] = {
      {"one text", 1, 1, "a", 1, "|||/|a|o|o/|o|o|o"},
      {"an empty one clears", 1, 1, "", 1, "|||/||o|o/|o|o|o"},
      {"two with two tabs between", 1, 1, "a\t\tb", 2, "|||/|a|b|o/|o|o|o"},
      {"a tab in front", 1, 1, "\tb", 1, "|||/|b|o|o/|o|o|o"},
      {"a tab alone", 1, 1, "\t", 0, "|||/|o|o|o/|o|o|o"},
      {"into the next row", 1, 3, "a\tb", 2, "|||/|o|o|a/|b|o|o"},
      {"a fixed cell", 0, 0, "a\tb", 2, "a|b||/|o|o|o/|o|o|o"},
      {"a negative row", -1, 1, "a", 0, "|||/|o|o|o/|o|o|o"},
      {"a negative column", 1, -1, "a", 0, "|||/|o|o|o/|o|o|o"},
  };
  for (const LineCase& each : cases) {
    grid_.model.ClearCells();
    for (int row = 1; row <= 2; ++row) grid_.PutLine(row, 1, "o\to\to");
    grid_.TakeLog();
    grid_.Put(each.row, each.col, each.text);
    EXPECT_EQ(grid_.Cells(0, 0, 2, 3), each.cells) << each.what;
    EXPECT_EQ(grid_.TakeLog(), each.written == 1 ? "cell" : "all") << each.what;
    EXPECT_EQ(grid_.model.SetCurrentText(each.text), each.written) << each.what;
  }
}

TEST_F(Texts, PutIntoTheSelectionFillIt) {
  const struct {
    const char* what;
    int32_t row, col, lastRow, lastCol;
    int32_t written;
    const char* cells;  // of rows 0 to 3
  } cases[] = {
      {"two by two", 1, 1, 2, 2, 4, "|||/|x|x|/|x|x|/|||"},
      {"one cell", 2, 3, 2, 3, 1, "|||/|||/|||x/|||"},
      {"a fixed row", 0, 1, 2, 2, 0, "|||/|||/|||/|||"},
      {"a fixed column", 1, 0, 2, 2, 0, "|||/|||/|||/|||"},
      {"upwards", 2, 1, 1, 2, 0, "|||/|||/|||/|||"},
      {"leftwards", 1, 2, 2, 1, 0, "|||/|||/|||/|||"},
      {"a column as its header selects it", 1, 2, 4, 2, 4, "|||/||x|/||x|/||x|"},
      {"a row as its header selects it reaches into the next one's first cell", 1, 1, 1, 4, 4,
       "|||/|x|x|x/x|||/|||"},
      {"more than there is", 3, 3, INT32_MAX, INT32_MAX, INT32_MAX, "|||/|||/|||/|||x"},
  };
  for (const auto& each : cases) {
    grid_.model.ClearCells();
    Select(each.row, each.col, each.lastRow, each.lastCol);
    EXPECT_EQ(grid_.model.SetCurrentText("x"), each.written) << each.what;
    EXPECT_EQ(grid_.AllCells(), each.cells) << each.what;
  }
}

TEST_F(Texts, AreDressedByTheFormatOfTheirColumn) {
  Format(2);
  grid_.PutLine(1, 1, "a\tb\tc\td\te");
  EXPECT_EQ(grid_.Cells(1, 1, 2, 3), "a|<b>|c/d|<e>|");
  grid_.PutLine(3, 2, "z");
  EXPECT_EQ(grid_.Cell(3, 2), "<z>");
  grid_.PutLine(3, 2, "");
  EXPECT_EQ(grid_.Cell(3, 2), "") << "an empty text is not dressed";
  grid_.Put(1, 2, "a\tb");
  EXPECT_EQ(grid_.Cells(1, 1, 1, 3), "a|<a|b>") << "once, before it is spread";
  grid_.model.PutFormatString(2, "unknown");
  grid_.Put(1, 2, "x");
  EXPECT_EQ(grid_.Cell(1, 2), "x") << "a format that fails leaves the text";
}

TEST_F(Texts, FormatsLiveInPlaceAtRunTimeAlone) {
  std::string format = "left alone";
  Format(1);
  EXPECT_EQ(grid_.model.GetFormatString(1, format), GridResult::Done);
  EXPECT_EQ(format, "<>");
  for (const int32_t none : {0, 8, -1, INT32_MIN, INT32_MAX}) {
    EXPECT_EQ(grid_.model.GetFormatString(none, format), GridResult::Done) << none;
    EXPECT_EQ(format, "") << none;
  }
  grid_.model.PutFormatString(-1, "x");
  grid_.model.PutFormatString(8, "x");
  for (bool PlayedGrid::*const missing : {&PlayedGrid::inPlace, &PlayedGrid::runTime}) {
    grid_.*missing = false;
    EXPECT_EQ(grid_.model.GetFormatString(1, format), GridResult::NotAvailable);
    grid_.model.PutFormatString(1, "other");
    grid_.*missing = true;
    grid_.model.GetFormatString(1, format);
    EXPECT_EQ(format, "<>");
  }
}

TEST_F(Texts, AreReadOfTheCurrentCellAlone) {
  grid_.Put(1, 1, "さくら");
  std::string text = "as it came";
  EXPECT_TRUE(grid_.model.GetText(text));
  EXPECT_EQ(CodePageToUtf8(text), "さくら");
  grid_.model.Col = 2;
  EXPECT_TRUE(grid_.model.GetText(text));
  EXPECT_EQ(text, "");
  text = "as it came";
  const std::pair<int32_t, int32_t> outside[] = {{-1, 1}, {4, 1}, {1, -1}, {1, 4}};
  for (const auto& [row, col] : outside) {
    grid_.model.Row = row;
    grid_.model.Col = col;
    EXPECT_FALSE(grid_.model.GetText(text)) << row << "," << col;
  }
  grid_.model.Row = grid_.model.Col = 1;
  grid_.runTime = false;
  EXPECT_FALSE(grid_.model.GetText(text));
  EXPECT_EQ(text, "as it came");
}

TEST_F(Texts, AreClearedWithoutSizesAndPositions) {
  grid_.PutLine(0, 0, "a\tb\tc\td\te");
  grid_.model.SetColWidthPx(1, 7);
  ASSERT_TRUE(grid_.model.positions.Set(0, 1234));
  grid_.model.Clear();
  EXPECT_EQ(grid_.AllCells(), "|||/|||/|||/|||");
  EXPECT_EQ(grid_.model.ColWidthPx(1), 7);
  int32_t position = 0;
  EXPECT_EQ(grid_.model.GetPhysicalPosition(0, position), GridResult::Done);
  EXPECT_EQ(position, 1234);
  EXPECT_EQ(grid_.model.GetPhysicalPosition(1, position), GridResult::InvalidIndex);
  EXPECT_EQ(grid_.model.GetPhysicalPosition(-1, position), GridResult::InvalidIndex);
  EXPECT_EQ(grid_.TakeLog(), "all");
}

// 32 columns of 2,048 rows and one more: entry 65,535 is row 2,047, column 31.
TEST(SpreadText, TakesEntriesAs16BitNumbers) {
  PlayedGrid grid({.maxRows = 3000, .maxCols = 32});
  grid.model.PutCols(32);
  grid.model.PutRows(3000);
  grid.model.Create();
  grid.Put(2047, 30, "a\tb\tc");
  EXPECT_EQ(grid.Cells(2047, 30, 2047, 31), "a|") << "entry 65,535 ends it";
  EXPECT_EQ(grid.model.SetCurrentText("a\tb\tc"), 1);
  grid.Put(2048, 3, "d\te");
  EXPECT_EQ(grid.Cells(0, 3, 0, 4), "d|e") << "beyond it entries begin anew";
  EXPECT_EQ(grid.Cells(2048, 3, 2048, 4), "|");
  grid.Put(2048, 3, "f");
  EXPECT_EQ(grid.Cell(2048, 3), "f") << "a text without tabs does not wrap";
  grid.PutLine(2048, 4, "g\th");
  EXPECT_EQ(grid.Cells(2048, 3, 2048, 5), "f|g|h") << "nor does a line";
}

TEST_F(Texts, EndAtANul) {
  const std::string_view text("a\0b", 3);
  grid_.model.PutText(text);
  EXPECT_EQ(grid_.Cell(1, 1), "a");
  grid_.model.PutText(text.substr(1));
  EXPECT_EQ(grid_.model.CellText(1, 1), nullptr) << "an empty text leaves no copy";
}

TEST(TextPool, HandsOutPlacesThatDoNotMeet) {
  TextPool pool;
  std::vector<std::pair<char*, std::string>> texts;
  for (size_t round = 0; round < 3; ++round) {
    for (const size_t size : {1, 13, 14, 15, 30, 31, 100, 253, 254, 255, 256, 5000}) {
      for (int i = 0; i < 40; ++i) {
        const std::string text(size, static_cast<char>('a' + (texts.size() + round) % 26));
        texts.emplace_back(pool.Take(text), text);
      }
    }
    for (const auto& [copy, text] : texts) ASSERT_EQ(copy, text);
    for (size_t i = 0; i < texts.size(); i += 2) {
      pool.GiveBack(texts[i].first);
      texts[i] = texts.back();
      texts.pop_back();
    }
  }
  EXPECT_TRUE(pool.HasLong());
  for (const auto& [copy, text] : texts) pool.GiveBack(copy);
  EXPECT_FALSE(pool.HasLong());
}

TEST(TextPool, UsesAPlaceAgain) {
  TextPool pool;
  char* first = pool.Take("some text");
  pool.GiveBack(first);
  EXPECT_EQ(pool.Take("other text"), first);
  const MemoryRunsOut memory(0);
  EXPECT_NE(pool.Take("in the slab"), nullptr);
  EXPECT_EQ(pool.Take(std::string(300, 'x')), nullptr);
  pool.ReleaseSlabs();
  EXPECT_EQ(pool.Take("in another slab"), nullptr);
}

TEST_F(Texts, ColumnArraysGrowWhereTheyArePut) {
  GridModel& grid = grid_.model;
  int16_t length = -1;
  EXPECT_EQ(grid.GetCellMaxLength(3, length), GridResult::Done);
  EXPECT_EQ(length, 0);
  EXPECT_EQ(grid.PutCellMaxLength(3, 12), GridResult::Done);
  EXPECT_EQ(grid.CellMaxLength.Get(3), 12) << "by column, though it is read by field";
  for (const int32_t outside : {0, -1, 5}) {
    EXPECT_EQ(grid.GetCellMaxLength(outside, length), GridResult::InvalidIndex) << outside;
    EXPECT_EQ(grid.PutCellMaxLength(outside, 1), GridResult::InvalidIndex) << outside;
  }
  EXPECT_EQ(grid.PutCellMaxLength(4, 1), GridResult::Done) << "as many as there are columns";
  EXPECT_EQ(grid.GetTextAlign(2), 0);
  EXPECT_EQ(grid.GetIMEMode(2), 0);
  grid.PutTextAlign(1000, 2);
  grid.PutIMEMode(7, 4);
  EXPECT_EQ(grid.GetTextAlign(1000), 2);
  EXPECT_EQ(grid.GetIMEMode(7), 4);
  EXPECT_EQ(grid.GetIMEMode(6), 0);
}

TEST_F(Texts, ColumnArraysTakeNothingWhereNoColumnCanBe) {
  Messages messages;
  for (const int32_t none : {-1, INT32_MIN}) {
    grid_.model.PutTextAlign(none, 1);
    grid_.model.PutIMEMode(none, 1);
    EXPECT_EQ(grid_.model.GetTextAlign(none), 0);
    EXPECT_EQ(grid_.model.GetIMEMode(none), 0);
  }
  EXPECT_EQ(messages.Take(), "");
  grid_.model.PutTextAlign(INT32_MAX, 1);
  EXPECT_NE(messages.Take().find("VE001"), std::string::npos);
  EXPECT_EQ(grid_.model.GetTextAlign(INT32_MAX), 0);
}

TEST_F(Texts, WithoutMemoryLeaveTheCellEmptyAfterOneMessage) {
  Messages messages;
  grid_.PutLine(1, 1, "a\tb\tc");
  const std::string wide(300, 'w');  // has memory of its own
  {
    const MemoryRunsOut memory(1);
    grid_.Put(1, 1, wide + "\t" + wide + "\t" + wide);
  }
  EXPECT_EQ(grid_.Cells(1, 1, 1, 3), wide + "||");
  const std::string shown = messages.Take();
  EXPECT_EQ(shown.find("VE001 メモリ不足  QRNGridUtil "), 0u);
  EXPECT_EQ(std::count(shown.begin(), shown.end(), ';'), 1) << shown;
}

TEST_F(Texts, RememberedForEditingAreThoseOfTheLastCellWithOne) {
  grid_.Put(1, 1, "a");
  grid_.model.KeepEditText();
  grid_.model.Col = 2;
  grid_.model.KeepEditText();
  EXPECT_EQ(grid_.model.savedEditText, "a") << "an empty cell leaves it";
  std::string wide;
  for (int i = 0; i < 400; ++i) wide += "あ";
  grid_.Put(1, 2, "x" + wide);
  grid_.model.KeepEditText();
  EXPECT_EQ(grid_.model.savedEditText.size(), 639u);
  grid_.Put(1, 2, wide);
  grid_.model.KeepEditText();
  EXPECT_EQ(grid_.model.savedEditText.size(), 638u) << "cut at a character";
}

}  // namespace
}  // namespace qrn::test
