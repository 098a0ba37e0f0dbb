// A control whose container lets go of it, and takes its window away, inside an event of its own.

#include "OfficeFixture.h"
#include "SystemCalls.h"
#include "binding/QRNBtr.h"
#include "com/Module.h"
#include "controls/QRNBtn.h"
#include "tests/extended/ShownMessages.h"

namespace qrn::test {
namespace {

struct LastReference : OfficeFixture {
  // Lets go of the control in its event of that id, which `reach` brings about.
  template <class Control>
  void LetGoIn(DISPID event, const char* what, Control& control,
               const std::function<void()>& reach) {
    SCOPED_TRACE(what);
    int times = 0;
    control.events.answer = [&](DISPID id, DISPPARAMS&) {
      if (id != event || times++ > 0) return;
      control.Drop();
    };
    reach();
    EXPECT_EQ(times, 1);
    RunMessages();
    EXPECT_TRUE(com::ModuleIsIdle());
  }

  ShownMessages messages_;
};

constexpr DISPID kChange = 1;

struct EditCase {
  const char* what;
  DISPID event;
  void (*reach)(Hosted<CQRNEdit>& edit);
};

TEST_F(LastReference, OfAnEditGoesInAnyEvent) {
  const EditCase cases[] = {
      {"a character", kChange, [](auto& edit) { Type(edit.window(), u"a"); }},
      {"a character that is formatted", kChange,
       [](auto& edit) {
         edit.format.offered = PlayedFormat::kService;
         edit.Set(L"Format", Text(L"@"));
         edit.Set(L"FormatOption", Long(FormatEveryChar));
         Type(edit.window(), u"1");
       }},
      {"a character too many in a selection", kChange,
       [](auto& edit) {
         edit.Set(L"MaxLength", Short(2));
         edit.Set(L"SelText", Text(L"abc"));
       }},
      {"Text put", kChange, [](auto& edit) { edit.Set(L"Text", Text(L"a")); }},
      {"Text put and aligned", kChange,
       [](auto& edit) {
         edit.Set(L"MaxLength", Short(6));
         edit.Set(L"FormatOption", Long(FormatRightAlign));
         edit.Set(L"Text", Text(L"a"));
       }},
      {"SelText put", kChange, [](auto& edit) { edit.Set(L"SelText", Text(L"a")); }},
      {"the field's text", kChange, [](auto& edit) { edit->ShowFieldText("a"); }},
      {"the field cleared", kChange, [](auto& edit) { edit->ClearFieldText(); }},
      {"key down", -602, [](auto& edit) { edit.Offer(WM_KEYDOWN, 'A'); }},
      {"an arrow", -602, [](auto& edit) { edit.Offer(WM_KEYDOWN, VK_LEFT); }},
      {"key press", -603, [](auto& edit) { edit.Offer(WM_CHAR, 'a'); }},
      {"key up", -604, [](auto& edit) { edit.Offer(WM_KEYUP, 'A'); }},
      {"mouse down", -605,
       [](auto& edit) { SendMessageW(edit.window(), WM_LBUTTONDOWN, MK_LBUTTON, 0x20002); }},
      {"mouse move", -606,
       [](auto& edit) { SendMessageW(edit.window(), WM_MOUSEMOVE, 0, 0x20002); }},
      {"mouse up", -607, [](auto& edit) { SendMessageW(edit.window(), WM_RBUTTONUP, 0, 0x20002); }},
  };
  for (const EditCase& row : cases) {
    Hosted<CQRNEdit> edit(L"edt1");
    Bind(edit, L"Day", L"Days");
    ASSERT_EQ(edit.Show(), S_OK);
    edit->ShowFieldText("x");
    LetGoIn(row.event, row.what, edit, [&] { row.reach(edit); });
  }
}

// The repair of a date on leaving changes the text in the middle of the loss of the focus.
TEST_F(LastReference, OfAnEditGoesWhileItLosesTheFocus) {
  Hosted<CQRNEdit> edit(L"edt1");
  Bind(edit, L"Day", L"Days");
  edit.Set(L"IMEMode", Long(1));
  ASSERT_EQ(edit.Show(), S_OK);
  SetFocus(edit.window());
  SetWindowTextW(edit.window(), L"2024/2/3");
  LetGoIn(kChange, "leaving", edit, [] { SetFocus(TheForm()); });
}

TEST_F(LastReference, OfAButtonGoesInAnyEvent) {
  struct Case {
    const char* what;
    DISPID event;
    int32_t operation;
    void (*reach)(Hosted<CQRNBtn>& button);
  };
  const auto click = [](Hosted<CQRNBtn>& button) { SendMessageW(button.window(), BM_CLICK, 0, 0); };
  const Case cases[] = {
      {"SetData", 2, DbGetFirst, click},
      {"BtrieveError", 1, DbGetFirst, click},
      {"Click", -600, DbStepFirst, click},
      {"Click by Enter", -600, DbStepFirst, [](auto& b) { b.Offer(WM_KEYDOWN, VK_RETURN); }},
      {"SetData by Enter", 2, DbGetFirst, [](auto& b) { b.Offer(WM_KEYDOWN, VK_RETURN); }},
      {"key down", -602, DbGetFirst, [](auto& b) { b.Offer(WM_KEYDOWN, VK_RETURN); }},
      {"key press", -603, DbGetFirst, [](auto& b) { b.Offer(WM_CHAR, VK_SPACE); }},
      {"mouse down", -605, DbGetFirst,
       [](auto& b) { SendMessageW(b.window(), WM_LBUTTONDOWN, MK_LBUTTON, 0x20002); }},
      {"mouse up", -607, DbGetFirst,
       [](auto& b) {
         SendMessageW(b.window(), WM_LBUTTONDOWN, MK_LBUTTON, 0x20002);
         SendMessageW(b.window(), WM_LBUTTONUP, 0, 0x20002);
       }},
      {"SetData by its letter", 2, DbGetFirst,
       [](auto& b) {
         MSG message{};
         message.message = WM_SYSKEYDOWN;
         message.wParam = 'N';
         com::Query<IOleControl>(b.object()).get()->OnMnemonic(&message);
       }},
      {"SetData of an insert", 2, DbInsert, click},
  };
  for (const Case& row : cases) {
    Hosted<CQRNBtn> button(L"btn1");
    Bind(button);
    button.Set(L"Caption", Text(L"&N"));
    button.Set(L"DbOperation", Long(row.operation));
    ASSERT_EQ(button.Show(), S_OK);
    LetGoIn(row.event, row.what, button, [&] { row.reach(button); });
  }
}

TEST_F(LastReference, OfAButtonGoesWhileItsBoxesAreUp) {
  for (const int answer : {IDOK, IDCANCEL}) {
    Hosted<CQRNBtn> button(L"btn1");
    Bind(button);
    button.Set(L"ConfirmMsg", Text(L"?"));
    ASSERT_EQ(button.Show(), S_OK);
    PlayedMessageBox box(answer);
    box.onShow = [&] { button.Drop(); };
    SendMessageW(button.window(), BM_CLICK, 0, 0);
    RunMessages();
    EXPECT_EQ(box.calls, 1);
    EXPECT_TRUE(com::ModuleIsIdle());
  }
}

TEST_F(LastReference, OfAControlGoesAsItBecomesActive) {
  Hosted<CQRNEdit> edit(L"edt1");
  ASSERT_EQ(edit.Show(), S_OK);
  edit.site.onUiActivate = [&] { edit.Drop(); };
  edit.Show(OLEIVERB_UIACTIVATE);
  RunMessages();
  EXPECT_TRUE(com::ModuleIsIdle());
}

TEST_F(LastReference, OfADatabaseControlGoesInItsEvent) {
  for (const wchar_t* method : {L"DbOpenAll", L"DbCreate", L"DbOpen"}) {
    Hosted<CQRNBtr> btr(L"Db2");
    btr.Set(L"DDFDir", Text(office_.Directory()));
    btr.Set(L"AllOpen", Bool(false));
    ASSERT_EQ(btr.Show(), S_OK);
    CallMethod(btr.object(), L"DbSetFileName", {Text(L"Notes"), Text(L"none\\file.btr")});
    const std::wstring name = method;
    LetGoIn(1, "BtrieveError", btr, [&] {
      if (name == L"DbOpenAll") {
        CallMethod(btr.object(), method, {});
      } else {
        CallMethod(btr.object(), method, {Text(L"Notes")});
      }
    });
  }
}

}  // namespace
}  // namespace qrn::test
