// Fills of the list controls through their windows: what a handler of `Format` may do, and what
// ends a fill by extended operations.
#include "ListFixture.h"
#include "extended/ExOperation.h"

namespace qrn::test {
namespace {

struct ListFills : Lists {
  // Runs for each row; the text may be changed.
  void OnFormat(std::function<void(Bstr& line)> handler) {
    host_->events.answer = [this, handler = std::move(handler)](DISPID id, DISPPARAMS& sent) {
      if (id != formatEvent()) return;
      Bstr line = Bstr::Take(std::exchange(*sent.rgvarg[0].pbstrVal, nullptr));
      handler(line);
      *sent.rgvarg[0].pbstrVal = line.detach();
    };
  }
};

TEST_F(ListFills, AHandlerOfFormatHidesChangesAndEnds) {
  InsertPeople();
  for (const ListClass* each : AllLists()) {
    SCOPED_TRACE(each->name);
    MakeShown(*each);
    OnFormat([&](Bstr& line) {
      if (line == Bstr(L"うめ")) line = Bstr::Empty();
      if (line == Bstr(L"さくら")) line = Bstr(L"桜");
    });
    Say(L"Refresh");
    EXPECT_EQ(Items(), each->extended ? ";;桜;うめだ;" : "桜;うめだ;");
    OnFormat([&](Bstr& line) {
      if (line == Bstr(L"さくら")) Set(L"Abort", Bool(true));
    });
    Say(L"Refresh");
    EXPECT_EQ(Items(), each->extended ? "うめ;;" : "うめ;") << "the row itself does not come";
    OnFormat([](Bstr&) {});
    Say(L"Refresh");
    EXPECT_EQ(host_->Value(L"Abort"), "ok BOOL:0") << "each row begins without it";
  }
}

TEST_F(ListFills, AHandlerOfFormatMayDoAnything) {
  InsertPeople();
  for (const ListClass* each : AllLists()) {
    SCOPED_TRACE(each->name);
    MakeShown(*each);
    // Another fill would write into the row under way: it is left out, here and of other lists.
    OnFormat([&](Bstr&) { Say(L"Reload"); });
    Say(L"Refresh");
    EXPECT_EQ(host_->Value(L"ListCount"), each->extended ? "ok I4:4" : "ok I4:3");
    // Other tables are read, and their records stay where the handler left them.
    OnFormat([&](Bstr& line) {
      PlayedForm form;
      PlayedButton days(office_, form, "Days");
      const Status status = DbButtonRead(office_.engine, BtrOpGetFirst, days);
      line = Bstr(L"status " + std::to_wstring(status));
    });
    Say(L"Refresh");
    EXPECT_EQ(Items().substr(0, 9), "status 9;");
    EXPECT_EQ(host_->Value(L"ListCount"), "ok I4:4") << "a row without a name has one now";
  }
}

TEST_F(ListFills, AHandlerOfFormatMayEndTheForm) {
  InsertPeople();
  for (const ListClass* each : AllLists()) {
    SCOPED_TRACE(each->name);
    MakeShown(*each);
    int rows = 0;
    OnFormat([&](Bstr&) {
      if (++rows == 2) host_->Unhost();
    });
    Say(L"Refresh");
    EXPECT_EQ(rows, 2);
    EXPECT_EQ(list_->contained(), nullptr);
    MakeShown(*each);
    EXPECT_NE(Items(), "") << "others go on filling";
  }
}

TEST_F(ListFills, TheFillOfAWindowBeingMadeMayEndIt) {
  InsertPeople();
  for (const ListClass* each : AllLists()) {
    SCOPED_TRACE(each->name);
    Make(*each);
    OnFormat([&](Bstr&) { host_->Unhost(); });
    EXPECT_NE(host_->Show(), S_OK);
    TheRegistry().NotifyListsReady("Db1", TheForm());
  }
}

TEST_F(ListFills, SeparatorsByKind) {
  InsertPeople();
  const struct {
    const ListClass& which;
    const wchar_t *property, *text;
    const char* first;
  } cases[] = {{kExComboBox, L"DbDelimitChar", L"", "1 うめ Kyoto;"},
               {kExComboBox, L"DbDelimitChar", L"--", "1--うめ--Kyoto;"},
               {kExListBox, L"DbDelimitChar", L"--", "1 うめ Kyoto;"},
               {kExListBox, L"DbTabStops", L"any", "1\tうめ\tKyoto;"}};
  for (const auto& row : cases) {
    Make(row.which);
    Set(L"DbListFields", Text(L"Code,Name,Town"));
    Set(row.property, Text(row.text));
    ASSERT_EQ(host_->Show(), S_OK);
    EXPECT_EQ(Items().substr(0, std::string(row.first).size()), row.first) << row.which.name;
  }
}

TEST_F(ListFills, ConditionsDirectionAndPositions) {
  InsertPeople();
  for (const ListClass* each : {&kExListBox, &kExComboBox}) {
    SCOPED_TRACE(each->name);
    Make(*each);
    Set(L"Sort", Bool(true));
    Set(L"DbSavePosition", Bool(true));
    Set(L"DbListFields", Text(L"Code,Name"));
    Set(L"DbConditions", Text(L"@Town = 'Kyoto'"));
    Set(L"DbExOperation", Long(OpStepPrevEx));
    ASSERT_EQ(host_->Show(), S_OK);
    EXPECT_EQ(Items(), "1 うめ;3 さくら;");
    // Inserted as the first and the second: the file gave lower positions to the earlier.
    const std::string third = Get(host_->object(), L"ItemData", {Long(1)}).Text();
    const std::string first = Get(host_->object(), L"ItemData", {Long(0)}).Text();
    EXPECT_LT(third, first) << "each with its item";
    EXPECT_EQ(Put(host_->object(), L"DbListIndexID", {Long(1)}).Text(), "80020009:800A017F");
    Set(L"DbConditions", Text(L"@Town = 'Tokyo'"));
    Events();
    list_->ReloadList();
    EXPECT_EQ(Items(), "") << "nothing fits, and the end was reached";
    EXPECT_EQ(Events(), "");
  }
}

}  // namespace
}  // namespace qrn::test
