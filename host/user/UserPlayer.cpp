#include "host/user/UserPlayer.h"

#include <algorithm>

#include "host/container/Text.h"
#include "host/container/WindowUse.h"
#include "host/form/SourceText.h"
#include "host/user/Dialogs.h"
#include "host/user/StepWords.h"
#include "host/user/UserInput.h"
#include "host/user/WindowShot.h"

namespace qrn::host {
namespace {

using form::UserStep;
using form::UserVerb;

constexpr DWORD kStartPatienceMs = 120000;
constexpr DWORD kEndPatienceMs = 30000;
constexpr char kDesigned[] = " while the form is designed";

Variant ValueOf(const form::ScriptValue& value) {
  if (const bool* truth = std::get_if<bool>(&value)) return Variant::Bool(*truth);
  if (const int32_t* whole = std::get_if<int32_t>(&value)) return Variant(*whole);
  if (const double* real = std::get_if<double>(&value)) {
    Variant number;
    number->vt = VT_R8;
    number->dblVal = *real;
    return number;
  }
  return Variant(MakeBstr(std::get<std::string>(value)));
}

std::vector<Variant> ValuesOf(const std::vector<form::ScriptValue>& values) {
  std::vector<Variant> list;
  for (const form::ScriptValue& value : values) list.push_back(ValueOf(value));
  return list;
}

bool IsTrue(const Variant& value) {
  Variant truth;
  return SUCCEEDED(value.as(VT_BOOL, truth)) && truth->boolVal != VARIANT_FALSE;
}

// Steps that a box in front does not keep from anything.
bool IsForBoxes(UserVerb verb) noexcept {
  constexpr UserVerb kForBoxes[] = {
      UserVerb::Message,      UserVerb::DialogPress, UserVerb::DialogChoose, UserVerb::DialogEnter,
      UserVerb::DialogExpect, UserVerb::DialogTab,   UserVerb::DialogClick,  UserVerb::Wait,
      UserVerb::Pace,         UserVerb::Shot};
  return std::find(std::begin(kForBoxes), std::end(kForBoxes), verb) != std::end(kForBoxes);
}

// The window at any depth of `window` that lies at a point of the screen.
HWND InnermostAt(HWND window, POINT screen) noexcept {
  for (;;) {
    POINT point = screen;
    ScreenToClient(window, &point);
    HWND child = ChildWindowFromPointEx(window, point, CWP_SKIPINVISIBLE);
    if (!child || child == window) return window;
    window = child;
  }
}

}  // namespace

const UserPlayer::VerbRow UserPlayer::kVerbs[] = {
    {UserVerb::Show, &UserPlayer::OnShow},
    {UserVerb::Close, &UserPlayer::OnClose},
    {UserVerb::Focus, &UserPlayer::OnFocus},
    {UserVerb::Click, &UserPlayer::OnClick},
    {UserVerb::DoubleClick, &UserPlayer::OnClick},
    {UserVerb::Drag, &UserPlayer::OnDrag},
    {UserVerb::Move, &UserPlayer::OnMove},
    {UserVerb::Wheel, &UserPlayer::OnWheel},
    {UserVerb::Key, &UserPlayer::OnKey},
    {UserVerb::Type, &UserPlayer::OnType},
    {UserVerb::Wait, &UserPlayer::OnWait},
    {UserVerb::WaitUntil, &UserPlayer::OnWaitUntil},
    {UserVerb::Expect, &UserPlayer::OnExpect},
    {UserVerb::Set, &UserPlayer::OnSet},
    {UserVerb::Call, &UserPlayer::OnCall},
    {UserVerb::Print, &UserPlayer::OnPrint},
    {UserVerb::Shot, &UserPlayer::OnShot},
    {UserVerb::Message, &UserPlayer::OnMessage},
    {UserVerb::DialogPress, &UserPlayer::OnDialog},
    {UserVerb::DialogChoose, &UserPlayer::OnDialog},
    {UserVerb::DialogEnter, &UserPlayer::OnDialog},
    {UserVerb::DialogExpect, &UserPlayer::OnDialog},
    {UserVerb::DialogTab, &UserPlayer::OnDialog},
    {UserVerb::DialogClick, &UserPlayer::OnDialogClick},
    {UserVerb::Menu, &UserPlayer::OnMenu},
    {UserVerb::Pace, &UserPlayer::OnPace},
    {UserVerb::Pages, &UserPlayer::OnPages},
    {UserVerb::Tool, &UserPlayer::OnTool},
    {UserVerb::Property, &UserPlayer::OnProperty},
    {UserVerb::Point, &UserPlayer::OnPoint},
    {UserVerb::Draw, &UserPlayer::OnDraw},
    {UserVerb::Pull, &UserPlayer::OnPull},
};

UserPlayer::UserPlayer(Scene& scene, std::vector<UserStep> steps, std::string name, bool trace)
    : scene_(scene),
      steps_(std::move(steps)),
      name_(std::move(name)),
      trace_(trace),
      up_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}

