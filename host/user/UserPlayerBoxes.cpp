// Steps that see and answer what a program shows beside its forms.
#include "host/container/Text.h"
#include "host/user/Dialogs.h"
#include "host/user/StepWords.h"
#include "host/user/UserInput.h"
#include "host/user/UserPlayer.h"
#include "host/user/WindowShot.h"

namespace qrn::host {

using form::UserStep;
using form::UserVerb;

void UserPlayer::RequireNoMessage() const {
  if (HWND box = FrontMessage()) Fail("the box " + Described(box) + " is in the way");
}

// What has the keyboard may still be on its way to the front.
void UserPlayer::RequireKeyboard(bool forText) {
  constexpr DWORD kKeyboardPatienceMs = 3000;
  const auto has = [&] {
    HWND focus = ui_.Focus();
    return focus && (!forText || GetAncestor(focus, GA_ROOT) != focus);
  };
  const ULONGLONG end = GetTickCount64() + kKeyboardPatienceMs;
  while (!has()) {
    if (GetTickCount64() >= end) Fail("nothing of the program has the keyboard");
    Sleep(kLookMs);
  }
}

void UserPlayer::OnShot(const UserStep& step) {
  RECT part{};
  if (step.Has("control")) {
    part = ScreenPart(step.Get("control"));
  } else {
    part = Ask<RECT>([this] {
      HWND window = WindowOf("");
      return IsWindowVisible(window) ? ScreenPartOf(window) : RECT{};
    });
    // A box that hangs over the form's edge belongs to what the user sees.
    if (HWND box = FrontBox()) {
      const RECT over = ScreenPartOf(box);
      const RECT form = part;
      UnionRect(&part, &form, &over);
    }
  }
  SaveScreen(part, step.Get("file"));
}

HWND UserPlayer::WaitForWindow(const std::function<HWND()>& look, const std::string& what) {
  const ULONGLONG end = GetTickCount64() + kPatienceMs;
  for (;;) {
    if (HWND found = look()) return found;
    if (GetTickCount64() >= end) Fail(what + " does not come");
    Sleep(kLookMs);
  }
}

RECT UserPlayer::WaitForPlace(const std::function<RECT()>& look, const std::string& what) {
  RECT place{};
  WaitForWindow([&] { return place = look(), IsRectEmpty(&place) ? nullptr : GetDesktopWindow(); },
                what);
  return place;
}

void UserPlayer::OnMessage(const UserStep& step) {
  const std::wstring wanted = Wide(step.Get("text"));
  HWND box = WaitForWindow(FrontBox, "the message");
  const std::wstring text = BoxText(box);
  if (text != wanted) Fail("the message is " + Quoted(text));
  HWND button = ButtonOf(box, Wide(step.Get("button")));
  if (!button) Fail("the message has no button " + step.Get("button"));
  PressButton(box, button);
  WaitForWindow(
      [box] { return IsWindow(box) && IsWindowVisible(box) ? nullptr : GetDesktopWindow(); },
      "the message's end");
}

void UserPlayer::OnDialog(const UserStep& step) {
  const std::wstring title = Wide(step.Get("title"));
  HWND box = WaitForWindow([&] { return WindowTitled(title); }, "the dialog");
  const std::wstring text = Wide(step.Get("text"));
  if (step.verb == UserVerb::DialogPress) {
    HWND button = ButtonOf(box, Wide(step.Get("button")));
    if (!button) Fail("the dialog has no button " + step.Get("button"));
    return PressButton(box, button);
  }
  if (step.verb == UserVerb::DialogTab) {
    if (!ChooseTab(box, text)) Fail("the dialog has no tab " + step.Get("text"));
    return;
  }
  HWND item = ItemOf(box, step.Number("id"));
  if (!item) Fail("the dialog has nothing with the id " + step.Get("id"));
  if (step.verb == UserVerb::DialogEnter) return EnterText(item, text);
  if (step.verb == UserVerb::DialogChoose) {
    if (!ChooseLine(item, text)) Fail("there is no line " + Quoted(text));
    return;
  }
  const std::wstring shown = ItemText(item);
  if (!Meets(shown, step.Get("sign"), text)) Fail("it is " + Quoted(shown));
}

// By the mouse, which nothing may cover.
void UserPlayer::OnDialogClick(const UserStep& step) {
  const std::wstring title = Wide(step.Get("title"));
  HWND box = WaitForWindow([&] { return WindowTitled(title); }, "the dialog");
  HWND item =
      step.Has("button") ? ButtonOf(box, Wide(step.Get("button"))) : ItemOf(box, step.Number("id"));
  if (!item) Fail("the dialog has no " + step.Get("button") + step.Get("id"));
  if (!IsWindowVisible(item) || !IsWindowEnabled(item)) Fail("it cannot be clicked");
  if (!step.Has("line") || IsComboBox(item)) ClickMouse(CentreOf(ScreenPartOf(item)), {});
  if (!step.Has("line")) return;
  ClickMouse(CentreOf(WaitForPlace([&] { return LinePlace(item, Wide(step.Get("line"))); },
                                   "the line " + step.Get("line"))),
             {});
}

void UserPlayer::OnMenu(const UserStep& step) {
  RequireNoMessage();
  HWND window = Ask<HWND>([this] { return WindowOf(""); });
  const auto click = [&](const char* word, auto look) {
    const std::wstring words = Wide(step.Get(word));
    const RECT place = WaitForPlace([&] { return look(words); }, "the menu " + step.Get(word));
    ClickMouse(CentreOf(place), {});
  };
  click("menu", [window](const std::wstring& words) { return BarItemPlace(window, words); });
  click("item", [](const std::wstring& words) { return OpenItemPlace(words); });
  if (step.Has("sub")) click("sub", [](const std::wstring& words) { return OpenItemPlace(words); });
}

// The pages wait for their user, so this only sets them going.
void UserPlayer::OnPages(const UserStep& step) {
  RequireNoMessage();
  OnForms([this, path = step.Get("control")] {
    FormControl& control = ControlAt(path);
    if (!control.form().HasPages(control)) Fail(path + " has no property pages");
    control.form().PostShowPages(control);
  });
}

}  // namespace qrn::host
