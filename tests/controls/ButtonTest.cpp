// The operation button: its window, and a click from the question to the notice.
#include <olectl.h>

#include <fstream>

#include "ButtonFixture.h"
#include "SystemCalls.h"
#include "core/DictionaryLookup.h"
#include "tests/extended/ShownMessages.h"

namespace qrn::test {
namespace {

TEST_F(Button, StartsAsItsTableSays) {
  Hosted<CQRNBtn> button(L"btn2");
  constexpr char kStart[] =
      "DbSource=BSTR: DbTable=BSTR: DbIndex=BSTR: DbOperation=I4:0 Abort=BOOL:0 ConfirmMsg=BSTR: "
      "Cancel=BOOL:0 Default=BOOL:0 DbLocks=I4:0 ClearControlData=BOOL:-1 IndexID=I2:0 Style=I4:0 "
      "Caption=BSTR: Appearance=I2:1 Enabled=BOOL:-1 BackColor=UI4:2147483663";
  EXPECT_EQ(button.Values(kStart), kStart);
}

TEST_F(Button, ShowsItsCaptionOrItsPicture) {
  button_.Set(L"Caption", Text(L"次へ(&N)"));
  EXPECT_EQ(TextOf(button_.window()), "次へ(&N)");
  const auto style = [&](HWND window) { return GetWindowLongW(window, GWL_STYLE); };
  EXPECT_EQ(style(button_.window()) & (BS_DEFPUSHBUTTON | BS_BITMAP | BS_ICON), 0);
  PICTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_BITMAP;
  description.bmp.hbitmap = CreateBitmap(8, 6, 1, 1, nullptr);
  com::Com<IPictureDisp> picture;
  ASSERT_EQ(OleCreatePictureIndirect(&description, __uuidof(IPictureDisp), TRUE, picture.putVoid()),
            S_OK);
  com::Variant value{com::Query<IDispatch>(picture)};
  EXPECT_EQ(button_.Set(L"Picture", *value.get()), S_OK);
  EXPECT_EQ(style(button_.window()) & BS_BITMAP, 0) << "the style is Standard";
  const HWND before = button_.window();
  button_.Set(L"Style", Long(0));
  EXPECT_EQ(button_.window(), before);
  button_.Set(L"Style", Long(1));
  EXPECT_FALSE(IsWindow(before));
  EXPECT_NE(style(button_.window()) & BS_BITMAP, 0);
  const LRESULT image = SendMessageW(button_.window(), BM_GETIMAGE, IMAGE_BITMAP, 0);
  BITMAP bitmap{};
  GetObjectW(reinterpret_cast<HBITMAP>(image), sizeof bitmap, &bitmap);
  EXPECT_EQ(bitmap.bmWidth * 100 + bitmap.bmHeight, 806);
  EXPECT_TRUE(IsWindowEnabled(button_.window()));
}

TEST_F(Button, AnIconIsShownAsOne) {
  PICTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_ICON;
  description.icon.hicon = CopyIcon(LoadIconW(nullptr, reinterpret_cast<LPCWSTR>(IDI_APPLICATION)));
  com::Com<IPictureDisp> picture;
  ASSERT_EQ(OleCreatePictureIndirect(&description, __uuidof(IPictureDisp), TRUE, picture.putVoid()),
            S_OK);
  com::Variant value{com::Query<IDispatch>(picture)};
  button_.Set(L"Style", Long(1));
  EXPECT_EQ(button_.Set(L"Picture", *value.get()), S_OK);
  EXPECT_EQ(GetWindowLongW(button_.window(), GWL_STYLE) & (BS_ICON | BS_BITMAP), BS_ICON);
  EXPECT_EQ(SendMessageW(button_.window(), BM_GETIMAGE, IMAGE_ICON, 0),
            reinterpret_cast<LRESULT>(description.icon.hicon));
}

TEST_F(Button, ADefaultButtonLooksLikeOne) {
  Hosted<CQRNBtn> button(L"btn2");
  button.Set(L"Default", Bool(true));
  ASSERT_EQ(button.Show(), S_OK);
  EXPECT_EQ(GetWindowLongW(button.window(), GWL_STYLE) & BS_TYPEMASK, BS_DEFPUSHBUTTON);
}

TEST_F(Button, EveryOperationIsAClick) {
  InsertThree();
  const struct {
    int32_t operation;
    const wchar_t* code;
    const char *calls, *screen;
  } cases[] = {
      {DbGetFirst, L"", "12/0:42 ", "1|氏名"},
      {DbGetNext, L"typed", "6/0:42 ", "2|氏名"},
      {DbGetPrevious, L"", "7/0:42 ", "1|氏名"},
      {DbGetLast, L"", "13/0:42 ", "3|氏名"},
      {DbGetEqual, L"2", "5/0:42 ", "2|氏名"},
      {DbGetGreater, L"2", "8/0:42 ", "3|氏名"},
      {DbGetLessThan, L"2", "10/0:42 ", "1|氏名"},
      {DbGetGreaterOrEqual, L"2", "9/0:42 ", "2|氏名"},
      {DbGetLessThanOrEuqal, L"9", "11/0:42 ", "3|氏名"},
      {DbStepFirst, L"", "33/0:41 ", "1|氏名"},
      {DbStepNext, L"", "24/0:41 ", "2|氏名"},
      {DbStepLast, L"", "34/0:41 ", "3|氏名"},
      {DbStepPrevious, L"", "35/0:41 ", "2|氏名"},
      {DbUpdate, L"2", "3/0:41 ", "2|氏名"},
      {DbUpdateNCC, L"2", "3/255:41 ", "2|氏名"},
      {DbInsert, L"4", "2/0:41 ", "4|氏名"},
      {DbInsertNCC, L"5", "2/255:41 ", "5|氏名"},
      {DbDelete, L"5", "4/0:- ", "5|氏名"},
  };
  for (const auto& row : cases) {
    Fill(row.code, L"氏名");
    CallLog log;
    const bool steps = row.operation >= DbStepFirst && row.operation <= DbStepPrevious;
    EXPECT_EQ(Click(row.operation), steps ? "-600() " : "2() -600() ") << row.operation;
    EXPECT_EQ(log.Take(), row.calls) << row.operation;
    EXPECT_EQ(Screen(), row.screen) << row.operation;
  }
}

TEST_F(Button, AWriteEmptiesTheControlsAReadNever) {
  Fill(L"7", L"名前");
  EXPECT_EQ(Click(DbInsert), "2() -600() ");
  EXPECT_EQ(Screen(), "|");
  EXPECT_EQ(Click(DbGetFirst), "2() -600() ");
  EXPECT_EQ(Screen(), "7|名前");
  EXPECT_EQ(Click(DbStepFirst), "-600() ");
  EXPECT_EQ(Screen(), "7|名前");
  EXPECT_EQ(Click(DbUpdate), "2() -600() ");
  EXPECT_EQ(Screen(), "|");
  EXPECT_EQ(Click(DbGetFirst), "2() -600() ");
  EXPECT_EQ(Click(DbDelete), "2() -600() ");
  EXPECT_EQ(Screen(), "|");
  button_.Set(L"ClearControlData", Bool(false));
  Fill(L"8", L"残る");
  EXPECT_EQ(Click(DbInsert), "2() -600() ");
  EXPECT_EQ(Screen(), "8|残る");
}

TEST_F(Button, AStatusIsToldThenShownThenComesTheClick) {
  InsertThree();
  scroll_.log.clear();
  ShownMessages boxes;
  std::string whileTold = "?";
  button_.events.answer = [&](DISPID id, DISPPARAMS&) {
    if (id == kBtrieveError) whileTold = boxes.Take();
  };
  Fill(L"2", L"二度目");
  EXPECT_EQ(Click(DbInsert), "2() 1(BSTR:People,I2&:5) -600() ");
  EXPECT_EQ(whileTold, "") << "the event comes before the box";
  EXPECT_EQ(boxes.Take(), std::string(kFailed) + "(5)");
  EXPECT_EQ(Screen(), "2|二度目");
  EXPECT_EQ(scroll_.log, "");
}

TEST_F(Button, AHandlerSilencesTheMessageOrChangesItsNumber) {
  ShownMessages boxes;
  int16_t answer = 0;
  button_.events.answer = [&](DISPID id, DISPPARAMS& sent) {
    if (id == kBtrieveError) *sent.rgvarg[0].piVal = answer;
  };
  EXPECT_EQ(Click(DbGetFirst), "2() 1(BSTR:People,I2&:9) -600() ");
  EXPECT_EQ(boxes.Take(), "");
  answer = 77;
  EXPECT_EQ(Click(DbGetFirst), "2() 1(BSTR:People,I2&:9) -600() ");
  EXPECT_EQ(boxes.Take(), std::string(kFailed) + "(77)");
  EXPECT_EQ(scroll_.log, "") << "silenced or not, it failed";
}

TEST_F(Button, ARefusalIsSilent) {
  ShownMessages boxes;
  button_.events.answer = [&](DISPID id, DISPPARAMS&) {
    if (id == kSetData) button_.Set(L"Abort", Bool(true));
  };
  Fill(L"1", L"x");
  CallLog log;
  EXPECT_EQ(Click(DbInsert), "2() -600() ");
  EXPECT_EQ(log.Take(), "");
  EXPECT_EQ(boxes.Take(), "");
  EXPECT_EQ(button_.Value(L"Abort"), "ok BOOL:-1") << "until the next click";
  EXPECT_EQ(Screen(), "1|x");
  button_.events.answer = nullptr;
  EXPECT_EQ(Click(DbInsert), "2() -600() ");
  EXPECT_EQ(log.Take(), "2/0:41 ");
  EXPECT_EQ(button_.Value(L"Abort"), "ok BOOL:0");
}

TEST_F(Button, AQuestionIsAskedFirst) {
  button_.Set(L"ConfirmMsg", Text(L"登録しますか？"));
  Fill(L"1", L"x");
  CallLog log;
  // Of a box that cannot be shown the answer is 0.
  for (const int answer : {IDCANCEL, 0, IDOK}) {
    PlayedMessageBox box(answer);
    const bool yes = answer == IDOK;
    EXPECT_EQ(Click(DbInsert), yes ? "2() -600() " : "-600() ") << "the click is told all the same";
    EXPECT_EQ(box.text, L"登録しますか？");
    EXPECT_EQ(log.Take(), yes ? "2/0:41 " : "");
  }
}

TEST_F(Button, NamesThatLeadNowhereAreShown) {
  ShownMessages boxes;
  const std::string box = "VE802 DbSourceまたはDbTableﾌﾟﾛﾊﾟﾃｨが不正です。";
  button_.Set(L"DbTable", Text(L"people"));
  EXPECT_EQ(Click(DbInsert), "-600() ");
  EXPECT_EQ(boxes.Take(), box);
  button_.Set(L"DbTable", Text(L"People"));
  button_.Set(L"DbSource", Text(L"db1"));
  EXPECT_EQ(Click(99), "-600() ");
  EXPECT_EQ(boxes.Take(), box);
}

TEST_F(Button, AnOperationThatIsNoneIsShownAndTellsNobody) {
  ShownMessages boxes;
  for (const int32_t operation : {-1, 18, 1000}) {
    EXPECT_EQ(Click(operation), "-600() ");
    EXPECT_EQ(boxes.Take(), "VE801 ボタンのDbOperationプロパティが不正です。");
  }
  EXPECT_EQ(scroll_.log, "");
}

TEST_F(Button, AClosedTableIsOpenedByTheClick) {
  InsertThree();
  office_.Close("People");
  EXPECT_EQ(Click(DbGetLast), "2() -600() ");
  EXPECT_EQ(Screen(), "3|氏名");
  office_.Close("People");
  ShownMessages boxes;
  const auto clickOn = [&](const char* file) {
    strcpy(office_.Table("People")->Location, file);
    EXPECT_EQ(Click(DbGetLast), "-600() ") << "the opening has told of its failure";
    return boxes.Take();
  };
  std::ofstream(office_.PathOf("junk.btr")) << std::string(5000, 'x');
  EXPECT_EQ(clickOn("junk.btr"), "VE803 Btrieveファイル People のオープンに失敗。(30)");
  EXPECT_EQ(clickOn("none\\file.btr"), "VE007 Btrieveファイルの生成に失敗(rc=25)");
}

TEST_F(Button, TheKeyIsFoundByItsNameAtEveryClick) {
  const struct {
    const wchar_t* index;
    const char *id, *calls;
  } cases[] = {{L"ByName", "ok I2:3", "12/2:42 "},
               {L"ByPlace", "ok I2:1", "12/1:42 "},
               {L"", "ok I2:0", "12/0:42 "},
               {L"byname", "ok I2:0", "12/0:42 "}};
  InsertThree();
  for (const auto& row : cases) {
    button_.Set(L"DbIndex", Text(row.index));
    button_.Set(L"IndexID", Short(2));
    CallLog log;
    EXPECT_EQ(Click(DbGetFirst), "2() -600() ");
    EXPECT_EQ(button_.Value(L"IndexID"), row.id);
    EXPECT_EQ(log.Take(), row.calls);
  }
}

// The key's position as it stands once the window is made.
std::string IndexAtStart(bool runs) {
  Hosted<CQRNBtn> button(L"btn2", runs);
  button.Set(L"DbSource", Text(L"Db1"));
  button.Set(L"DbTable", Text(L"People"));
  button.Set(L"DbIndex", Text(L"ByName"));
  EXPECT_EQ(button.Show(), S_OK);
  return button.Value(L"IndexID");
}

TEST_F(Button, AtRunTimeTheKeyIsLookedForWhenTheWindowIsMade) {
  EXPECT_EQ(IndexAtStart(true), "ok I2:3");
  EXPECT_EQ(IndexAtStart(false), "ok I2:0") << "not in the designer";
  TheRegistry().form_mode = 2;
  EXPECT_EQ(IndexAtStart(true), "ok I2:0") << "nor with the setting that puts it off";
  TheRegistry().form_mode = 3;
}

TEST_F(Button, ScrollBarsFollowWhatSucceeded) {
  InsertThree();
  scroll_.log.clear();
  button_.Set(L"DbIndex", Text(L"ByName"));
  EXPECT_EQ(Click(DbGetFirst), "2() -600() ");
  EXPECT_EQ(Click(DbStepNext), "-600() ");
  EXPECT_EQ(Click(DbUpdate), "2() -600() ");
  EXPECT_EQ(scroll_.log, "People:3 People:3 People:3 ");
}

TEST_F(Button, EnterIsAClickAndOtherKeysAreTheContainers) {
  InsertThree();
  button_.Set(L"DbOperation", Long(DbGetLast));
  button_.events.log.clear();
  CallLog log;
  EXPECT_EQ(button_.Offer(WM_KEYDOWN, VK_RETURN), S_OK);
  EXPECT_EQ(button_.events.log, "-602(I2&:13,I2:0) 2() -600() ");
  EXPECT_EQ(log.Take(), "13/0:42 ") << "once";
  button_.events.log.clear();
  button_.Set(L"Cancel", Bool(true));
  EXPECT_EQ(button_.Offer(WM_KEYDOWN, VK_ESCAPE), S_FALSE);
  EXPECT_EQ(button_.events.log, "-602(I2&:27,I2:0) ");
}

TEST_F(Button, TheCaptionsLetterIsTheContainersKey) {
  const auto control = com::Query<IOleControl>(button_.object());
  CONTROLINFO info{};
  info.cb = sizeof info;
  EXPECT_EQ(control->GetControlInfo(&info), S_OK);
  EXPECT_EQ(info.cAccel, 0);
  button_.Set(L"Caption", Text(L"A && B(&N)"));
  EXPECT_EQ(control->GetControlInfo(&info), S_OK);
  ASSERT_EQ(info.cAccel, 1);
  ACCEL key{};
  CopyAcceleratorTableW(info.hAccel, &key, 1);
  EXPECT_EQ(key.key, 'N');
  EXPECT_EQ(key.fVirt, FALT | FVIRTKEY);
  button_.Set(L"Caption", Text(L"次(&あ)"));
  EXPECT_EQ(control->GetControlInfo(&info), S_OK);
  EXPECT_EQ(info.cAccel, 0) << "no key types it";
}

TEST_F(Button, TheCaptionsLetterTakesTheFocusThenClicks) {
  Hosted<CQRNEdit> day(L"edtDay");
  Bind(day, L"Day");
  day.Set(L"DbTable", Text(L"Days"));
  ASSERT_EQ(day.Show(), S_OK);
  button_.Set(L"DbTable", Text(L"Days"));
  button_.Set(L"ClearControlData", Bool(false));
  button_.Set(L"Caption", Text(L"追加(&N)"));
  SetFocus(day.window());
  SetWindowTextW(day.window(), L"2024/2/3");
  button_.events.log.clear();
  const auto control = com::Query<IOleControl>(button_.object());
  MSG message{};
  message.message = WM_SYSKEYDOWN;
  message.wParam = 'N';
  EXPECT_EQ(control->OnMnemonic(&message), S_OK);
  EXPECT_EQ(button_.events.log, "2() -600() ");
  EXPECT_EQ(GetFocus(), button_.window());
  EXPECT_EQ(TextOf(day.window()), "2024/02/03");
  EXPECT_EQ(office_.Field("Days", "Day"), "2024/02/03") << "repaired before it was written";
  button_.Set(L"Enabled", Bool(false));
  button_.events.log.clear();
  EXPECT_EQ(control->OnMnemonic(&message), S_OK);
  EXPECT_EQ(button_.events.log, "");
}

TEST_F(Button, AHandlerMayClickAgain) {
  InsertThree();
  int depth = 0;
  button_.events.answer = [&](DISPID id, DISPPARAMS&) {
    if (id != kSetData || ++depth > 1) return;
    button_->Click();
  };
  Fill(L"1", L"");
  EXPECT_EQ(Click(DbGetEqual), "2() 2() -600() -600() ");
  EXPECT_EQ(Screen(), "1|氏名");
}

// At a write the buffer has the screen's texts by then, so that a handler may change them.
TEST_F(Button, SetDataFindsTheScreensTextsBeforeAWriteAlone) {
  InsertThree();
  EXPECT_EQ(Click(DbGetFirst), "2() -600() ");
  Fill(L"1", L"画面");
  std::string seen;
  button_.events.answer = [&](DISPID id, DISPPARAMS&) {
    if (id == kSetData) seen = office_.Field("People", "Name");
    button_.Set(L"Abort", Bool(true));
  };
  const struct {
    int32_t operation;
    const char* seen;
  } cases[] = {{DbGetEqual, "氏名"},  {DbGetNext, "氏名"}, {DbDelete, "氏名"},   {DbUpdate, "画面"},
               {DbUpdateNCC, "画面"}, {DbInsert, "画面"},  {DbInsertNCC, "画面"}};
  for (const auto& row : cases) {
    seen.clear();
    EXPECT_EQ(Click(row.operation), "2() -600() ") << row.operation;
    EXPECT_EQ(seen, row.seen) << row.operation;
  }
}

TEST_F(Button, TheQuestionStandsOverTheButtonOrItsForm) {
  button_.Set(L"ConfirmMsg", Text(L"実行？"));
  PlayedMessageBox box(IDCANCEL);
  Click(DbInsert);
  EXPECT_EQ(box.owner, GetParent(button_.window()));
  EXPECT_EQ(box.text, L"実行？");
  EXPECT_EQ(box.title, L"");
  EXPECT_EQ(box.kind, static_cast<UINT>(MB_OKCANCEL));
  Hosted<CQRNBtn> hidden(L"btn2");
  hidden.Set(L"ConfirmMsg", Text(L"実行？"));
  hidden->Click();
  EXPECT_EQ(box.owner, TheForm()) << "without a window of its own";
  auto* const alone = new CQRNBtn;
  const auto held = com::Com<IUnknown>::Take(&alone->Inner());
  alone->ConfirmMsg = com::Bstr(L"実行？");
  alone->Click();
  EXPECT_EQ(box.calls, 3);
  EXPECT_EQ(box.owner, nullptr) << "without a container";
}

TEST_F(Button, WhatAHandlerPutsCountsFromTheNextClickOn) {
  InsertThree();
  Fill(L"1", L"氏名");
  button_.events.answer = [&](DISPID id, DISPPARAMS&) {
    if (id != kSetData) return;
    button_.events.answer = nullptr;
    button_.Set(L"DbOperation", Long(DbDelete));
    button_.Set(L"DbTable", Text(L"Days"));
    button_.Set(L"DbIndex", Text(L"ByName"));
  };
  CallLog log;
  EXPECT_EQ(Click(DbGetEqual), "2() -600() ");
  EXPECT_EQ(log.Take(), "5/0:42 ") << "this click goes on as it began";
  EXPECT_EQ(Screen(), "1|氏名");
}

TEST_F(Button, TheMouseClicksAButtonAfterItsOwnEvents) {
  button_.Set(L"DbOperation", Long(DbStepFirst));
  button_.events.answer = [](DISPID id, DISPPARAMS& sent) {
    if (id == 1) *sent.rgvarg[0].piVal = 0;
  };
  SendMessageW(button_.window(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 6));
  SendMessageW(button_.window(), WM_LBUTTONUP, 0, MAKELPARAM(5, 6));
  const std::string log = button_.events.log;
  EXPECT_EQ(log.find("-605(I2:1,I2:0,R4:5,R4:6) "), 0u) << log;
  EXPECT_NE(log.find("-607(I2:1,I2:0,R4:5,R4:6) 1(BSTR:People,I2&:9) -600() "), log.npos) << log;
}

}  // namespace
}  // namespace qrn::test