UserPlayer::~UserPlayer() { WaitForEnd(); }

void UserPlayer::WaitIdle() {
  ui_.WaitIdle([this] { return programEnded_.load(); });
}

void UserPlayer::WaitForEnd() {
  programEnded_ = true;
  if (!thread_.joinable()) return;
  // The thread may be waiting for this one to do its work.
  while (!ended_) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, kLookMs, QS_SENDMESSAGE);
    MSG message{};
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
  }
  thread_.join();
}

void UserPlayer::Run(const std::function<void()>& load, const std::function<void()>& ifStuck) {
  thread_ = std::thread([this, &ifStuck] { Play(ifStuck); });
  // A module may show a box while it loads, and no thread comes up then until that is answered.
  WaitForSingleObject(up_.get(), INFINITE);
  try {
    if (load) load();
    scene_.Start();
    scene_.Run();
  } catch (...) {
    refused_ = true;
    WaitForEnd();
    throw;
  }
  WaitForEnd();
}

void UserPlayer::Play(const std::function<void()>& ifStuck) {
  SetEvent(up_.get());
  PlaySteps();
  const ULONGLONG end = GetTickCount64() + kEndPatienceMs;
  ui_.Run([this] { scene_.End(); }, {}, kEndPatienceMs);
  while (!programEnded_ && GetTickCount64() < end) Sleep(kLookMs);
  if (!programEnded_ && ifStuck) ifStuck();
  ended_ = true;
}

void UserPlayer::PlaySteps() {
  int line = 0;
  try {
    int last = 0;
    for (const UserStep& step : steps_) {
      line = step.line;
      last = std::max(last, line);
      if (!WaitForStart(step.verb)) return;
      Sleep(pace_);
      RunStep(step);
      WaitIdle();
      ui_.ThrowLateFailure();
    }
    line = last;
    if (!WaitForStart(UserVerb::Wait)) return;
    if (HWND box = FrontBox()) Fail("nobody answers the box " + Described(box));
  } catch (const std::exception& error) {
    // A step without a line is none of the script's.
    failure_ = line > 0 ? name_ + ":" + std::to_string(line) + ": " : "";
    failure_ += error.what();
  }
}

bool UserPlayer::WaitForStart(UserVerb verb) {
  const ULONGLONG end = GetTickCount64() + kStartPatienceMs;
  while (!scene_.IsWaiting() && !programEnded_) {
    if (HWND box = FrontBox()) {
      if (IsForBoxes(verb)) return true;
      Fail("nobody answers the box " + Described(box) + " that comes before the form");
    }
    if (GetTickCount64() >= end) Fail("the form does not come");
    Sleep(kLookMs);
  }
  if (refused_) return false;
  if (!std::exchange(started_, true)) WaitIdle();
  return true;
}

