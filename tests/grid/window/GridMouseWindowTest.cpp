// The mouse, the bars and the wheel on a real window, and what is drawn without a whole paint.
#include "GridFixture.h"

namespace qrn::test {
namespace {

constexpr COLORREF kCyan = 0xFFFF00;
constexpr COLORREF kWhite = 0xFFFFFF;

struct Pointing : Grids {
  // So many rows without data.
  void MakeEmpty(int32_t rows, int32_t cols) {
    Make();
    Set(L"DbUpdateOption", Long(0));
    Set(L"Rows", Long(rows));
    Set(L"Cols", Long(cols));
    ASSERT_EQ(host_->Show(OLEIVERB_UIACTIVATE), S_OK);
    host_->events.log.clear();
  }
  std::string View() {
    return std::to_string(grid().TopRow) + "," + std::to_string(grid().LeftCol);
  }
  std::string RangeOf(bool vertical) {
    int least = 0;
    int most = 0;
    GetScrollRange(Bar(vertical), SB_CTL, &least, &most);
    return std::to_string(least) + ".." + std::to_string(most);
  }
};

TEST_F(Pointing, ClicksMoveTheCellAndTell) {
  MakeShown();
  const struct {
    POINT at;
    const char *events, *current;
  } cases[] = {
      {Middle(2, 1), "3() -600() 4() ", "2,1"}, {Middle(3, 0), "3() -600() ", "3,1"},
      {Middle(0, 3), "3() -600() ", "1,3"},     {Middle(0, 0), "3() -600() ", "1,1"},
      {{290, 140}, "-600() ", "1,1"},
  };
  for (const auto& row : cases) {
    host_->events.log.clear();
    Click(row.at);
    EXPECT_EQ(host_->events.log, row.events) << row.current;
    EXPECT_EQ(Current(), row.current);
  }
  SendMouse(WM_RBUTTONDOWN, MK_RBUTTON, Middle(2, 2));
  SendMouse(WM_MOUSEMOVE, 0, Middle(2, 2));
  SendMouse(WM_LBUTTONDBLCLK, MK_LBUTTON, Middle(2, 2));
  EXPECT_EQ(host_->events.log, "-600() ") << "nothing else is ever raised";
}

TEST_F(Pointing, ADragSelectsAndShrinkingDoesNotUnpaint) {
  MakeShown();
  Set(L"HighLight", Bool(true));
  Press(Middle(1, 1));
  UpdateWindow(window());
  const POINT corner{Middle(3, 3).x + 20, Middle(3, 3).y + 6};
  const com::WindowDc dc(window());
  DragTo(Middle(3, 3));
  EXPECT_EQ(GetPixel(dc.get(), corner.x, corner.y), kCyan);
  DragTo(Middle(2, 2));
  EXPECT_EQ(GetPixel(dc.get(), corner.x, corner.y), kCyan);
  Release(Middle(2, 2));
  EXPECT_EQ(Value(L"SelEndRow") + Value(L"SelEndCol"), "ok I4:2ok I4:2");
  Set(L"SelEndCol", Long(2));  // repaints
  EXPECT_EQ(Pixel(corner.x, corner.y), kWhite);
}

TEST_F(Pointing, ThreeEndsOfTheSelectionRepaintAndOneDoesNot) {
  MakeShown();
  for (const auto& [name, repaints] : {std::pair{L"SelStartRow", true},
                                       {L"SelStartCol", true},
                                       {L"SelEndCol", true},
                                       {L"SelEndRow", false}}) {
    UpdateWindow(window());
    ValidateRect(window(), nullptr);
    Set(name, Long(2));
    EXPECT_EQ(GetUpdateRect(window(), nullptr, FALSE) != FALSE, repaints) << name;
  }
}

// Drawn over what is there until something paints the whole.
TEST_F(Pointing, ATextPutInAFixedCellOverprints) {
  MakeShown();
  Set(L"Row", Long(0));
  Set(L"Col", Long(1));
  const auto dark = [&] {
    int count = 0;
    const com::WindowDc dc(window());
    for (int y = 4; y < 20; ++y) {
      for (int x = 54; x < 100; ++x) count += GetPixel(dc.get(), x, y) == 0 ? 1 : 0;
    }
    return count;
  };
  UpdateWindow(window());
  const int before = dark();
  Set(L"Text", Text(L"HHHH"));
  EXPECT_FALSE(GetUpdateRect(window(), nullptr, FALSE));
  const int over = dark();
  EXPECT_GT(over, before);
  InvalidateRect(window(), nullptr, FALSE);
  UpdateWindow(window());
  EXPECT_LT(dark(), over);
}

TEST_F(Pointing, BordersAreDragged) {
  MakeShown("u");
  HoverOver({100, 10});
  DragTo({100, 10});
  EXPECT_FALSE(EditShows());
  DragTo({180, 10});
  Release({180, 10});
  EXPECT_EQ(Get(host_->object(), L"ColWidth", {Long(1)}).Text(), "ok I4:1950");
  EXPECT_TRUE(EditShows());
  RECT place{};
  GetWindowRect(Edit(), &place);
  EXPECT_EQ(place.right - place.left, 129);
  Set(L"AllowUserResizing", Long(0));
  DragTo({180, 10});
  DragTo({60, 10});
  Release({60, 10});
  EXPECT_EQ(Get(host_->object(), L"ColWidth", {Long(1)}).Text(), "ok I4:1950");
}

TEST_F(Pointing, BarsComeWithTheCellsAndMoveTheView) {
  MakeShown();
  EXPECT_EQ(Bar(true), nullptr);
  EXPECT_EQ(Bar(false), nullptr);
  MakeEmpty(40, 12);
  ASSERT_NE(Bar(true), nullptr);
  ASSERT_NE(Bar(false), nullptr);
  EXPECT_EQ(GetWindowLongW(Bar(true), GWL_STYLE), LONG(0x50010001));
  EXPECT_EQ(RangeOf(false), "1..11");
  EXPECT_EQ(RangeOf(true), "1..35") << "five rows fit beside names and bar";
  const auto notice = [&](bool vertical, WORD code, WORD thumb = 0) {
    SendMessageW(window(), vertical ? WM_VSCROLL : WM_HSCROLL, MAKEWPARAM(code, thumb),
                 reinterpret_cast<LPARAM>(Bar(vertical)));
    return View() + " " + std::to_string(GetScrollPos(Bar(vertical), SB_CTL));
  };
  EXPECT_EQ(notice(true, SB_PAGEDOWN), "2,1 2");
  EXPECT_EQ(notice(true, SB_LINEUP), "1,1 1");
  EXPECT_EQ(notice(true, SB_THUMBTRACK, 20), "1,1 1");
  EXPECT_EQ(notice(true, SB_THUMBPOSITION, 35), "35,1 35");
  EXPECT_EQ(notice(true, SB_LINEDOWN), "35,1 35");
  EXPECT_EQ(notice(false, SB_LINEDOWN), "35,2 2");
  EXPECT_EQ(grid().Col, 2) << "the current column comes along";
  Set(L"ScrollBars", Long(0));
  EXPECT_EQ(Bar(true), nullptr);
  EXPECT_EQ(View(), "1,1");
  EXPECT_EQ(notice(true, SB_LINEDOWN), "1,1 0") << "a bar that is gone moves nothing";
}

TEST_F(Pointing, TheWheelMovesTheRows) {
  MakeEmpty(40, 12);
  const auto turn = [&](int by, WPARAM keys = 0) {
    SendMessageW(GetFocus(), WM_MOUSEWHEEL, MAKEWPARAM(keys, by), 0);
    return View();
  };
  EXPECT_EQ(turn(-120), "4,1");
  EXPECT_EQ(turn(-40), "5,1") << "a third of a notch";
  EXPECT_EQ(turn(240), "1,1") << "not beyond the first";
  EXPECT_EQ(turn(-120, MK_SHIFT), "1,2");
  MakeShown();
  EXPECT_EQ(turn(-120), "1,1") << "without a bar nothing moves";
}

TEST_F(Pointing, ABarThatWasClickedGivesTheKeyboardBack) {
  MakeEmpty(40, 12);
  SetFocus(Bar(true));
  SendMessageW(window(), WM_VSCROLL, SB_ENDSCROLL, reinterpret_cast<LPARAM>(Bar(true)));
  EXPECT_EQ(GetFocus(), window());
}

TEST_F(Pointing, ScrollingTheBoxAwayHidesItAndTakesNothing) {
  for (int code = 10; code < 40; ++code) Insert(std::to_string(code).c_str(), "a", "b");
  MakeShown("u");
  TypeText(u"x");
  SendMessageW(Edit(), WM_MOUSEWHEEL, MAKEWPARAM(0, -120), 0);
  EXPECT_FALSE(EditShows());
  EXPECT_EQ(GetFocus(), window());
  EXPECT_EQ(Events(), "");
  SendMessageW(window(), WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
  EXPECT_TRUE(EditShows());
  EXPECT_EQ(TextOf(Edit()), "1");
}

TEST_F(Pointing, ADesignerSeesFrameAndLinesAndMovesNothing) {
  Make(false);
  ASSERT_EQ(host_->Show(), S_OK);
  Click({75, 30});
  SendMessageW(window(), WM_KEYDOWN, VK_DOWN, 1);
  EXPECT_EQ(host_->events.log, "");
  EXPECT_EQ(Current(), "1,1");
  EXPECT_FALSE(grid().HasCells());
  EXPECT_EQ(Value(L"Text"), "ok BSTR:");
  Set(L"FixedRows", Long(0));
  EXPECT_EQ(Current(), "0,1");
  EXPECT_EQ(Pixel(10, 10), RGB(192, 192, 192));
}

}  // namespace
}  // namespace qrn::test
