// Check boxes and option buttons through their windows: what they share, and what a click does to
// each.

#include "OfficeFixture.h"
#include "PeopleForm.h"
#include "controls/mark/QRNCheck.h"
#include "controls/mark/QRNOptBtn.h"

namespace qrn::test {
namespace {

using MadeMark = Made<MarkControl>;
struct MarkClass {
  const char* name;
  MadeMark (*make)(const wchar_t* name, bool runs);
  DWORD style;
};
constexpr MarkClass kCheck{"QRNCheck", &test::Make<CQRNCheck, MarkControl>, 0x50000002};
constexpr MarkClass kOption{"QRNOptBtn", &test::Make<CQRNOptBtn, MarkControl>, 0x50000009};
constexpr const MarkClass* kMarkClasses[] = {&kCheck, &kOption};

struct Marks : OfficeFixture {
  // Bound to the town of the office's people.
  MadeMark Make(const MarkClass& which, const wchar_t* name = L"mark1", bool runs = true) {
    MadeMark made = which.make(name, runs);
    Bind(*made.host, L"Town");
    return made;
  }
  MadeMark MakeShown(const MarkClass& which, const wchar_t* name = L"mark1") {
    MadeMark made = Make(which, name);
    EXPECT_EQ(made.host->Show(), S_OK);
    return made;
  }
  // A button of the group that stands for `text`.
  MadeMark MakeChoice(const wchar_t* name, const wchar_t* text, HWND form = nullptr) {
    MadeMark made = Make(kOption, name);
    made.host->Set(L"DbValueTrue", Text(text));
    made.host->Set(L"DbValueFalse", Text(L"none"));
    if (form) made.host->site.form = form;
    EXPECT_EQ(made.host->Show(), S_OK);
    return made;
  }