// The window that must be enabled for the mouse to do something there. What holds others is reached
// beside them.
HWND UserPlayer::ReachedWindow(const std::string& path, POINT point) {
  if (const Form* form = program().FormNamed(Wide(path))) return form->Window();
  FormControl& control = ControlAt(path);
  if (!control.visible()) return nullptr;
  if (control.IsPiece()) {
    if (!IsTrue(GetMember(&control, L"Enabled", {}))) Fail(path + " is disabled");
    return control.ParentWindow();
  }
  return control.HoldsOthers() ? control.Window() : InnermostAt(control.Window(), point);
}

void UserPlayer::RequireReach(const std::string& path, POINT point) {
  RequireNoMessage();
  if (!MonitorFromPoint(point, MONITOR_DEFAULTTONULL)) Fail(path + " lies outside the screen");
  OnForms([this, path, point] {
    if (scene_.designer()) {
      const HWND top = GetAncestor(WindowFromPoint(point), GA_ROOT);
      if (top != scene_.designer()->Frame()) Fail(path + " lies behind another window");
      return;
    }
    const HWND window = ReachedWindow(path, point);
    if (!window || !IsWindowVisible(window)) Fail(path + " is hidden");
    if (!AllEnabled(window)) Fail(path + " is disabled");
    RECT place{};
    GetWindowRect(window, &place);
    // A point beside the control is for what it has dropped down there.
    const HWND form = GetAncestor(window, GA_ROOT);
    if (PtInRect(&place, point) && GetAncestor(WindowFromPoint(point), GA_ROOT) != form) {
      Fail(path + " lies behind another window");
    }
  });
}

void UserPlayer::RunStep(const UserStep& step) {
  const int line = step.line;
  if (trace_) OnForms([this, line] { program().PrintLine(Wide("step " + std::to_string(line))); });
  for (const VerbRow& row : kVerbs) {
    if (row.verb == step.verb) return (this->*row.run)(step);
  }
}

UiThread::Outcome UserPlayer::RunOnForms(std::function<void()> work) {
  const HWND before = FrontBox();
  const auto boxCame = [before] {
    HWND now = FrontBox();
    return now && now != before;
  };
  const auto said = [work = std::move(work)] {
    try {
      work();
    } catch (const ScriptError& error) {
      Fail(Utf8(error.description));
    } catch (const com::Failure&) {
      Fail("the control failed");
    }
  };
  const UiThread::Outcome outcome = ui_.Run(said, boxCame);
  const bool waits = outcome == UiThread::Outcome::Left && boxCame();
  if (outcome != UiThread::Outcome::Done && !waits) Fail("the program does not answer");
  return outcome;
}

void UserPlayer::ActOnForms(std::function<void()> work) { RunOnForms(std::move(work)); }

void UserPlayer::OnForms(std::function<void()> work) {
  if (RunOnForms(std::move(work)) == UiThread::Outcome::Done) return;
  HWND box = FrontBox();
  Fail("the box " + (box ? Described(box) : std::string()) + " comes in between");
}

Com<IDispatch> UserPlayer::ObjectAt(const form::MemberPath& path, size_t steps) {
  const std::wstring first = Wide(path[0].name);
  size_t at = 0;
  Form* form = program().FormNamed(first);
  if (form && steps > 0) {
    at = 1;
  } else {
    form = program().ActiveForm();
  }
  if (!form) Fail("there is no form");
  Com<IDispatch> object(form);
  for (; at < steps; ++at) {
    const std::vector<Variant> arguments = ValuesOf(path[at].arguments);
    const Variant value = GetMember(object.get(), Wide(path[at].name), arguments);
    if (value.type() != VT_DISPATCH || !value->pdispVal) Fail(path[at].name + " is no object");
    object = Com<IDispatch>(value->pdispVal);
  }
  return object;
}

