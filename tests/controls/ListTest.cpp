// What the four list controls have in common, tried on each of them: when they fill, what the
// application does with their items, how a choice goes into the record and back.
#include "ListFixture.h"
#include "core/DictionaryLookup.h"

namespace qrn::test {
namespace {

constexpr const char* kInvalidIndex = "80020009:800A017D";
constexpr const char* kReadOnly = "80020009:800A017F";

// The names along ByCode. The batched fill adds the row without a name too.
std::string Names(const ListClass& which) {
  return which.extended ? "うめ;;さくら;うめだ;" : "うめ;さくら;うめだ;";
}

TEST_F(Lists, StartAsTheirTablesSay) {
  for (const ListClass* each : AllLists()) {
    SCOPED_TRACE(each->name);
    Make(*each);
    const MadeList fresh = each->make(L"lst2", true);
    const std::string start =
        std::string(
            "DbSource=BSTR: DbListTable=BSTR: DbUpdateOption=I4:1 Sort=BOOL:0 Abort=BOOL:0 "
            "Appearance=I2:1 ListCount=I4:0 ListIndex=I4:-1 Text=BSTR: "
            "BackColor=UI4:2147483653 IntegralHeight=BOOL:") +
        (each->extended ? "-1 DbSkipRecords=I2:100 DbMaxRecords=I4:300 DbExOperation=I4:1" : "0");
    EXPECT_EQ(fresh.host->Values(start), start);
  }
}

TEST_F(Lists, PropertiesBecomeStylesOfTheWindow) {
  const struct {
    const ListClass& which;
    const wchar_t* name;
    VARIANT value;
    DWORD style;
  } cases[] = {
      {kListBox, L"Sort", Bool(false), 0x54A00181},
      {kListBox, L"Sort", Bool(true), 0x54A00183},
      {kExListBox, L"Sort", Bool(false), 0x54A00081},
      {kListBox, L"BorderStyle", Long(0), 0x54200181},
      {kComboBox, L"Style", Long(0), 0x56200C42},
      {kComboBox, L"Style", Long(1), 0x56200C41},
      {kComboBox, L"Style", Long(2), 0x56200C03},
      {kComboBox, L"Sort", Bool(true), 0x56200D42},
      {kExComboBox, L"Style", Long(0), 0x56200842},
      {kComboBox, L"Style", Long(7), 0x56200C00},
  };
  // What a window adds to its style, or takes from it, by itself.
  constexpr DWORD kSystems = CBS_HASSTRINGS | LBS_HASSTRINGS | WS_BORDER | WS_VSCROLL;
  for (const auto& row : cases) {
    SCOPED_TRACE(row.which.name + std::to_string(row.style));
    Make(row.which);
    Set(row.name, row.value);
    ASSERT_EQ(host_->Show(), S_OK);
    const auto style = static_cast<DWORD>(GetWindowLongW(window(), GWL_STYLE));
    EXPECT_EQ(style | kSystems, row.style | kSystems) << std::hex << style;
    const LONG exStyle = GetWindowLongW(window(), GWL_EXSTYLE);
    EXPECT_TRUE(row.which.combo || (exStyle & WS_EX_CLIENTEDGE) != 0);
  }
}

TEST_F(Lists, InTheDesignerALookMakesTheWindowAnew) {
  const struct {
    const wchar_t* name;
    VARIANT value;
    bool remade;  // of a list box
    bool remadeCombo;
  } cases[] = {{L"Appearance", Short(0), true, true},
               {L"IntegralHeight", Bool(true), true, false},
               {L"Sort", Bool(true), false, false}};
  for (const ListClass* each : AllLists()) {
    for (const bool runs : {false, true}) {
      Make(*each, runs);
      ASSERT_EQ(host_->Show(), S_OK);
      for (const auto& row : cases) {
        // An item tells whether the window is still the one it was put into.
        list_->Items().Add(L"put");
        Set(row.name, row.value);
        const bool remade = !runs && (each->combo ? row.remadeCombo : row.remade);
        EXPECT_EQ(list_->GetListCount() == 0, remade) << each->name << runs;
      }
    }
  }
}

TEST_F(Lists, FillWhenTheirOptionSaysSo) {
  InsertPeople();
  struct Case {
    int32_t option;
    const char* filled;  // when: c made, r database ready, f focus
  };
  for (const ListClass* each : AllLists()) {
    for (const Case& row : {Case{0, ""}, {1, "cr"}, {2, "rf"}, {3, "r"}, {0x10001, "r"}}) {
      SCOPED_TRACE(each->name + std::to_string(row.option));
      Make(*each);
      Set(L"DbUpdateOption", Long(row.option));
      std::string filled;
      ASSERT_EQ(host_->Show(), S_OK);
      if (!Items().empty()) filled += 'c';
      Say(L"Clear");
      TheRegistry().NotifyListsReady("Db1", TheForm());
      if (!Items().empty()) filled += 'r';
      Say(L"Clear");
      SetFocus(list_->hwnd());
      if (!Items().empty()) filled += 'f';
      EXPECT_EQ(filled, row.filled);
      EXPECT_EQ(Say(L"Refresh"), "ok EMPTY");
      EXPECT_EQ(Items(), Names(*each));
      Say(L"AddItem", {Text(L"more"), Missing()});
      EXPECT_EQ(Say(L"Reload"), "ok EMPTY");
      EXPECT_EQ(Items(), Names(*each)) << "reloading empties the list first";
      SetFocus(TheForm());
    }
  }
}

TEST_F(Lists, AnIndexThatWasNeverPutLeavesOnlyTheListBoxEmpty) {
  InsertPeople();
  for (const ListClass* each : AllLists()) {
    SCOPED_TRACE(each->name);
    MakeShown(*each);
    for (const VARIANT index : {Text(L""), Text(L"NoSuchKey")}) {
      Set(L"DbListIndex", index);
      Say(L"Refresh");
      EXPECT_EQ(Items(), Names(*each)) << "the first key";
    }
    Set(L"DbListIndex", Text(L"ByName"));
    Say(L"Refresh");
    EXPECT_EQ(Items(), each->extended ? ";うめ;うめだ;さくら;" : "うめ;うめだ;さくら;");
    list_->DbListIndex = ole::Bstr();
    Say(L"Refresh");
    EXPECT_EQ(Items(), each == &kListBox ? "" : Names(*each));
  }
}

TEST_F(Lists, NamesThatLeadNowhereLeaveTheListAsItIs) {
  InsertPeople();
  for (const ListClass* each : AllLists()) {
    for (const wchar_t* name : {L"DbListSource", L"DbListTable"}) {
      SCOPED_TRACE(each->name);
      MakeShown(*each);
      Events();
      Set(name, Text(L"nothing"));
      list_->ReloadList();
      EXPECT_EQ(Items(), Names(*each));
      Say(L"Refresh");
      EXPECT_EQ(Items(), "") << "it empties the list before it looks";
      EXPECT_EQ(Events(), "");
    }
  }
}

TEST_F(Lists, AClosedTableIsOpened) {
  InsertPeople();
  for (const ListClass* each : AllLists()) {
    office_.Close("People");
    MakeShown(*each);
    EXPECT_EQ(Items(), Names(*each)) << each->name;
  }
}

TEST_F(Lists, ATableWithoutRecordsKeepsTheOldItems) {
  for (const ListClass* each : AllLists()) {
    SCOPED_TRACE(each->name);
    MakeShown(*each);
    Events();
    Say(L"AddItem", {Text(L"old"), Missing()});
    list_->ReloadList();
    EXPECT_EQ(Items(), "old;");
    EXPECT_EQ(Events(), each->extended ? "1(BSTR:People,I2&:9) " : "");
  }
}

TEST_F(Lists, ItemsAreTheApplications) {
  for (const ListClass* each : AllLists()) {
    SCOPED_TRACE(each->name);
    MakeShown(*each);
    EXPECT_EQ(Say(L"AddItem", {Text(L"b"), Missing()}), "ok I4:0");
    EXPECT_EQ(Say(L"AddItem", {Text(L"a"), Long(0)}), "ok I4:0");
    EXPECT_EQ(Say(L"AddItem", {Text(L"d"), Text(L"2")}), "ok I4:2") << "a text that is a number";
    EXPECT_EQ(Say(L"AddItem", {Text(L"x"), Long(9)}), "ok I4:-1");
    EXPECT_EQ(Say(L"AddItem", {Text(L"x"), Text(L"word")}), "80020005");
    EXPECT_EQ(Items(), "a;b;d;");
    EXPECT_EQ(Put(host_->object(), L"List", {Long(2), Text(L"c")}).Text(), "ok EMPTY");
    EXPECT_EQ(Put(host_->object(), L"List", {Long(3), Text(L"d")}).Text(), "ok EMPTY");
    EXPECT_EQ(Put(host_->object(), L"List", {Long(5), Text(L"x")}).Text(), "ok EMPTY");
    EXPECT_EQ(Put(host_->object(), L"List", {Long(-1), Text(L"x")}).Text(), "ok EMPTY");
    EXPECT_EQ(Items(), "a;b;c;d;");
    EXPECT_EQ(Get(host_->object(), L"List", {Long(3)}).Text(), "ok BSTR:d");
    for (const int32_t none : {4, 99, -1}) {
      EXPECT_EQ(Get(host_->object(), L"List", {Long(none)}).Text(), kInvalidIndex) << none;
    }
    EXPECT_EQ(host_->Value(L"ListCount"), "ok I4:4");
    EXPECT_EQ(Put(host_->object(), L"ListCount", {Long(1)}).Text(), kReadOnly);
    Set(L"ListIndex", Long(2));
    EXPECT_EQ(host_->Value(L"ListIndex"), "ok I4:2");
    EXPECT_EQ(host_->Value(L"Text"), "ok BSTR:c");
    for (const int32_t none : {4, -1, -7}) {
      Set(L"ListIndex", Long(1));
      Set(L"ListIndex", Long(none));
      EXPECT_EQ(host_->Value(L"ListIndex"), "ok I4:-1") << none;
    }
    EXPECT_EQ(Say(L"RemoveItem", {Long(0)}), "ok I4:3");
    EXPECT_EQ(Say(L"RemoveItem", {Long(9)}), "ok I4:-1");
    EXPECT_EQ(Items(), "b;c;d;");
    Say(L"Clear");
    EXPECT_EQ(Items(), "");
  }
}

TEST_F(Lists, ItemDataStaysWithItsItem) {
  for (const ListClass* each : {&kListBox, &kExListBox, &kExComboBox}) {
    SCOPED_TRACE(each->name);
    Make(*each);
    Set(L"Sort", Bool(true));
    ASSERT_EQ(host_->Show(), S_OK);
    Say(L"AddItem", {Text(L"b"), Missing()});
    EXPECT_EQ(Put(host_->object(), L"ItemData", {Long(0), Long(77)}).Text(), "ok EMPTY");
    EXPECT_EQ(Say(L"AddItem", {Text(L"a"), Missing()}), "ok I4:0") << "sorted";
    EXPECT_EQ(Get(host_->object(), L"ItemData", {Long(1)}).Text(), "ok I4:77");
    EXPECT_EQ(Get(host_->object(), L"ItemData", {Long(2)}).Text(), kInvalidIndex);
  }
}

// The choice and the record: the text goes into the bound field, the field's text selects.
TEST_F(Lists, ReadWriteAndClearTheBoundField) {
  const struct {
    const ListClass& which;
    int32_t style;
    const char *write, *read;
  } cases[] = {
      {kListBox, 0, "Ky", "Kyoto"},     {kListBox, 0, "Nowhere", "Osaka"},
      {kExListBox, 0, "nara", "Nara"},  {kComboBox, 0, "Nowhere", "Nowhere"},
      {kComboBox, 2, "Kyoto", "Kyoto"}, {kComboBox, 2, "Ky", "Osaka"},
      {kComboBox, 1, "Nara", "Nara"},   {kExComboBox, 2, "Nara", "Nara"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(std::string(row.which.name) + row.read);
    Make(row.which);
    if (row.which.combo) Set(L"Style", Long(row.style));
    ASSERT_EQ(host_->Show(), S_OK);
    for (const wchar_t* item : {L"Osaka", L"Nara", L"Kyoto"})
      Say(L"AddItem", {Text(item), Missing()});
    EXPECT_EQ(Read("Town"), "1:") << "nothing is chosen";
    Set(L"ListIndex", Long(0));
    Write(row.write, "Town");
    EXPECT_EQ(Read("Town"), std::string("1:") + row.read);
    Clear("Town");
    EXPECT_EQ(Read("Town"), "1:");
    EXPECT_EQ(host_->Value(L"ListIndex"), "ok I4:-1");
  }
}

TEST_F(Lists, WithoutAWindowThereAreNoItems) {
  for (const ListClass* each : AllLists()) {
    SCOPED_TRACE(each->name);
    Make(*each);
    EXPECT_EQ(Say(L"AddItem", {Text(L"b"), Missing()}), "ok I4:0");
    EXPECT_EQ(host_->Value(L"ListCount"), "ok I4:0");
    EXPECT_EQ(Get(host_->object(), L"List", {Long(0)}).Text(), kInvalidIndex);
    EXPECT_EQ(Say(L"Refresh"), "ok EMPTY");
  }
}

TEST_F(Lists, KeysGoWhereTheyBelong) {
  const struct {
    bool combo;
    WPARAM key;
    HRESULT result;
    const char* events;
  } cases[] = {
      {false, VK_DOWN, S_FALSE, ""},
      {false, VK_LEFT, S_FALSE, ""},
      {true, VK_LEFT, S_OK, ""},
      {true, VK_RIGHT, S_OK, ""},
      {true, VK_DOWN, S_FALSE, ""},
      {false, VK_RETURN, S_FALSE, "-600() "},
      {true, VK_RETURN, S_FALSE, "-600() "},
  };
  for (const ListClass* each : AllLists()) {
    MakeShown(*each);
    for (const auto& row : cases) {
      if (row.combo != each->combo) continue;
      Events();
      EXPECT_EQ(host_->Offer(WM_KEYDOWN, row.key), row.result) << each->name << row.key;
      EXPECT_EQ(Events(), row.events) << each->name << row.key;
    }
  }
}

TEST_F(Lists, NoticesOfTheWindowAreEvents) {
  const struct {
    bool combo;
    WORD notice;
    const char* event;
  } cases[] = {{false, LBN_SELCHANGE, "-600() "}, {false, LBN_DBLCLK, "-601() "},
               {true, CBN_SELCHANGE, "-600() "},  {true, CBN_DBLCLK, "-601() "},
               {true, CBN_EDITCHANGE, "2() "},    {true, CBN_CLOSEUP, ""}};
  for (const ListClass* each : AllLists()) {
    MakeShown(*each);
    for (const auto& row : cases) {
      if (row.combo != each->combo) continue;
      Events();
      SendMessageW(list_->hwnd(), WM_COMMAND, MAKEWPARAM(0, row.notice),
                   reinterpret_cast<LPARAM>(window()));
      EXPECT_EQ(Events(), row.event) << each->name << row.notice;
    }
    SendMessageW(window(), WM_VSCROLL, SB_LINEDOWN, 0);
    EXPECT_EQ(Events(), each->combo ? "3() " : "2() ") << each->name;
  }
}

}  // namespace
}  // namespace qrn::test
