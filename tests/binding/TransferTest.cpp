// Fields between the record buffer and the controls of a form, by every kind of control.

#include "PlayedControls.h"

namespace qrn::test {
namespace {

struct Transfer : ::testing::Test {
  void SetUp() override {
    btr = std::make_unique<PlayedBtr>("Db", &form, company.Directory());
    btr->formWindow = &form;
    btr->DbControlStart();
    ASSERT_EQ(btr->DbIsOpen("People"), 1);
  }
  void TearDown() override { TheFlatState() = DbFlatState{}; }

  void Put(const char* field, const char* text) {
    EXPECT_EQ(btr->DbSetFieldData("People", field, text), 0);
  }
  std::string Field(const char* name) { return *btr->DbGetFieldData("People", name); }
  Names On(const char* name, const char* field) { return {name, &form, "People", field}; }

  Company company;
  TextWindow form;
  TextWindow otherForm;
  ShownMessages messages;
  std::unique_ptr<PlayedBtr> btr;
};

TEST_F(Transfer, MarksFollowTheTextsOfTheirStates) {
  PlayedMark check(kTypeCheck, On("chk", "Name"));
  check.ifIndeterminate = "?";
  PlayedMark first(kTypeOptBtn, On("opt1", "Name"));
  PlayedMark second(kTypeOptBtn, On("opt2", "Name"));
  first.ifTrue = "1";
  first.ifFalse = "?";
  second.ifTrue = "?";
  second.ifFalse = "1";
  const struct {
    const char *text, *check, *first, *second;
  } cases[] = {
      {"1", "1/1", "1/1", "0/0"},
      {"0", "0/0", "1/1", "0/0"},
      {"?", "2/2", "0/0", "1/1"},
      {"x", "2/2", "0/0", "1/1"},  // matches nothing and changes nothing
  };
  for (const auto& row : cases) {
    Put("Name", row.text);
    btr->DbTransferToControl("People");
    EXPECT_EQ(check.State(), row.check) << row.text;
    EXPECT_EQ(first.State(), row.first) << row.text;
    EXPECT_EQ(second.State(), row.second) << row.text;
  }
  check.ifTrue = check.ifFalse = "same";
  Put("Name", "same");
  btr->DbTransferToControl("People");
  EXPECT_EQ(check.State(), "0/0") << "of equal texts the later one's state stays";
}

TEST_F(Transfer, TheLastControlOfAFieldGivesItsText) {
  const DbTableInfo& people = btr->GetDictionary()->Tables[kPeople];
  PlayedMark check(kTypeCheck, On("chk", "Town"));
  PlayedMark option(kTypeOptBtn, On("opt", "Name"));
  PlayedEdit edit(On("edt", "Name"));
  PlayedPicture picture(On("pic", "Name"));
  PlayedList list(kTypeListBox, On("lst", "Born"));
  const struct {
    const char* what;
    std::function<void()> prepare;
    int32_t field, count;
    const char* text;
  } cases[] = {
      {"edit after option", [&] { WriteWindowText(&edit.window, "typed"); }, 1, 2, "typed"},
      {"clear", [&] { check.value = 0; }, 2, 1, "0"},
      {"set", [&] { check.value = 1; }, 2, 1, "1"},
      {"third state", [&] { check.value = 2; }, 2, 1, ""},
      {"marked by the user", [&] { check.value = -1; }, 2, 0, "untouched"},
      {"nothing selected counts", [&] { list.selected = ""; }, 3, 1, ""},
      {"an item", [&] { list.selected = "2024/02/29"; }, 3, 1, "2024/02/29"},
      {"no control", [] {}, 4, 0, "untouched"},
  };
  for (const auto& row : cases) {
    row.prepare();
    std::string text = "untouched";
    EXPECT_EQ(TheRegistry().ReadControlField(&form, people, people.Fields[row.field], text),
              row.count)
        << row.what;
    EXPECT_EQ(text, row.text) << row.what;
    EXPECT_EQ(TheRegistry().ReadControlField(&otherForm, people, people.Fields[row.field], text), 0)
        << row.what;
  }
}

TEST_F(Transfer, ControlsAreWrittenInTheDictionarysOrder) {
  std::string order;
  PlayedList list(kTypeComboBox, On("cmb", "Code"));
  PlayedEdit pay(On("edtPay", "Pay"));
  PlayedEdit code(On("edtCode", "Code"));
  PlayedEdit again(On("edtAgain", "Code"));
  PlayedPicture picture(On("pic", "Name"));
  pay.onChange = [&] { order += "pay "; };
  code.onChange = [&] { order += list.selected.empty() ? "code " : "code after list "; };
  again.onChange = [&] { order += "again "; };
  Put("Code", "7");
  Put("Name", "a.bmp");
  EXPECT_EQ(btr->DbTransferToControl("People"), 0);
  EXPECT_EQ(order, "code again pay ");
  EXPECT_EQ(list.selected, "7");
  EXPECT_EQ(picture.loaded, "People:a.bmp ");
}

TEST_F(Transfer, ClearingReachesTheFieldsControlsOfEveryForm) {
  PlayedEdit here(On("edt", "Name"));
  PlayedEdit there({"edt", &otherForm, "People", "Name"});
  PlayedMark check(kTypeCheck, On("chk", "Town"));
  PlayedList list(kTypeListBox, On("lst", "Town"));
  PlayedList listThere(kTypeListBox, {"lst", &otherForm, "People", "Town"});
  const auto fill = [&] {
    for (PlayedEdit* edit : {&here, &there}) WriteWindowText(&edit->window, "x");
    check.value = check.mark = 1;
    list.selected = listThere.selected = "x";
  };
  fill();
  EXPECT_EQ(btr->DbClearControlData("People"), 0);
  EXPECT_EQ(here.Text() + "|" + there.Text(), "|") << "kept so: on the other form too";
  EXPECT_EQ(check.State(), "1/0") << "the value stays";
  EXPECT_EQ(list.selected + "|" + listThere.selected, "|x");
  fill();
  EXPECT_EQ(btr->DbTransferToControl("People"), 0);
  EXPECT_EQ(there.Text(), "x") << "a transfer keeps to its form";
}

TEST_F(Transfer, AHandlerMayEndTheFormUnderIt) {
  auto doomed = std::make_unique<PlayedEdit>(On("edt2", "Code"));
  PlayedPicture picture(On("pic", "Code"));
  PlayedEdit later(On("edt3", "Name"));
  PlayedEdit first(On("edt1", "Code"));
  TheRegistry().UnregisterFieldControl(*doomed);
  TheRegistry().UnregisterFieldControl(picture);
  TheRegistry().RegisterFieldControl(*doomed);
  TheRegistry().RegisterFieldControl(picture);
  first.onChange = [&] {
    doomed.reset();
    btr->WindowGoes();
  };
  Put("Name", "Abe");
  WriteWindowText(&later.window, "kept");
  EXPECT_EQ(btr->DbTransferToControl("People"), 0);
  EXPECT_EQ(picture.loaded, "") << "its table has gone";
  EXPECT_EQ(later.Text(), "kept") << "the transfer ended";
  EXPECT_EQ(btr->GetDictionary(), nullptr);
}

TEST_F(Transfer, AHandlerMayLoadTheDictionaryAnew) {
  PlayedEdit code(On("edt1", "Code"));
  PlayedEdit name(On("edt2", "Name"));
  const auto reload = [&] { EXPECT_EQ(btr->DbLoadDDF(), 0); };
  code.onChange = reload;
  Put("Name", "Abe");
  EXPECT_EQ(btr->DbTransferToControl("People"), 0);
  EXPECT_EQ(name.Text(), "") << "the table is closed now";
  EXPECT_EQ(btr->DbOpen("People"), 0);
  EXPECT_EQ(btr->DbClearControlData("People"), 0);
  EXPECT_EQ(btr->DbIsOpen("People"), 0) << "clearing raised the event again";
}

TEST_F(Transfer, TheFlatInterfaceAttachesByNameAndForm) {
  PlayedBtr empty("Empty", &form);
  TheRegistry().RegisterDataControl(empty);
  const struct {
    const char *name, *formName;
    int32_t result;
  } cases[] = {{"Db", "Form1", 0},       {"DB", "Form1", 0},      {"Db", "form1", -11},
               {"Nobody", "Form1", -11}, {"empty", "Form1", -20}, {nullptr, nullptr, -11}};
  for (const auto& row : cases) {
    TheFlatState() = DbFlatState{};
    EXPECT_EQ(::DbAttachControl(row.name, row.formName), row.result) << row.formName;
    const bool attached = row.result == 0;
    EXPECT_EQ(TheFlatState().CurrentDictionary, attached ? btr->GetDictionary() : nullptr);
    EXPECT_EQ(TheFlatState().FormWindow, attached ? &form : nullptr);
    EXPECT_STREQ(TheFlatState().AttachedName, attached ? row.name : "");
  }
  btr->formWindow.reset();
  EXPECT_EQ(::DbAttachControl("Db", "Form1"), -1);
  EXPECT_EQ(TheFlatState().CurrentDictionary, btr->GetDictionary()) << "attached all the same";
  btr->formName.reset();
  EXPECT_EQ(::DbAttachControl("Db", ""), -11) << "no name is not an empty one";
}

TEST_F(Transfer, FlatTransfersTakeTheAttachedForm) {
  EXPECT_EQ(::DbTransferToControl(kPeople), -12);
  ASSERT_EQ(::DbAttachControlByHwnd("Db", &form), 0);
  PlayedEdit edit(On("edt", "Name"));
  Put("Name", "Abe");
  EXPECT_EQ(::DbTransferToControl(kPeople), 0);
  EXPECT_EQ(edit.Text(), "Abe");
  WriteWindowText(&edit.window, "Ito");
  EXPECT_EQ(::DbTransferFromControl(kPeople), 0);
  EXPECT_EQ(Field("Name"), "Ito");
  EXPECT_EQ(::DbClearControlData(kPeople), 0);
  EXPECT_EQ(edit.Text(), "");
  EXPECT_EQ(::DbTransferToControl(-1), -15);
  EXPECT_EQ(::DbTransferToControl(kTableCount + 1), -15);
  EXPECT_EQ(::DbTransferFromControl(kTableCount), -3);
  btr->DbClose("People");
  EXPECT_EQ(::DbClearControlData(kPeople), -3);
  TheFlatState().AttachedControl = nullptr;
  EXPECT_EQ(btr->DbOpen("People"), 0);
  EXPECT_EQ(::DbTransferToControl(kPeople), -12);
}

TEST_F(Transfer, ANoticeOfTheControlsEndReachesTheFlatInterface) {
  ASSERT_EQ(::DbAttachControlByHwnd("Db", &form), 0);
  PlayedEdit edit(On("edt", "Code"));
  edit.onChange = [&] { btr.reset(); };
  EXPECT_EQ(::DbTransferToControl(kPeople), 0);
  EXPECT_EQ(TheFlatState().CurrentDictionary, nullptr);
  EXPECT_EQ(TheFlatState().AttachedControl, nullptr);
  EXPECT_EQ(::DbTransferToControl(kPeople), -12);
}

}  // namespace
}  // namespace qrn::test