Variant UserPlayer::Value(const std::string& text) {
  const form::MemberPath path = *form::MemberPathOf(text);
  const Com<IDispatch> object = ObjectAt(path, path.size() - 1);
  return GetMember(object.get(), Wide(path.back().name), ValuesOf(path.back().arguments));
}

std::wstring UserPlayer::ShownValue(const std::string& path) {
  return Ask<std::wstring>([this, path] { return ValueAsText(*Value(path).get()); });
}

FormControl& UserPlayer::ControlAt(const std::string& text) {
  const form::MemberPath path = *form::MemberPathOf(text);
  const Com<IDispatch> object = ObjectAt(path, path.size());
  for (const Com<Form>& form : program().forms()) {
    for (const Com<FormControl>& control : form->controls()) {
      if (static_cast<IDispatch*>(control.get()) == object.get()) return *control;
    }
  }
  Fail(text + " is no control");
}

Form& UserPlayer::FormAt(const std::string& name) {
  Form* form = name.empty() ? program().ActiveForm() : program().FormNamed(Wide(name));
  if (!form) Fail("there is no form " + name);
  return *form;
}

RECT UserPlayer::ScreenPart(const std::string& path) {
  return Ask<RECT>([this, path] {
    if (Form* form = program().FormNamed(Wide(path))) return ScreenPartOf(form->Window());
    const FormControl& control = ControlAt(path);
    RECT part = control.Place();
    MapWindowPoints(control.ParentWindow(), nullptr, reinterpret_cast<POINT*>(&part), 2);
    return part;
  });
}

POINT UserPlayer::PointIn(const std::string& path, const UserStep& step, const char* x,
                          const char* y) {
  const RECT part = ScreenPart(path);
  if (!step.Has(x)) return CentreOf(part);
  return {part.left + step.Number(x), part.top + step.Number(y)};
}

Program& UserPlayer::program() {
  Program* program = scene_.program();
  if (!program) Fail("there is no form");
  return *program;
}

HWND UserPlayer::WindowOf(const std::string& form) {
  if (designer::DesignWindow* window = scene_.designer()) return window->Frame();
  return FormAt(form).Window();
}

void UserPlayer::OnShow(const UserStep& step) {
  ActOnForms([this, form = step.Get("form")] { FormAt(form).Display(false); });
}

void UserPlayer::OnClose(const UserStep& step) {
  RequireNoMessage();
  OnForms([this, form = step.Get("form")] {
    PostMessageW(WindowOf(form), WM_SYSCOMMAND, SC_CLOSE, 0);
  });
}

void UserPlayer::OnFocus(const UserStep& step) {
  RequireNoMessage();
  ActOnForms([this, path = step.Get("control")] { TakeFocus(path); });
}

// Its handlers may have sent the keyboard on: who asked for it here does not have it then.
void UserPlayer::TakeFocus(const std::string& path) {
  if (program().options().design) Fail(path + " does not take the keyboard" + kDesigned);
  FormControl& control = ControlAt(path);
  SetForegroundWindow(control.form().Window());
  if (!control.CanTakeFocus() || !control.TakeFocus() || !control.HasFocus()) {
    Fail(path + " does not take the keyboard");
  }
}

void UserPlayer::OnClick(const UserStep& step) {
  ClickKind kind;
  kind.twice = step.verb == UserVerb::DoubleClick;
  kind.right = step.Has("right");
  kind.shift = step.Has("shift");
  kind.control = step.Has("ctrl");
  const POINT point = PointIn(step.Get("control"), step, "x", "y");
  RequireReach(step.Get("control"), point);
  ClickMouse(point, kind);
}

void UserPlayer::OnDrag(const UserStep& step) {
  const std::string& path = step.Get("control");
  const POINT from = PointIn(path, step, "x", "y");
  RequireReach(path, from);
  DragMouse(from, PointIn(path, step, "x2", "y2"));
}

void UserPlayer::OnMove(const UserStep& step) {
  MoveMouse(PointIn(step.Get("control"), step, "x", "y"));
}

