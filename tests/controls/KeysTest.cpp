// Keys as a user presses them: through the system's queue, the container's loop and the control.

#include "OfficeFixture.h"
#include "binding/QRNBtr.h"
#include "controls/QRNBtn.h"

namespace qrn::test {
namespace {

struct Keys : OfficeFixture {
  // The container's loop for a while: keys are offered to the control that is active.
  static void Loop(HostedControl& active, DWORD milliseconds) {
    for (const DWORD end = GetTickCount() + milliseconds; GetTickCount() < end; Sleep(2)) {
      MSG message;
      while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        const bool key = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
        if (key && active.Offer(message) == S_OK) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
      }
    }
  }

  static void Press(HostedControl& active, std::initializer_list<WORD> keys) {
    for (const WORD key : keys) {
      INPUT input[2] = {};
      input[0].type = input[1].type = INPUT_KEYBOARD;
      input[0].ki.wVk = input[1].ki.wVk = key;
      input[1].ki.dwFlags = KEYEVENTF_KEYUP;
      SendInput(2, input, sizeof(INPUT));
      Loop(active, 100);
    }
  }

  // Makes it the active control, with the focus inside.
  static void Enter(HostedControl& control) {
    SetForegroundWindow(TheForm());
    ASSERT_EQ(control.Show(OLEIVERB_UIACTIVATE), S_OK);
    Loop(control, 150);
    control.events.log.clear();
  }
};

TEST_F(Keys, AnEditTellsOfThemAndFiltersThem) {
  Hosted<CQRNEdit> edit(L"edt1");
  edit.Set(L"NumericMask", Bool(true));
  Enter(edit);
  Press(edit, {'1', 'A', '2'});
  EXPECT_EQ(TextOf(edit.window()), "12");
  EXPECT_EQ(edit.events.log,
            "-602(I2&:49,I2:0) -603(I2&:49) 1() -604(I2&:49,I2:0) "
            "-602(I2&:65,I2:0) -603(I2&:97) -604(I2&:65,I2:0) "
            "-602(I2&:50,I2:0) -603(I2&:50) 1() -604(I2&:50,I2:0) ");
}

TEST_F(Keys, AnArrowMovesTheCaretNotTheFocus) {
  Hosted<CQRNEdit> edit(L"edt1");
  Enter(edit);
  Press(edit, {'1', '3', VK_LEFT, '2'});
  EXPECT_EQ(TextOf(edit.window()), "123");
}

TEST_F(Keys, AHandlerOfKeyPressTakesOrChangesACharacter) {
  Hosted<CQRNEdit> edit(L"edt1");
  edit.events.answer = [](DISPID id, DISPPARAMS& sent) {
    if (id != -603) return;
    int16_t& code = *sent.rgvarg[0].piVal;
    code = code == '1' ? 0 : static_cast<int16_t>(code + 1);
  };
  Enter(edit);
  Press(edit, {'1', '2'});
  EXPECT_EQ(TextOf(edit.window()), "3");
}

TEST_F(Keys, EnterAndTheSpaceBarClickAButtonOnce) {
  Hosted<CQRNEdit> code(L"edtCode");
  code.Set(L"DbSource", Text(L"Db1"));
  code.Set(L"DbTable", Text(L"People"));
  code.Set(L"DbField", Text(L"Code"));
  ASSERT_EQ(code.Show(), S_OK);
  Hosted<CQRNBtn> button(L"btn1");
  button.Set(L"DbSource", Text(L"Db1"));
  button.Set(L"DbTable", Text(L"People"));
  button.Set(L"ClearControlData", Bool(false));
  Enter(button);
  SetWindowTextW(code.window(), L"1");
  CallLog log;
  Press(button, {VK_RETURN});
  EXPECT_EQ(button.events.log, "-602(I2&:13,I2:0) 2() -600() -604(I2&:13,I2:0) ");
  EXPECT_EQ(log.Take(), "2/0:41 ");
  SetWindowTextW(code.window(), L"2");
  button.events.log.clear();
  Press(button, {VK_SPACE});
  EXPECT_EQ(log.Take(), "2/0:41 ");
  EXPECT_EQ(button.events.log, "-602(I2&:32,I2:0) -603(I2&:32) -604(I2&:32,I2:0) 2() -600() ");
}

TEST_F(Keys, TheMouseClicksAButtonAfterItsOwnEvents) {
  Hosted<CQRNBtn> button(L"btn1");
  button.Set(L"DbSource", Text(L"Db1"));
  button.Set(L"DbTable", Text(L"People"));
  button.Set(L"DbOperation", Long(DbStepFirst));
  button.events.answer = [](DISPID id, DISPPARAMS& sent) {
    if (id == 1) *sent.rgvarg[0].piVal = 0;
  };
  ASSERT_EQ(button.Show(), S_OK);
  SendMessageW(button.window(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 6));
  SendMessageW(button.window(), WM_LBUTTONUP, 0, MAKELPARAM(5, 6));
  const std::string log = button.events.log;
  EXPECT_EQ(log.find("-605(I2:1,I2:0,R4:5,R4:6) "), 0u) << log;
  EXPECT_NE(log.find("-607(I2:1,I2:0,R4:5,R4:6) 1(BSTR:People,I2&:9) -600() "), log.npos) << log;
}

// What the container does with a key works from there too; a running form has nothing to reach
// there.
TEST_F(Keys, TheDatabaseControlLeavesThemToItsContainer) {
  for (const bool runs : {false, true}) {
    Hosted<CQRNBtr> btr(L"Db9", runs);
    btr.site.acceleratorResult = S_OK;
    ASSERT_EQ(btr.Show(), S_OK);
    EXPECT_EQ(btr.Offer(WM_KEYDOWN, VK_TAB), S_OK);
    EXPECT_NE(btr.site.log.find("accelerator "), std::string::npos);
    SetFocus(TheForm());
    btr.site.log.clear();
    SetFocus(btr->hwnd());
    EXPECT_EQ(btr.site.log, runs ? "" : "focus ");
    SetFocus(TheForm());
    EXPECT_EQ(btr.site.log, runs ? "" : "focus blur ");
  }
}

}  // namespace
}  // namespace qrn::test
