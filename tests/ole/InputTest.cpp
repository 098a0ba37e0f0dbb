// Keys, mouse, cursor, colours and focus of a visible control.

#include "SampleFixture.h"
#include "ole/SystemGuid.h"

namespace qrn::test {
namespace {

struct InputTest : SampleFixture {
  void SetUp() override {
    site.RunTime();
    ASSERT_EQ(site.Host(unknown()), S_OK);
    connection_ = std::make_unique<Connection>(unknown(), AsGuid(kSampleTable.eventsId), &events);
  }
  void TearDown() override { connection_.reset(); }

  // Offers a key message as the container does before anything else sees it.
  HRESULT Offer(UINT message, WPARAM key) {
    MSG offered{};
    offered.hwnd = sample().contained();
    offered.message = message;
    offered.wParam = key;
    const HRESULT result = Query<IOleInPlaceActiveObject>(control)->TranslateAccelerator(&offered);
    lastKey = offered.wParam;
    return result;
  }
  std::string Mouse(UINT message, WPARAM flags, int x, int y) {
    events.log.clear();
    SendMessageW(sample().contained(), message, flags, MAKELPARAM(x, y));
    return events.log;
  }

  EventSink events;
  WPARAM lastKey = 0;

 private:
  std::unique_ptr<Connection> connection_;
};

TEST_F(InputTest, MouseEventsTellButtonsShiftAndPixels) {
  const struct {
    UINT message;
    WPARAM flags;
    const char* expected;
  } cases[] = {
      {WM_MOUSEMOVE, 0, "-606(I2:0,I2:0,R4:7,R4:-2) "},
      {WM_MOUSEMOVE, MK_LBUTTON | MK_RBUTTON, "-606(I2:3,I2:0,R4:7,R4:-2) "},
      {WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, "-605(I2:1,I2:2,R4:7,R4:-2) "},
      {WM_LBUTTONUP, MK_CONTROL, "-607(I2:1,I2:1,R4:7,R4:-2) "},
      {WM_RBUTTONDOWN, MK_RBUTTON | MK_SHIFT | MK_CONTROL, "-605(I2:2,I2:3,R4:7,R4:-2) "},
  };
  for (const auto& row : cases) EXPECT_EQ(Mouse(row.message, row.flags, 7, -2), row.expected);
}

TEST_F(InputTest, KeysGoToTheHandlerThenToTheContainer) {
  site.acceleratorResult = S_FALSE;
  site.log.clear();
  EXPECT_EQ(Offer(WM_KEYDOWN, 'A'), S_FALSE);
  EXPECT_EQ(events.log, "-602(I2&:65,I2:0) ");
  EXPECT_EQ(site.log, "accelerator ");
  EXPECT_EQ(site.acceleratorModifiers, 0u);
  site.acceleratorResult = S_OK;
  EXPECT_EQ(Offer(WM_KEYUP, 'A'), S_OK);
  EXPECT_EQ(Offer(WM_SYSKEYDOWN, 'A'), S_OK) << "straight to the container";
  EXPECT_EQ(events.log, "-602(I2&:65,I2:0) -604(I2&:65,I2:0) ");
}

TEST_F(InputTest, ArrowsMoveInsideBeforeTheContainerTakesThem) {
  SetWindowTextW(sample().contained(), L"text");
  SendMessageW(sample().contained(), EM_SETSEL, 0, 0);
  site.log.clear();
  EXPECT_EQ(Offer(WM_KEYDOWN, VK_RIGHT), S_OK);
  EXPECT_EQ(SendMessageW(sample().contained(), EM_GETSEL, 0, 0), MAKELONG(1, 1));
  EXPECT_EQ(site.log, "");
  SendMessageW(sample().contained(), WM_KEYDOWN, VK_RIGHT, 0);
  EXPECT_EQ(SendMessageW(sample().contained(), EM_GETSEL, 0, 0), MAKELONG(1, 1)) << "moved twice";
}

TEST_F(InputTest, AHandlerEndsOrReplacesAKey) {
  site.acceleratorResult = S_FALSE;
  events.answer = [](DISPID, DISPPARAMS& sent) { *sent.rgvarg[sent.cArgs - 1].piVal = 0; };
  site.log.clear();
  EXPECT_EQ(Offer(WM_KEYUP, 'A'), S_OK);
  EXPECT_EQ(Offer(WM_CHAR, 'a'), S_OK);
  EXPECT_EQ(site.log, "");
  events.answer = [](DISPID, DISPPARAMS& sent) { *sent.rgvarg[0].piVal = 'B'; };
  EXPECT_EQ(Offer(WM_CHAR, 'a'), S_FALSE);
  EXPECT_EQ(lastKey, static_cast<WPARAM>('B'));
}

TEST_F(InputTest, WithoutASiteKeysAreTakenAndNothingIsDone) {
  site.Unhost();
  events.log.clear();
  EXPECT_EQ(Offer(WM_KEYDOWN, 'A'), S_OK);
  EXPECT_EQ(events.log, "");
}

TEST_F(InputTest, MousePointersHaveTheirCursors) {
  const struct {
    int pointer;
    LPCWSTR cursor;
  } cases[] = {{2, MAKEINTRESOURCEW(32515)},  {6, MAKEINTRESOURCEW(32642)},
               {8, MAKEINTRESOURCEW(32643)},  {9, MAKEINTRESOURCEW(32644)},
               {15, MAKEINTRESOURCEW(32646)}, {11, MAKEINTRESOURCEW(32514)}};
  const auto set = [&] {
    SetCursor(nullptr);
    SendMessageW(sample().contained(), WM_SETCURSOR, reinterpret_cast<WPARAM>(sample().contained()),
                 MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    return GetCursor();
  };
  for (const auto& row : cases) {
    sample().MousePointer = row.pointer;
    EXPECT_EQ(set(), LoadCursorW(nullptr, row.cursor)) << row.pointer;
  }
  const HCURSOR own = LoadCursorA(nullptr, IDC_IBEAM);
  for (int pointer : {0, 16, 98, 99, -1}) {
    sample().MousePointer = pointer;
    EXPECT_EQ(set(), own) << pointer << ": the window's own";
  }
  site.ambients[DISPID_AMBIENT_USERMODE] = Variant::Bool(false);
  sample().MousePointer = 2;
  EXPECT_EQ(set(), own) << "at design time";
}

TEST_F(InputTest, WhatIsDisabledIsReachedByNeitherClickNorFocus) {
  Put(object(), L"Enabled", {Bool(false)});
  EXPECT_FALSE(IsWindowEnabled(sample().contained()));
  EXPECT_FALSE(IsWindowEnabled(sample().hwnd()));
  SetFocus(site.window());
  SetFocus(sample().hwnd());
  EXPECT_EQ(GetFocus(), site.window());
  Query<IOleInPlaceObject>(control)->InPlaceDeactivate();
  site.object()->DoVerb(OLEIVERB_SHOW, nullptr, &site, 0, nullptr, nullptr);
  EXPECT_FALSE(IsWindowEnabled(sample().hwnd())) << "a window made later";
  Put(object(), L"Enabled", {Bool(true)});
  EXPECT_TRUE(IsWindowEnabled(sample().contained()));
  EXPECT_TRUE(IsWindowEnabled(sample().hwnd()));
  site.ambients[DISPID_AMBIENT_USERMODE] = Variant::Bool(false);
  Put(object(), L"Enabled", {Bool(false)});
  EXPECT_FALSE(IsWindowEnabled(sample().contained()));
  EXPECT_TRUE(IsWindowEnabled(sample().hwnd())) << "a designer works with it";
}

TEST_F(InputTest, WhoIsDisabledHandsTheFocusToTheContainer) {
  SetFocus(sample().contained());
  site.log.clear();
  Put(object(), L"Enabled", {Bool(false)});
  EXPECT_EQ(GetFocus(), site.window());
  EXPECT_EQ(site.log, "blur ");
}

TEST_F(InputTest, TheFocusStaysWhereTheContainerSendsItMeanwhile) {
  SetFocus(nullptr);
  site.onFocus = [&](bool has) {
    if (has) SetFocus(site.window());
  };
  SetFocus(sample().hwnd());
  EXPECT_EQ(GetFocus(), site.window());
  EXPECT_EQ(site.log.substr(site.log.size() - 11), "blur focus ");
}

}  // namespace
}  // namespace qrn::test