void UserPlayer::OnWheel(const UserStep& step) {
  const std::string& path = step.Get("control");
  const POINT point = PointIn(path, step, "x", "y");
  RequireReach(path, point);
  MoveMouse(point);
  const std::string& way = step.Get("way");
  const bool across = form::SameWord(way, "left") || form::SameWord(way, "right");
  const bool away = form::SameWord(way, "up") || form::SameWord(way, "left");
  const int times = step.Has("times") ? step.Number("times") : 1;
  for (int i = 0; i < times; ++i) {
    TurnWheel(across, away);
    WaitIdle();
  }
}

void UserPlayer::OnKey(const UserStep& step) {
  const int times = step.Has("times") ? step.Number("times") : 1;
  const form::KeyChord chord = *form::KeyChordOf(step.Get("key"));
  for (int i = 0; i < times; ++i) {
    RequireKeyboard(false);
    PressKey(chord);
    if (i + 1 < times) WaitIdle();
  }
}

void UserPlayer::OnType(const UserStep& step) {
  RequireNoMessage();
  RequireKeyboard(false);
  RequireKeyboard(true);
  TypeText(Wide(step.Get("text")));
}

void UserPlayer::OnWait(const UserStep& step) {
  Sleep(static_cast<DWORD>(std::max(0, step.Number("number"))));
}

void UserPlayer::OnPace(const UserStep& step) {
  pace_ = static_cast<DWORD>(std::max(0, step.Number("number")));
}

bool UserPlayer::Holds(const UserStep& step, std::wstring* shown) {
  *shown = ShownValue(step.Get("path"));
  const std::wstring wanted = Wide(form::ValueText(*form::ScriptValueOf(step.Get("value"))));
  return Meets(*shown, step.Get("sign"), wanted);
}

void UserPlayer::OnWaitUntil(const UserStep& step) {
  const DWORD patience =
      step.Has("within") ? static_cast<DWORD>(std::max(0, step.Number("number"))) : kPatienceMs;
  const ULONGLONG end = GetTickCount64() + patience;
  std::wstring shown;
  while (!Holds(step, &shown)) {
    if (GetTickCount64() >= end) {
      Fail(step.Get("path") + " is still " + Quoted(shown));
    }
    Sleep(kLookMs);
  }
}

void UserPlayer::OnExpect(const UserStep& step) {
  std::wstring shown;
  if (Holds(step, &shown)) return;
  Fail("expected " + step.Get("path") + " " + step.Get("sign") + " " + step.Get("value") +
       ", it is " + Quoted(shown));
}

void UserPlayer::OnSet(const UserStep& step) {
  ActOnForms([this, step] {
    if (scene_.designer()) Fail(std::string("nothing is set") + kDesigned);
    const form::MemberPath path = *form::MemberPathOf(step.Get("path"));
    const Variant value = ValueOf(*form::ScriptValueOf(step.Get("value")));
    const Com<IDispatch> object = ObjectAt(path, path.size() - 1);
    const std::vector<Variant> arguments = ValuesOf(path.back().arguments);
    if (!PutMember(object.get(), Wide(path.back().name), *value.get(), arguments)) {
      Fail("there is no " + step.Get("path"));
    }
  });
}

void UserPlayer::OnCall(const UserStep& step) {
  ActOnForms([this, path = step.Get("path")] {
    if (program().options().design) Fail(std::string("nothing is called") + kDesigned);
    Value(path);
  });
}

void UserPlayer::OnPrint(const UserStep& step) {
  const std::string& printed = step.Get("printed");
  std::wstring text;
  if (printed.starts_with('"')) {
    text = Wide(form::ValueText(*form::ScriptValueOf(printed)));
  } else {
    text = ShownValue(printed);
  }
  OnForms([this, text] { program().PrintLine(text); });
}

}  // namespace qrn::host
