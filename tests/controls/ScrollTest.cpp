// The record scroll bars through their windows: the place of the thumb, every notice of the bar,
// its ends, and what other controls tell.

#include "ButtonFixture.h"
#include "PeopleForm.h"
#include "SystemCalls.h"
#include "controls/scroll/QRNScroll.h"
#include "tests/support/MadeDatabase.h"

namespace qrn::test {
namespace {

using MadeBar = Made<RecordBar>;
struct BarClass {
  const char* name;
  MadeBar (*make)(const wchar_t* name, bool runs);
  DWORD style;
  UINT message;
};
constexpr BarClass kHorizontal{"QRNHScroll", &test::Make<CQRNHScroll, RecordBar>, 0x54000000,
                               WM_HSCROLL};
constexpr BarClass kVertical{"QRNVScroll", &test::Make<CQRNVScroll, RecordBar>, 0x54000001,
                             WM_VSCROLL};
constexpr const BarClass* kBarClasses[] = {&kHorizontal, &kVertical};

struct Bars : Button {
  // So many more people, with the next codes from 1 on; their names run the other way.
  void InsertPeople(int count) {
    for (int i = 0; i < count; ++i) {
      Insert({{"Code", std::to_string(++inserted_)}, {"Name", "n" + std::to_string(count - i)}});
    }
  }
  void Make(const BarClass& which, bool autoFirst = true) {
    made_.host.reset();
    which_ = &which;
    made_ = which.make(L"scr2", true);
    Bind(*made_.host);
    made_.host->Set(L"DbIndex", Text(L"ByCode"));
    made_.host->Set(L"AutoFirst", Bool(autoFirst));
  }
  void MakeShown(const BarClass& which, bool autoFirst = true) {
    Make(which, autoFirst);
    ASSERT_EQ(made_.host->Show(), S_OK);
    made_.host->events.log.clear();
  }
  HostedControl& host() { return *made_.host; }
  RecordBar& bar() { return *made_.control; }

  // The bar's own notice.
  void Send(WORD notice, WORD thumb = 0) {
    SendMessageW(bar().hwnd(), which_->message, MAKEWPARAM(notice, thumb),
                 reinterpret_cast<LPARAM>(bar().contained()));
  }
  // "code thumb value events" after a notice; the events are the bar's.
  std::string After(WORD notice, WORD thumb = 0) {
    host().events.log.clear();
    Send(notice, thumb);
    return TextOf(code_.window()) + " " + Place() + " " + host().events.log;
  }
  // "thumb value".
  std::string Place() {
    return std::to_string(GetScrollPos(bar().contained(), SB_CTL)) + " " +
           std::to_string(bar().Value);
  }
  std::string Range() {
    int least = -1;
    int most = -1;
    GetScrollRange(bar().contained(), SB_CTL, &least, &most);
    return std::to_string(least) + ".." + std::to_string(most);
  }
  // Brings the bar to a record by the bar itself.
  void GoTo(int code) {
    Send(SB_TOP);
    for (int i = 1; i < code; ++i) Send(SB_LINEDOWN);
    ASSERT_EQ(TextOf(code_.window()), std::to_string(code));
  }