  void Write(const char* text, HWND form = TheForm()) { OfficeFixture::Write(text, "Town", form); }
  std::string Read() { return OfficeFixture::Read("Town"); }
  static void Click(MarkControl& mark) { SendMessageW(mark.contained(), BM_CLICK, 0, 0); }
  // "value/mark".
  static std::string State(MarkControl& mark) {
    const LRESULT shown = SendMessageW(mark.contained(), BM_GETCHECK, 0, 0);
    return std::to_string(mark.Value) + "/" + std::to_string(shown);
  }
  static int Clicks(HostedControl& host) {
    int clicks = 0;
    for (size_t at = 0; (at = host.events.log.find("-600()", at)) != std::string::npos; ++at) {
      ++clicks;
    }
    host.events.log.clear();
    return clicks;
  }
};

TEST_F(Marks, StartAsTheirTablesSay) {
  for (const MarkClass* each : kMarkClasses) {
    SCOPED_TRACE(each->name);
    const MadeMark fresh = each->make(L"mark1", true);
    constexpr char kStart[] =
        "Caption=BSTR: DbSource=BSTR: DbTable=BSTR: DbField=BSTR: DbValueTrue=BSTR:1 "
        "DbValueFalse=BSTR:0 Value=BOOL:0 Alignment=I4:0 Appearance=I2:0 BackColor=UI4:2147483663 "
        "TabStop=BOOL:-1 ForeColor=UI4:2147483666";
    EXPECT_EQ(fresh.host->Values(kStart), kStart);
  }
  EXPECT_EQ(kCheck.make(L"mark1", true).host->Value(L"DbValueIndeterminate"), "ok BSTR:");
}

TEST_F(Marks, PropertiesBecomeStylesOfTheWindow) {
  for (const MarkClass* each : kMarkClasses) {
    for (const bool runs : {true, false}) {
      SCOPED_TRACE(each->name + std::to_string(runs));
      const MadeMark made = Make(*each, L"mark1", runs);
      made.host->Set(L"Caption", Text(L"在庫"));
      ASSERT_EQ(made.host->Show(), S_OK);
      EXPECT_EQ(GetWindowLongW(made->contained(), GWL_STYLE) & ~WS_TABSTOP, each->style);
      EXPECT_EQ(TextOf(made->contained()), "在庫");
      made.host->Set(L"Caption", Text(L"b"));
      EXPECT_EQ(TextOf(made->contained()), "b");
      made.host->Set(L"Alignment", Long(1));
      made.host->Set(L"Appearance", Short(1));
      const LONG style = GetWindowLongW(made->contained(), GWL_STYLE);
      const LONG exStyle = GetWindowLongW(made->contained(), GWL_EXSTYLE);
      EXPECT_EQ((style & BS_LEFTTEXT) != 0, !runs) << "a running control only stores it";
      EXPECT_EQ((exStyle & WS_EX_CLIENTEDGE) != 0, !runs);
    }
  }
}

TEST_F(Marks, ATextOfTheRecordSetsValueAndMark) {
  const struct {
    const MarkClass& which;
    const wchar_t *marked, *clear, *third;
    const char* text;
    const char* state;  // from "0/0"
  } cases[] = {
      {kCheck, L"1", L"0", L"", "1", "1/1"},     {kCheck, L"1", L"0", L"", "0", "0/0"},
      {kCheck, L"1", L"0", L"", "2", "0/0"},     {kCheck, L"1", L"0", L"", "", "2/1"},
      {kCheck, L"a", L"a", L"", "a", "0/0"},     {kCheck, L"a", L"b", L"a", "a", "2/1"},
      {kCheck, L"Y", L"N", L"?", "y", "0/0"},    {kOption, L"1", L"0", nullptr, "1", "1/1"},
      {kOption, L"1", L"0", nullptr, "", "0/0"}, {kOption, L"a", L"a", nullptr, "a", "0/0"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(std::string(row.which.name) + row.text + row.state);
    const MadeMark made = MakeShown(row.which);
    made.host->Set(L"DbValueTrue", Text(row.marked));
    made.host->Set(L"DbValueFalse", Text(row.clear));
    if (row.third) made.host->Set(L"DbValueIndeterminate", Text(row.third));
    Write(row.text);
    EXPECT_EQ(State(*made.control), row.state);
    const bool taken = std::string_view(row.state) != "0/0";
    if (taken) {
      EXPECT_EQ(Read(), std::string("1:") + row.text);
    }
  }
}

TEST_F(Marks, ATextThatIsNoneOfTheirsLeavesThem) {
  for (const MarkClass* each : kMarkClasses) {
    const MadeMark made = MakeShown(*each);
    Write("1");
    Write("7");
    EXPECT_EQ(State(*made.control), "1/1") << each->name;
  }
}

TEST_F(Marks, ClearingTakesTheMarkAndKeepsTheValue) {
  for (const MarkClass* each : kMarkClasses) {
    SCOPED_TRACE(each->name);
    const MadeMark made = MakeShown(*each);
    Write("1");
    Clear("Town");
    EXPECT_EQ(State(*made.control), "1/0");
    EXPECT_EQ(Read(), "1:1");
  }
}

TEST_F(Marks, ValuePutsTheNumberAlone) {
  for (const MarkClass* each : kMarkClasses) {
    SCOPED_TRACE(each->name);
    const MadeMark made = MakeShown(*each);
    made.host->Set(L"Value", Bool(true));
    EXPECT_EQ(State(*made.control), "-1/0");
    EXPECT_EQ(Read(), each == &kCheck ? "0:kept" : "1:1");
  }
}

// What a record says, then what each of three clicks makes of it.
TEST_F(Marks, ClicksOnACheckBox) {
  const struct {
    const char* text;
    const char* states[4];
    const char* reads[4];
  } cases[] = {
      {"1", {"1/1", "-1/1", "0/0", "-1/1"}, {"1:1", "0:kept", "1:0", "0:kept"}},
      {"0", {"0/0", "-1/1", "0/0", "-1/1"}, {"1:0", "0:kept", "1:0", "0:kept"}},
      {"", {"2/1", "-1/1", "0/0", "-1/1"}, {"1:", "0:kept", "1:0", "0:kept"}},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(row.text);
    const MadeMark made = MakeShown(kCheck);
    Write(row.text);
    Clicks(*made.host);
    for (int click = 0; click < 4; ++click) {
      EXPECT_EQ(State(*made.control), row.states[click]) << click;
      EXPECT_EQ(Read(), row.reads[click]) << click;
      Click(*made.control);
      EXPECT_EQ(Clicks(*made.host), 1);
    }
  }
}

TEST_F(Marks, TheChosenOptionHoldsZeroAndTheOthersLoseTheirMarkAlone) {
  const Window other;
  const MadeMark kyoto = MakeChoice(L"opt1", L"Kyoto");
  const MadeMark nara = MakeChoice(L"opt2", L"Nara");
  const MadeMark away = MakeChoice(L"opt1", L"Nara", other.get());
  const MadeMark stranger = MakeChoice(L"opt3", L"Nara");
  stranger.host->Set(L"DbTable", Text(L"people"));
  Write("Nara", other.get());
  Write("Nara");
  EXPECT_EQ(State(*kyoto.control) + State(*nara.control) + State(*away.control), "0/01/11/1");
  EXPECT_EQ(Read(), "3:Nara") << "the one registered last";
  Clicks(*nara.host);
  Click(*kyoto.control);
  EXPECT_EQ(State(*kyoto.control), "0/1");
  EXPECT_EQ(State(*nara.control), "1/0");
  EXPECT_EQ(State(*away.control), "1/0") << "on another form";
  EXPECT_EQ(State(*stranger.control), "1/1") << "its table has another name";
  EXPECT_EQ(Clicks(*kyoto.host), 1) << "the focus that comes with the mouse is no click";
  EXPECT_EQ(Clicks(*nara.host), 0);
}

TEST_F(Marks, FocusChoosesNothing) {
  const MadeMark kyoto = MakeChoice(L"opt1", L"Kyoto");
  const MadeMark nara = MakeChoice(L"opt2", L"Nara");
  Write("Nara");
  Clicks(*kyoto.host);
  SetFocus(kyoto->hwnd());
  EXPECT_EQ(GetFocus(), kyoto->contained());
  EXPECT_EQ(State(*kyoto.control) + " " + State(*nara.control), "0/0 1/1");
  EXPECT_EQ(Clicks(*kyoto.host), 0);
  SetFocus(TheForm());
}

TEST_F(Marks, TheSpaceBarClicks) {
  for (const MarkClass* each : kMarkClasses) {
    SCOPED_TRACE(each->name);
    const MadeMark made = MakeShown(*each);
    SetFocus(made->hwnd());
    EXPECT_EQ(made.host->Offer(WM_KEYDOWN, VK_SPACE), S_FALSE) << "the window's";
    SendMessageW(made->contained(), WM_KEYDOWN, VK_SPACE, 0x390001);
    SendMessageW(made->contained(), WM_KEYUP, VK_SPACE, LPARAM(0xC0390001));
    EXPECT_EQ(State(*made.control), each == &kCheck ? "-1/1" : "0/1");
    EXPECT_EQ(Clicks(*made.host), 1);
    EXPECT_EQ(made.host->Offer(WM_KEYDOWN, VK_TAB), S_FALSE) << "the container's";
    SetFocus(TheForm());
  }
}

TEST_F(Marks, TheKeyOfTheCaptionClicks) {
  for (const MarkClass* each : kMarkClasses) {
    SCOPED_TRACE(each->name);
    const MadeMark made = MakeShown(*each);
    made.host->Set(L"Caption", Text(L"在庫(&Z)"));
    const auto control = com::Query<IOleControl>(&made->Outer());
    CONTROLINFO info{sizeof info, nullptr, 0, 0};
    ASSERT_EQ(control->GetControlInfo(&info), S_OK);
    ACCEL key{};
    ASSERT_EQ(CopyAcceleratorTableW(info.hAccel, &key, 1), 1);
    EXPECT_EQ(key.key, 'Z');
    MSG pressed{made->contained(), WM_SYSCHAR, 'z', 0, 0, {}};
    EXPECT_EQ(control->OnMnemonic(&pressed), S_OK);
    EXPECT_EQ(State(*made.control), each == &kCheck ? "-1/1" : "0/1");
    EXPECT_EQ(Clicks(*made.host), 1);
    SetFocus(TheForm());
  }
}

TEST_F(Marks, ArrowsChooseWithinTheGroup) {
  const Window other;
  const MadeMark away = MakeChoice(L"opt0", L"Osaka", other.get());
  const MadeMark first = MakeChoice(L"opt1", L"Kyoto");
  const MadeMark off = MakeChoice(L"opt2", L"Tokyo");
  const MadeMark last = MakeChoice(L"opt3", L"Nara");
  off.host->Set(L"Enabled", Bool(false));
  const struct {
    WPARAM key;
    const MadeMark& from;
    const MadeMark& to;
  } cases[] = {{VK_DOWN, first, last},
               {VK_RIGHT, last, first},
               {VK_UP, first, last},
               {VK_LEFT, last, first}};
  for (const auto& row : cases) {
    SetFocus(row.from->hwnd());
    Clicks(*row.to.host);
    EXPECT_EQ(row.from.host->Offer(WM_KEYDOWN, row.key), S_OK) << row.key;
    EXPECT_EQ(GetFocus(), row.to->contained()) << row.key;
    EXPECT_EQ(State(*row.to.control), "0/1") << row.key;
    EXPECT_EQ(Clicks(*row.to.host), 1) << row.key;
    EXPECT_EQ(State(*row.from.control).substr(1), "/0") << row.key;
  }
  EXPECT_EQ(away.host->Offer(WM_KEYDOWN, VK_DOWN), S_FALSE) << "alone on its form";
  EXPECT_EQ(State(*away.control), "0/0");
  SetFocus(TheForm());
}

TEST_F(Marks, NoticesOfTheWindowAreEvents) {
  for (const MarkClass* each : kMarkClasses) {
    const MadeMark made = MakeShown(*each);
    made.host->events.log.clear();
    const auto notify = [&](WORD notice) {
      SendMessageW(made->hwnd(), WM_COMMAND, MAKEWPARAM(0, notice),
                   reinterpret_cast<LPARAM>(made->contained()));
    };
    notify(BN_DOUBLECLICKED);
    notify(BN_SETFOCUS);
    EXPECT_EQ(made.host->events.log, "-601() ") << each->name;
  }
}

// A handler of `Click` that ends the control, its window or all of it.
TEST_F(Marks, AHandlerMayEndTheControl) {
  for (const MarkClass* each : kMarkClasses) {
    for (const bool whole : {false, true}) {
      MadeMark made = MakeShown(*each);
      made.host->events.answer = [&](DISPID id, DISPPARAMS&) {
        if (id == ole::stock::kClick) whole ? made.host->Drop() : made.host->Unhost();
      };
      Click(*made.control);
      EXPECT_NE(made.host->events.log.find("-600()"), std::string::npos) << each->name;
      EXPECT_EQ(Read(), "0:kept") << "it is registered no longer";
    }
  }
}

}  // namespace
}  // namespace qrn::test
