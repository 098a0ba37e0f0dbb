// Cells edited and rows written, by keys, with the events in their order; what handlers may do on
// the way.

#include "GridFixture.h"
#include "btrieve.h"
#include "tests/controls/PlayedInputMethod.h"

namespace qrn::test {
namespace {

struct Editing : Grids {
  // A handler that cancels one question.
  void Cancel(DISPID question) {
    host_->events.answer = [question](DISPID id, DISPPARAMS& sent) {
      if (id == question) *sent.rgvarg[sent.cArgs - 1].piVal = 1;
    };
  }
  // Runs `work` in the first event of that id.
  void InEvent(DISPID event, std::function<void()> work) {
    host_->events.answer = [event, work, done = false](DISPID id, DISPPARAMS&) mutable {
      if (id != event || std::exchange(done, true)) return;
      work();
    };
  }
  // The record as it is stored.
  std::string Stored(int32_t row) {
    Refill();
    return Row(row);
  }
  // To the name of the first person, with the text selected.
  void GoToName() {
    Click(Middle(1, 2));
    ASSERT_TRUE(EditShows());
    host_->events.log.clear();
  }

  Messages messages_;
};

TEST_F(Editing, TheBoxStandsOnTheCurrentCellWithItsText) {
  MakeShown("u");
  ASSERT_TRUE(EditShows());
  EXPECT_EQ(GetFocus(), Edit());
  EXPECT_EQ(GetWindowLongW(Edit(), GWL_STYLE), LONG(0x54000080));
  EXPECT_EQ(TextOf(Edit()), "1");
  RECT place{};
  GetWindowRect(Edit(), &place);
  MapWindowPoints(nullptr, window(), reinterpret_cast<POINT*>(&place), 2);
  EXPECT_EQ(place.left, 53);
  EXPECT_EQ(place.top, 23);
  EXPECT_EQ(place.right, 102);
  EXPECT_EQ(place.bottom, 42);
  Click(Middle(1, 2));
  EXPECT_EQ(TextOf(Edit()), "うめ");
  TypeText(u"x");
  EXPECT_EQ(TextOf(Edit()), "x") << "all of it was selected";
  MakeShown();
  EXPECT_EQ(Edit(), nullptr);
}

TEST_F(Editing, LeavingTheRowWritesIt) {
  MakeShown("u");
  GoToName();
  TypeText(u"momo");
  Key(VK_DOWN);
  EXPECT_EQ(Events(), "10(I2&:0,BSTR:momo) 9() 7(I2&:0) 5() ");
  EXPECT_EQ(Current(), "2,2");
  EXPECT_EQ(TextOf(Edit()), "");
  EXPECT_EQ(GetFocus(), Edit());
  Key(VK_UP);
  // Kept so: an empty cell counts as changed after one that had a text.
  EXPECT_EQ(Events(), "10(I2&:0,BSTR:) 9() 7(I2&:0) 5() ");
  EXPECT_EQ(Stored(1), "   1|1|momo|Kyoto|");
}

TEST_F(Editing, EnterDoesNothingInTheBox) {
  MakeShown("u");
  GoToName();
  Key(VK_RETURN);
  Type(Edit(), u"\r");
  EXPECT_EQ(Current(), "1,2");
  EXPECT_EQ(Events(), "");
  EXPECT_EQ(TextOf(Edit()), "うめ");
}

TEST_F(Editing, ClickingAnotherRowTellsOfTheCellBeforeTheRowIsWritten) {
  MakeShown("u");
  GoToName();
  TypeText(u"b");
  Click(Middle(3, 1));
  EXPECT_EQ(Events(), "10(I2&:0,BSTR:b) 9() 3() 7(I2&:0) 5() 4() ");
  EXPECT_EQ(Current(), "3,1");
  EXPECT_EQ(Stored(1), "   1|1|b|Kyoto|");
}

TEST_F(Editing, LeavingTheControlWritesTheRowBeforeTheContainerHears) {
  MakeShown("u");
  GoToName();
  TypeText(u"c");
  std::string heard;
  host_->site.onFocus = [&](bool has) { heard += (has ? "in " : "out ") + Events(); };
  SetFocus(TheForm());
  EXPECT_EQ(heard, "out 10(I2&:0,BSTR:c) 9() 7(I2&:0) 5() ");
  EXPECT_EQ(Stored(1), "   1|1|c|Kyoto|");
}

TEST_F(Editing, LimitsAreInBytesOfTheField) {
  MakeShown("u");
  Click(Middle(1, 3));  // 12 bytes
  TypeText(u"あいうえおかき");
  EXPECT_EQ(TextOf(Edit()), "あいうえおか");
  SetAt(L"CellMaxLength", 3, Short(3));
  Click(Middle(2, 3));
  TypeText(u"あいう");
  EXPECT_EQ(TextOf(Edit()), "あいう") << "the limit of a column counts for the next but one";
}

TEST_F(Editing, EachQuestionMayBeCancelled) {
  MakeShown("ud");
  GoToName();
  Cancel(kBeforeColUpdate);
  TypeText(u"d");
  Key(VK_DOWN);
  EXPECT_EQ(Events(), "10(I2&:0,BSTR:d) ");
  EXPECT_EQ(Row(1), "   1|1|うめ|Kyoto|");

  GoToName();
  Cancel(kBeforeUpdate);
  TypeText(u"e");
  Key(VK_DOWN);
  EXPECT_EQ(Events(), "10(I2&:0,BSTR:e) 9() 7(I2&:0) ");
  EXPECT_EQ(Row(1), "   1|1|e|Kyoto|") << "the cell keeps it";
  host_->events.answer = nullptr;
  Key(VK_UP);  // the row is tried again with the next one that is left
  EXPECT_EQ(Events(), "10(I2&:0,BSTR:) 9() 7(I2&:0) 5() ");

  Cancel(kBeforeDelete);
  Click(Middle(3, 0));
  host_->events.log.clear();
  Key(VK_DELETE);
  EXPECT_EQ(Events(), "8(I2&:0) 8(I2&:0) ") << "once as it goes down, once as it comes up";
  EXPECT_EQ(grid().rowSelected, 1);
  EXPECT_EQ(Row(3), "   3|3|さくら|Kyoto|");
}

// A column without a mode keeps that of the column before; the one from outside comes back. A press
// places the box twice.
TEST_F(Editing, EachColumnHasItsInputMethod) {
  PlayedInputMethod method;
  MakeShown("u");
  SetAt(L"IMEMode", 2, Long(4));
  SetAt(L"IMEMode", 3, Long(2));
  const struct {
    POINT cell;
    const char* told;
  } steps[] = {{Middle(1, 1), ""},
               {Middle(1, 2), "17:0 enable1 4:1 16:20 8:2 enable1 4:1 16:20 8:2 "},
               {Middle(2, 2), "enable1 4:1 16:20 8:2 enable1 4:1 16:20 8:2 "},
               {Middle(2, 3), "4:0 4:0 "},
               {Middle(2, 1), ""}};
  method.mode = 1;
  method.Take();
  for (const auto& [cell, told] : steps) {
    Click(cell);
    EXPECT_EQ(method.Take(), told) << cell.x << "," << cell.y;
  }
  SetFocus(TheForm());
  EXPECT_EQ(method.Take(), "4:0 16:9 8:2 ");
}

TEST_F(Editing, KeysMayBeTakenByAHandler) {
  MakeShown();
  host_->events.answer = [](DISPID id, DISPPARAMS& sent) {
    if (id == ole::stock::kKeyDown) *sent.rgvarg[1].piVal = 0;
  };
  Key(VK_DOWN);
  EXPECT_EQ(Current(), "1,1");
  host_->events.answer = nullptr;
  Key(VK_DOWN);
  EXPECT_EQ(Current(), "2,1");
  EXPECT_EQ(host_->events.log,
            "-602(I2&:40,I2:0) -604(I2&:40,I2:0) -602(I2&:40,I2:0) -604(I2&:40,I2:0) ");
  EXPECT_EQ(host_->Offer(WM_KEYDOWN, VK_RIGHT), S_FALSE) << "the window's own";
  host_->site.acceleratorResult = S_OK;
  EXPECT_EQ(host_->Offer(WM_KEYDOWN, VK_TAB), S_OK) << "the container's";
}

TEST_F(Editing, AMessageOnTheWayLeavesTheFocusInTheBox) {
  MakeShown("u");
  GoToName();
  TypeText(u"g");
  // It takes the focus and gives it back.
  InEvent(kBeforeUpdate, [&] {
    SetFocus(TheForm());
    SetFocus(Edit());
  });
  Key(VK_DOWN);
  EXPECT_EQ(Events(), "10(I2&:0,BSTR:g) 9() 7(I2&:0) 5() ") << "nothing is asked twice";
  EXPECT_EQ(Current(), "2,2");
  EXPECT_EQ(GetFocus(), Edit());
  EXPECT_NE(grid().editActive, 0);
}

TEST_F(Editing, ABoxThatGetsTheFocusStraightBackIsInUseAgain) {
  MakeShown("u");
  GoToName();
  SetFocus(TheForm());
  EXPECT_EQ(grid().editActive, 0);
  SetFocus(Edit());
  TypeText(u"h");
  Key(VK_DOWN);
  EXPECT_EQ(Events(), "10(I2&:0,BSTR:h) 9() 7(I2&:0) 5() ");
}

}  // namespace
}  // namespace qrn::test