  int inserted_ = 0;
  const BarClass* which_ = nullptr;
  MadeBar made_{};
};

TEST_F(Bars, StartAsTheirTablesSay) {
  for (const BarClass* each : kBarClasses) {
    SCOPED_TRACE(each->name);
    const MadeBar fresh = each->make(L"scr2", true);
    constexpr char kStart[] =
        "DbSource=BSTR: DbIndex=BSTR: LargeChange=I4:1 SmallChange=I4:1 Max=I4:32767 Min=I4:0 "
        "Value=I4:0 AutoFirst=BOOL:-1 Enabled=BOOL:-1 TabStop=BOOL:-1 MousePointer=I4:0";
    EXPECT_EQ(fresh.host->Values(kStart), kStart);
    ASSERT_EQ(fresh.host->Show(), S_OK);
    EXPECT_EQ(GetWindowLongW(fresh->contained(), GWL_STYLE), LONG(each->style));
    EXPECT_EQ(GetWindowLongW(fresh->contained(), GWL_EXSTYLE), 0);
    fresh.host->Set(L"Enabled", Bool(false));
    EXPECT_FALSE(IsWindowEnabled(fresh->contained()));
  }
}

TEST_F(Bars, TakeTheirRangeFromTheNumberOfRecords) {
  struct Case {
    int records;  // so many more
    const char* range;
  };
  for (const Case& row : {Case{1, "10000..10000"}, {2, "3333..10000"}, {297, "33..10000"}}) {
    InsertPeople(row.records);
    for (const BarClass* each : kBarClasses) {
      MakeShown(*each);
      EXPECT_EQ(Range(), row.range);
      EXPECT_EQ(host().Value(L"Max"), "ok I4:10000");
      EXPECT_EQ(TextOf(code_.window()), "1") << "the first record";
      EXPECT_EQ(Place().substr(Place().find(' ')), " 0") << "attaching leaves the value";
    }
  }
}

TEST_F(Bars, WithoutAutoFirstTheRecordStays) {
  InsertPeople(3);
  MakeShown(kHorizontal, false);
  EXPECT_EQ(TextOf(code_.window()), "");
  EXPECT_EQ(Range(), "3333..10000");
}

TEST_F(Bars, AnEmptyTableTellsOfItsEnd) {
  Messages messages;
  PlayedMessageBox box(IDOK);
  Make(kVertical);
  ASSERT_EQ(host().Show(), S_OK);
  EXPECT_EQ(host().events.log, "1(BSTR:People,I2&:9) ");
  EXPECT_EQ(Range(), "0..10000");
  EXPECT_NE(messages.Take(), "") << "there is no place to ask for";
  // Without a record there is no next one: the record manager knows no place to go on from.
  const struct {
    WORD notice;
    int status;
    const char* message;
  } cases[] = {{SB_LINEDOWN, 8, ""},          {SB_LINEUP, 8, ""}, {SB_PAGEDOWN, 8, "VE816"},
               {SB_PAGEUP, 8, "VE816"},       {SB_TOP, 9, ""},    {SB_BOTTOM, 9, ""},
               {SB_THUMBPOSITION, 0, "VE817"}};
  for (const auto& row : cases) {
    SCOPED_TRACE(row.notice);
    const int boxes = box.calls;
    const std::string event = "1(BSTR:People,I2&:" + std::to_string(row.status) + ") ";
    EXPECT_EQ(After(row.notice, 5000), " 0 0 " + (row.status != 0 ? event : std::string()));
    EXPECT_EQ(box.calls - boxes, row.status != 0 ? 1 : 0);
    EXPECT_EQ(messages.Take().substr(0, 5), row.message);
  }
}

// A step of the bar's range would be less than a hundredth of a percent: it begins at 0.
TEST_F(Bars, AboveTenThousandRecordsTheRangeBeginsAtZero) {
  FillTable(office_.Directory(), "People", 20000, [](int number) {
    return qrndata::FieldValues{std::to_string(number + 1), {}, {}, {}};
  });
  for (const BarClass* each : kBarClasses) {
    MakeShown(*each);
    EXPECT_EQ(Range(), "0..10000");
    EXPECT_EQ(host().Value(L"Min"), "ok I4:0");
    EXPECT_EQ(After(SB_BOTTOM), "20000 10000 10000 2() ");
    EXPECT_EQ(After(SB_LINEUP), "19999 9999 9999 2() ");
    EXPECT_EQ(After(SB_THUMBPOSITION, 5000), "10001 5000 5000 3() ");
    CallMethod(host().object(), L"Refresh", {});
    EXPECT_EQ(TextOf(code_.window()) + " " + Place() + " " + Range(), "1 0 0 0..10000");
  }
}

TEST_F(Bars, EveryNoticeFromTheMiddle) {
  InsertPeople(5);
  const struct {
    WORD notice, thumb;
    const char* after;  // from record 3 of 5, at 5000
  } cases[] = {
      {SB_LINEUP, 0, "2 2500 2500 2() "},
      {SB_LINEDOWN, 0, "4 7500 7500 2() "},
      {SB_PAGEUP, 0, "2 2500 2500 2() "},
      {SB_PAGEDOWN, 0, "4 7500 7500 2() "},
      {SB_TOP, 0, "1 2000 0 2() "},
      {SB_BOTTOM, 0, "5 10000 10000 2() "},
      {SB_THUMBPOSITION, 7400, "4 7400 7400 3() "},
      {SB_THUMBPOSITION, 10000, "5 10000 10000 3() "},
      {SB_THUMBTRACK, 7400, "3 5000 5000 "},
      {SB_ENDSCROLL, 0, "3 5000 5000 "},
      {99, 0, "3 5000 5000 "},
  };
  for (const BarClass* each : kBarClasses) {
    MakeShown(*each);
    for (const auto& row : cases) {
      GoTo(3);
      EXPECT_EQ(After(row.notice, row.thumb), row.after) << each->name << row.notice;
    }
  }
}

TEST_F(Bars, TheEndsAreToldWithTheirStatus) {
  InsertPeople(5);
  const struct {
    int from;
    WORD notice;
    const char* after;
  } cases[] = {
      {1, SB_LINEUP, "1 2000 0 1(BSTR:People,I2&:9) "},
      {1, SB_PAGEUP, "1 2000 0 1(BSTR:People,I2&:9) "},
      {5, SB_LINEDOWN, "5 10000 10000 1(BSTR:People,I2&:9) "},
      {5, SB_PAGEDOWN, "5 10000 10000 1(BSTR:People,I2&:9) "},
  };
  for (const BarClass* each : kBarClasses) {
    MakeShown(*each);
    for (const auto& row : cases) {
      GoTo(row.from);
      PlayedMessageBox box(IDOK);
      EXPECT_EQ(After(row.notice), row.after) << each->name << row.notice;
      EXPECT_EQ(box.calls, 1);
      EXPECT_EQ(box.title, L"");
      EXPECT_EQ(box.owner, bar().hwnd());
      EXPECT_FALSE(box.text.empty());
      host().events.answer = [](DISPID id, DISPPARAMS& sent) {
        if (id == kBtrieveError) *sent.rgvarg[0].piVal = 0;
      };
      Send(row.notice);
      EXPECT_EQ(box.calls, 1) << "the handler has dealt with it";
      host().events.answer = nullptr;
    }
  }
}

// One step times LargeChange from where the bar stood; a place outside goes to the end.
TEST_F(Bars, PagesAreStepsTimesLargeChange) {
  InsertPeople(11);
  const struct {
    int32_t large;
    int from;
    WORD notice;
    const char* after;
  } cases[] = {
      {3, 5, SB_PAGEDOWN, "8 7000 7000 2() "},
      {3, 5, SB_PAGEUP, "2 1000 1000 2() "},
      {1, 5, SB_PAGEDOWN, "6 5000 5000 2() "},
      {0, 5, SB_PAGEDOWN, "6 5000 5000 2() "},
      {-3, 5, SB_PAGEUP, "4 3000 3000 2() "},
      {3, 10, SB_PAGEDOWN, "11 10000 10000 2() "},
      {3, 2, SB_PAGEUP, "1 909 0 2() "},
      {40000, 5, SB_PAGEDOWN, "11 10000 10000 2() "},
      {40000, 5, SB_PAGEUP, "1 909 0 2() "},
      {0x7FFFFFFF, 5, SB_PAGEDOWN, "11 10000 10000 2() "},
      {0x7FFFFFFF, 5, SB_PAGEUP, "1 909 0 2() "},
  };
  MakeShown(kHorizontal);
  for (const auto& row : cases) {
    SCOPED_TRACE(std::to_string(row.large) + " " + std::to_string(row.from));
    host().Set(L"LargeChange", Long(row.large));
    host().Set(L"SmallChange", Long(7));
    GoTo(row.from);
    EXPECT_EQ(After(row.notice), row.after);
  }
}

TEST_F(Bars, NamesThatLeadNowhereAreSilentAtFirst) {
  InsertPeople(2);
  for (const wchar_t* name : {L"DbSource", L"DbTable"}) {
    Messages messages;
    Make(kVertical);
    host().Set(name, Text(L"nothing"));
    ASSERT_EQ(host().Show(), S_OK);
    EXPECT_EQ(messages.Take(), "");
    for (const WORD notice : {SB_LINEUP, SB_PAGEDOWN, SB_THUMBPOSITION, SB_BOTTOM}) {
      Send(notice);
      EXPECT_EQ(messages.Take().substr(0, 5), "VE802");
    }
    for (const WORD notice : {SB_THUMBTRACK, SB_ENDSCROLL}) {
      Send(notice);
      EXPECT_EQ(messages.Take(), "");
    }
    CallMethod(host().object(), L"Refresh", {});
    EXPECT_EQ(messages.Take().substr(0, 5), "VE802");
    EXPECT_EQ(host().events.log, "");
  }
}

TEST_F(Bars, AreAttachedWhenTheDatabaseIsReady) {
  InsertPeople(4);
  Make(kVertical);
  host().Set(L"DbSource", Text(L"Db2"));
  ASSERT_EQ(host().Show(), S_OK);
  EXPECT_EQ(TextOf(code_.window()), "");
  host().Set(L"DbSource", Text(L"Db1"));
  TheRegistry().NotifyNavReady("Db2", TheForm());
  EXPECT_EQ(TextOf(code_.window()), "") << "it has left that source";
  TheRegistry().NotifyNavReady("Db1", TheForm());
  EXPECT_EQ(TextOf(code_.window()), "1");
  EXPECT_EQ(Range(), "2500..10000");
  office_.Close("People");
  TheRegistry().NotifyNavReady("Db1", TheForm());
  EXPECT_EQ(After(SB_BOTTOM), "4 10000 10000 2() ") << "a closed table was opened";
}

TEST_F(Bars, AClosedTableRaisesNoError) {
  InsertPeople(2);
  MakeShown(kVertical);
  office_.Close("People");
  Messages messages;
  host().events.log.clear();
  Send(SB_LINEDOWN);
  EXPECT_EQ(host().events.log, "2() ");
  EXPECT_EQ(messages.Take().substr(0, 5), "VE816");
}

TEST_F(Bars, RefreshGoesToTheFirstOrLooksWhereItIs) {
  InsertPeople(5);
  for (const wchar_t* method : {L"Refresh", L"Reload"}) {
    MakeShown(kHorizontal);
    GoTo(3);
    CallMethod(host().object(), method, {});
    EXPECT_EQ(TextOf(code_.window()) + " " + Place(), "1 2000 2000");
    host().Set(L"AutoFirst", Bool(false));
    host().Set(L"Max", Long(8000));
    GoTo(3);
    bar().ShowPlace(9000);
    CallMethod(host().object(), method, {});
    EXPECT_EQ(TextOf(code_.window()) + " " + Place() + " " + Range(), "3 5000 5000 2000..8000");
  }
}

TEST_F(Bars, FollowButtonsAndEachOther) {
  InsertPeople(5);
  const MadeBar other = kVertical.make(L"scr3", true);
  Bind(*other.host);
  other.host->Set(L"DbIndex", Text(L"ByCode"));
  ASSERT_EQ(other.host->Show(), S_OK);
  const MadeBar byName = kVertical.make(L"scr4", true);
  Bind(*byName.host);
  byName.host->Set(L"DbIndex", Text(L"ByName"));
  ASSERT_EQ(byName.host->Show(), S_OK);
  MakeShown(kHorizontal);
  GoTo(4);
  EXPECT_EQ(other->Value, 7500);
  EXPECT_EQ(byName->Value, 0) << "another key";
  EXPECT_EQ(TextOf(code_.window()), "4");
  button_.Set(L"DbIndex", Text(L"ByCode"));
  Click(DbGetFirst);
  Click(DbGetNext);
  EXPECT_EQ(TextOf(code_.window()), "2") << "the bars leave the record as it is";
  EXPECT_EQ(bar().Value, 2500);
  EXPECT_EQ(other->Value, 2500);
  EXPECT_EQ(host().Value(L"AutoFirst"), "ok BOOL:-1");
  EXPECT_EQ(After(SB_LINEDOWN).substr(0, 2), "3 ") << "from where the button went";
}

// The container's loop asks the control first: what is the bar's own goes to its window.
TEST_F(Bars, KeysWorkTheBar) {
  InsertPeople(5);
  const struct {
    WPARAM key;
    const char* code;  // from 3
  } cases[] = {{VK_UP, "2"},    {VK_DOWN, "4"}, {VK_LEFT, "2"}, {VK_RIGHT, "4"},
               {VK_PRIOR, "2"}, {VK_NEXT, "4"}, {VK_HOME, "1"}, {VK_END, "5"}};
  for (const BarClass* each : kBarClasses) {
    MakeShown(*each);
    SetFocus(bar().hwnd());
    EXPECT_EQ(GetFocus(), bar().contained());
    for (const auto& row : cases) {
      GoTo(3);
      MSG key{bar().contained(), WM_KEYDOWN, row.key, 1, 0, {}};
      if (host().Offer(key) != S_OK) DispatchMessageW(&key);
      RunMessages();
      EXPECT_EQ(TextOf(code_.window()), row.code) << each->name << row.key;
    }
    host().site.log.clear();
    EXPECT_EQ(host().Offer(WM_KEYDOWN, VK_TAB), S_FALSE);
    EXPECT_NE(host().site.log, "") << "the container is asked for the key that leaves";
    SetFocus(TheForm());
  }
}

// A handler that ends the bar in the middle of a move.
TEST_F(Bars, AHandlerMayEndTheControl) {
  InsertPeople(3);
  const struct {
    WORD notice;
    DISPID event;
  } cases[] = {{SB_LINEDOWN, 2}, {SB_THUMBPOSITION, 3}, {SB_LINEUP, 1}};
  for (const auto& row : cases) {
    for (const bool whole : {false, true}) {
      Messages messages;
      PlayedMessageBox box(IDOK);
      MakeShown(kVertical);
      int raised = 0;
      host().events.answer = [&](DISPID id, DISPPARAMS&) {
        if (id != row.event || raised++ > 0) return;
        whole ? host().Drop() : host().Unhost();
      };
      SendMessageW(bar().hwnd(), WM_VSCROLL, MAKEWPARAM(row.notice, 5000),
                   reinterpret_cast<LPARAM>(bar().contained()));
      EXPECT_EQ(raised, 1) << row.notice;
      EXPECT_EQ(box.calls, 0) << "nobody is there to be told";
      EXPECT_EQ(messages.Take(), "");
    }
  }
}

}  // namespace
}  // namespace qrn::test
