// Who is found by which name on which form, and what the registry tells whom.

#include "PlayedControls.h"

namespace qrn::test {
namespace {

struct Registry : ::testing::Test {
  static void SetUpTestSuite() { company = std::make_unique<Company>(); }
  static void TearDownTestSuite() { company.reset(); }

  std::unique_ptr<PlayedBtr> Start(const char* name, TextWindow& form) {
    auto btr = std::make_unique<PlayedBtr>(name, &form, company->Directory());
    btr->DbControlStart();
    return btr;
  }

  static std::unique_ptr<Company> company;
  TextWindow formA;
  TextWindow formB;
  TextWindow panelOnA{"", &formA};
  TextWindow boxInPanel{"", &panelOnA};
  ShownMessages messages;
};
std::unique_ptr<Company> Registry::company;

TEST_F(Registry, TablesAreFoundByFormSourceAndName) {
  const auto onA = Start("Db", formA);
  const auto otherOnA = Start("Other", formA);
  const auto onB = Start("Db", formB);
  const struct {
    const char* what;
    TextWindow* window;
    const char *source, *table;
    const PlayedBtr* owner;
  } cases[] = {
      {"its own form", &formA, "Db", "People", onA.get()},
      {"another control of the form", &formA, "Other", "People", otherOnA.get()},
      {"the same name on another form", &formB, "Db", "Notes", onB.get()},
      {"the form that the panel lies on", &panelOnA, "Db", "People", onA.get()},
      {"two levels are too many", &boxInPanel, "Db", "People", nullptr},
      {"case counts in the source", &formA, "DB", "People", nullptr},
      {"case counts in the table", &formA, "Db", "people", nullptr},
      {"no such table", &formA, "Db", "Nothing", nullptr},
      {"no such source", &formB, "Other", "People", nullptr},
      {"no names", &formA, "", "", nullptr},
      {"no form", nullptr, "Db", "People", nullptr},
  };
  for (const auto& row : cases) {
    const DbTableInfo* found = TheRegistry().ResolveTable(row.window, row.source, row.table);
    const DbTableInfo* expected = nullptr;
    for (int i = 0; row.owner != nullptr && i < kTableCount; ++i) {
      const DbTableInfo& table = row.owner->GetDictionary()->Tables[i];
      if (std::string(table.Name) == row.table) expected = &table;
    }
    EXPECT_EQ(found, expected) << row.what;
    EXPECT_EQ(found != nullptr, row.owner != nullptr) << row.what;
  }
}

TEST_F(Registry, ControlsOfOneNameAreAskedInTurn) {
  const auto onPanel = Start("Db", panelOnA);
  const auto onForm = Start("Db", formA);
  const auto resolve = [&] { return TheRegistry().ResolveTable(&panelOnA, "Db", "People"); };
  EXPECT_EQ(resolve(), &onPanel->GetDictionary()->Tables[kPeople]);
  qrn::CopyText(onPanel->GetDictionary()->Tables[kPeople].Name, "Renamed");
  EXPECT_EQ(resolve(), &onForm->GetDictionary()->Tables[kPeople]) << "the first lacks the table";
  onPanel->DDFDir.SetNarrow("");
  onPanel->userMode = false;
  onPanel->DirectoryWasPut();
  EXPECT_EQ(resolve(), nullptr) << "one without a dictionary ends the search";
}

TEST_F(Registry, TheUnluckyOrderIsMadeGoodByTheStart) {
  PlayedEdit edit({"edt", &formA, "People", "Name"});
  PlayedList list(kTypeListBox, {"lst", &formA}, "Db");
  PlayedList quiet(kTypeGrid, {"grd", &formA}, "Db");
  quiet.updateOption = 0;
  PlayedList elsewhere(kTypeListBox, {"lst", &formB}, "Db");
  PlayedList below(kTypeComboBox, {"cmb", &formA}, "Db");
  PlayedScroll bar({"bar", &formA}, "Db");
  PlayedScroll other({"bar2", &formA}, "Db2");
  EXPECT_EQ(messages.Take(), "") << "nobody complains before the database control is there";
  const auto btr = Start("Db", panelOnA);
  EXPECT_EQ(list.reloads, 1) << "the panel's parent is the form";
  EXPECT_EQ(below.reloads, 1);
  EXPECT_EQ(quiet.reloads, 0) << "it fills itself only when told";
  EXPECT_EQ(elsewhere.reloads, 0);
  EXPECT_EQ(bar.log, "ready ");
  EXPECT_EQ(other.log, "");
  btr->DbSetFieldData("People", "Name", "Abe");
  EXPECT_EQ(btr->DbTransferToControl("People"), 0);
  EXPECT_EQ(edit.Text(), "") << "a transfer takes the caller's own form";
  btr->form = &formA;
  EXPECT_EQ(btr->DbTransferToControl("People"), 0);
  EXPECT_EQ(edit.Text(), "Abe");
}

TEST_F(Registry, NoticesPassTheOneWhoMoved) {
  PlayedScroll mover({"bar1", &formA}, "Db");
  PlayedScroll follower({"bar2", &formA}, "Db");
  PlayedScroll stranger({"bar3", &formA}, "Else");
  TheRegistry().NotifyPositionChanged(&mover, "Db", "People", 3);
  TheRegistry().NotifyPositionChanged(nullptr, "Db", "Notes", 0);
  EXPECT_EQ(mover.log, "Notes/0 ");
  EXPECT_EQ(follower.log, "People/3 Notes/0 ");
  EXPECT_EQ(stranger.log, "");
  stranger.source = "Db";
  EXPECT_EQ(TheRegistry().RefreshNavEntry(stranger), 0);
  TheRegistry().NotifyPositionChanged(nullptr, "Db", "Days", 1);
  EXPECT_EQ(stranger.log, "Days/1 ");
}

TEST_F(Registry, WhoLeavesDuringANoticeIsPassedOver) {
  auto second = std::make_unique<PlayedScroll>(Names{"b", &formA}, "Db");
  std::unique_ptr<PlayedScroll> late;
  PlayedScroll first({"a", &formA}, "Db");
  TheRegistry().UnregisterNavControl(*second);
  TheRegistry().RegisterNavControl(*second);  // now behind the first
  first.onMoved = [&] {
    second.reset();
    late = std::make_unique<PlayedScroll>(Names{"c", &formA}, "Db");
  };
  TheRegistry().NotifyPositionChanged(nullptr, "Db", "People", 0);
  EXPECT_EQ(late->log, "") << "who joins waits for the next notice";
}

TEST_F(Registry, AControlMadeAnewTakesItsEntryOver) {
  const auto btr = Start("Db", formA);
  auto first = std::make_unique<PlayedEdit>(Names{"edt", &formA, "People", "Name"});
  PlayedEdit sameNameElsewhere({"edt", &formB, "People", "Name"});
  PlayedEdit other({"edt2", &formA, "People", "Town"});
  const int32_t* destroyed = &first->destroyed;
  first->onDestroy = [&] { EXPECT_EQ(TheRegistry().UnregisterFieldControl(*first), -1); };
  PlayedEdit anew({"edt", &formA, "People", "Town"});
  EXPECT_EQ(*destroyed, 1);
  EXPECT_EQ(sameNameElsewhere.destroyed + other.destroyed, 0);
  first.reset();
  btr->DbSetFieldData("People", "Name", "Abe");
  btr->DbSetFieldData("People", "Town", "Osaka");
  btr->DbTransferToControl("People");
  EXPECT_EQ(anew.Text(), "Abe") << "the entry keeps the names it had";
  EXPECT_EQ(other.Text(), "Osaka");
  TheRegistry().RegisterFieldControl(anew);
  EXPECT_EQ(anew.destroyed, 0) << "registering again is no replacement";
}

TEST_F(Registry, ReplacedListsAndBarsKeepTheirNames) {
  auto list = std::make_unique<PlayedList>(kTypeListBox, Names{"lst", &formA}, "Db");
  auto bar = std::make_unique<PlayedScroll>(Names{"bar", &formA}, "Db");
  PlayedList newList(kTypeListBox, {"lst", &formA}, "Later");
  PlayedScroll newBar({"bar", &formA}, "Later");
  EXPECT_EQ(list->destroyed, 1);
  EXPECT_EQ(bar->destroyed, 1);
  list.reset();
  bar.reset();
  TheRegistry().NotifyListsReady("Db", &formA);
  TheRegistry().NotifyNavReady("Db", &formA);
  EXPECT_EQ(newList.reloads, 1);
  EXPECT_EQ(newBar.log, "ready ");
  EXPECT_EQ(TheRegistry().RefreshListEntry(newList), 0);
  TheRegistry().NotifyListsReady("Db", &formA);
  EXPECT_EQ(newList.reloads, 1) << "its names were read anew";
  TheRegistry().NotifyListsReady("Later", &formA);
  EXPECT_EQ(newList.reloads, 2);
}

TEST_F(Registry, ADatabaseControlMadeAnewReplacesTheFormer) {
  const auto former = Start("Db", formA);
  const auto anew = Start("Db", formA);
  EXPECT_EQ(former->destroyed, 1);
  EXPECT_EQ(TheRegistry().ResolveTable(&formA, "Db", "People"),
            &anew->GetDictionary()->Tables[kPeople]);
}

TEST_F(Registry, WhoHasNoNameIsNobodyElse) {
  PlayedEdit one({"", &formA, "People", "Name"});
  PlayedEdit two({"", &formA, "People", "Name"});
  EXPECT_EQ(one.destroyed, 0);
  EXPECT_EQ(TheRegistry().UnregisterFieldControl(one), 0);
  EXPECT_EQ(TheRegistry().UnregisterFieldControl(one), -1);
}

TEST_F(Registry, FieldControlsWithNullNamesStayOut) {
  PlayedEdit edit({"edt", &formA, "", ""});
  EXPECT_EQ(TheRegistry().UnregisterFieldControl(edit), 0) << "empty names are names";
  edit.boundField = std::nullopt;
  EXPECT_EQ(TheRegistry().RegisterFieldControl(edit), 0);
  EXPECT_EQ(TheRegistry().UnregisterFieldControl(edit), -1);
  PlayedList list(kTypeListBox, {"lst", &formA}, "Db");
  EXPECT_EQ(TheRegistry().RefreshListEntry(list), 0);
  TheRegistry().UnregisterListControl(list);
  EXPECT_EQ(TheRegistry().RefreshListEntry(list), -1);
}

// A control that finds no memory for its name.
class Starved final : public Played<EditFace> {
 public:
  explicit Starved(TextWindow& itsForm) : Played(kTypeEdit, {"edt", &itsForm}) {}
  std::string GetControlName() override { throw std::bad_alloc(); }
  WindowHandle ContainedWindow() override { return nullptr; }
  void ShowFieldText(const char*) override {}
  void ClearFieldText() override {}
};

TEST_F(Registry, WithoutMemoryAControlStaysOut) {
  Starved control(formA);
  int32_t (ControlRegistry::*const enter[])(CQuorin&) noexcept = {
      &ControlRegistry::RegisterFieldControl, &ControlRegistry::RegisterListControl,
      &ControlRegistry::RegisterNavControl};
  for (const auto each : enter) {
    EXPECT_EQ((TheRegistry().*each)(control), -1);
    EXPECT_TRUE(messages.Take().starts_with("VE001 メモリ不足  qrnutil "));
  }
  EXPECT_EQ(TheRegistry().UnregisterFieldControl(control), -1);
}

TEST_F(Registry, TablesOpenOnDemandFromTheirControl) {
  auto btr = std::make_unique<PlayedBtr>("Db", &formA, company->Directory());
  btr->AllOpen = 0;
  btr->DbControlStart();
  DbTableInfo& people = *TheRegistry().ResolveTable(&formA, "Db", "People");
  EXPECT_EQ(people.IsOpen, 0);
  EXPECT_EQ(TheRegistry().DbOpenOnDemand(people, &formB, "Db"), -11);
  EXPECT_EQ(TheRegistry().DbOpenOnDemand(people, &panelOnA, "Db"), 0);
  EXPECT_EQ(people.IsOpen, 1);
}

}  // namespace
}  // namespace qrn::test
