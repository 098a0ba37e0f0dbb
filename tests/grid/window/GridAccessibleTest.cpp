// The grid as a screen reader finds it.
#include "GridFixture.h"
#include "ScreenReader.h"

namespace qrn::test {
namespace {

using com::Variant;

struct Accessible : Grids {
  void SetUp() override {
    Grids::SetUp();
    MakeShown();
    table_.emplace(window());
  }
  Reader Cell(int32_t row, int32_t col) const { return table_->Child(row + 1).Child(col + 1); }
  // "name=value" of what a variant holds.
  static std::string Tell(const Variant& found) {
    if (found.type() == VT_I4) return "self";
    if (found.type() != VT_DISPATCH) return "nothing";
    const Reader object(com::Query<IAccessible>(found->pdispVal));
    return object.Name() + "=" + object.Value();
  }
  static Variant Self() { return Variant(int32_t{CHILDID_SELF}); }

  std::optional<Reader> table_;
};

TEST_F(Accessible, IsATableOfRowsOfCells) {
  EXPECT_EQ(table_->Role(), ROLE_SYSTEM_TABLE);
  EXPECT_EQ(table_->Name(), "People");
  EXPECT_EQ(table_->Count(), 5);
  {
    const Label label(L"顧客(&P)", window(), TheForm());
    EXPECT_EQ(table_->Name(), "顧客(P)");
  }
  const auto row = table_->Child(3);
  EXPECT_EQ(row.Role(), ROLE_SYSTEM_ROW);
  EXPECT_EQ(row.Name(), "   2");
  EXPECT_EQ(row.Count(), 4);
  const struct {
    int32_t row, col;
    LONG role;
    const char *name, *value;
  } cases[] = {{1, 2, ROLE_SYSTEM_CELL, "Name", "うめ"},
               {2, 2, ROLE_SYSTEM_CELL, "Name", ""},
               {0, 3, ROLE_SYSTEM_COLUMNHEADER, "Town", "Town"},
               {4, 0, ROLE_SYSTEM_ROWHEADER, "", "   4"}};
  for (const auto& each : cases) {
    const auto cell = Cell(each.row, each.col);
    ASSERT_TRUE(cell);
    EXPECT_EQ(cell.Role(), each.role);
    EXPECT_EQ(cell.Name(), each.name);
    EXPECT_EQ(cell.Value(), each.value);
  }
  EXPECT_FALSE(table_->Child(-1));
  EXPECT_FALSE(table_->Child(5 + 5 * 4 + 1)) << "behind the last cell's number";
  EXPECT_FALSE(row.Child(5));
}

TEST_F(Accessible, AnswersScripts) {
  const ScriptReader table(window());
  EXPECT_EQ(table.Ask(L"accName"), "ok BSTR:People");
  EXPECT_EQ(table.Ask(L"accChildCount"), "ok I4:5");
  EXPECT_EQ(table.Ask(L"accRole", {Short(0)}), "ok I4:24");
  const ScriptReader row = table.Child(Short(4));
  ASSERT_TRUE(row);
  EXPECT_EQ(row.Ask(L"accName"), "ok BSTR:   3");
  EXPECT_EQ(row.Ask(L"accRole", {Long(2)}), "ok I4:29") << "a cell";
  const ScriptReader town = row.Child(Long(4));
  ASSERT_TRUE(town);
  EXPECT_EQ(town.Ask(L"accName"), "ok BSTR:Town");
  EXPECT_EQ(town.Ask(L"accValue"), "ok BSTR:Kyoto");
  EXPECT_EQ(town.Do(L"accDoDefaultAction"), "ok EMPTY");
  EXPECT_EQ(Current(), "3,3");
  LONG place[4]{};
  EXPECT_EQ(town.Do(L"accLocation", {Ref(VT_I4, &place[0]), Ref(VT_I4, &place[1]),
                                     Ref(VT_I4, &place[2]), Ref(VT_I4, &place[3])}),
            "ok EMPTY");
  EXPECT_EQ(place[2], 50);
  EXPECT_EQ(place[3], 20);
  EXPECT_EQ(table.Ask(L"accNobody"), "80020006");
  EXPECT_EQ(table.Ask(L"accName", {Long(99)}), "80020009:80070057") << "no such child";
}

// The box has the keyboard while a cell is edited.
TEST_F(Accessible, TheEditBoxIsCalledAsItsColumn) {
  MakeShown("u");
  Key(VK_DOWN);
  const ScriptReader box(Edit());
  EXPECT_EQ(box.Ask(L"accName"), "ok BSTR:Code");
  EXPECT_EQ(box.Ask(L"accRole"), "ok I4:42");
  EXPECT_EQ(box.Ask(L"accValue"), "ok BSTR:2");
  SendMessageW(Edit(), EM_SETSEL, 9, 9);
  Key(VK_RIGHT);
  EXPECT_EQ(box.Ask(L"accName"), "ok BSTR:Name");
  host_.reset();
  EXPECT_NE(box.Ask(L"accName").substr(0, 4), "ok B");
}

TEST_F(Accessible, TellsWhereTheFocusIs) {
  Variant focus;
  EXPECT_EQ((*table_)->get_accFocus(focus.put()), S_OK);
  EXPECT_EQ(Tell(focus), "Code=1");
  Key(VK_DOWN);
  Key(VK_RIGHT);
  (*table_)->get_accFocus(focus.put());
  EXPECT_EQ(Tell(focus), "Name=");
  EXPECT_TRUE(Cell(2, 2).State() & STATE_SYSTEM_FOCUSED);
  EXPECT_FALSE(Cell(1, 1).State() & STATE_SYSTEM_FOCUSED);
  Cell(2, 2)->get_accFocus(focus.put());
  EXPECT_EQ(Tell(focus), "self");
  SetFocus(TheForm());
  EXPECT_EQ((*table_)->get_accFocus(focus.put()), S_FALSE);
}

TEST_F(Accessible, StatesFollowTheGrid) {
  EXPECT_TRUE(Cell(1, 1).State() & STATE_SYSTEM_READONLY);
  Click(Middle(2, 0));
  EXPECT_TRUE(table_->Child(3).State() & STATE_SYSTEM_SELECTED);
  EXPECT_TRUE(Cell(2, 3).State() & STATE_SYSTEM_SELECTED);
  EXPECT_FALSE(Cell(1, 3).State() & STATE_SYSTEM_SELECTED);
  EXPECT_FALSE(Cell(1, 3).State() & STATE_SYSTEM_OFFSCREEN);
  MoveWindow(window(), 0, 0, 90, 50, TRUE);
  EXPECT_TRUE(Cell(1, 3).State() & STATE_SYSTEM_OFFSCREEN);
  EXPECT_TRUE(Cell(4, 1).State() & STATE_SYSTEM_OFFSCREEN);
}

TEST_F(Accessible, PlacesAndPointsAgree) {
  for (const auto& [row, col] : {std::pair{0, 0}, {0, 2}, {1, 1}, {3, 3}, {4, 0}}) {
    LONG left = 0, top = 0, width = 0, height = 0;
    ASSERT_EQ(Cell(row, col)->accLocation(&left, &top, &width, &height, *Self().get()), S_OK);
    EXPECT_EQ(width, 50);
    EXPECT_EQ(height, 20);
    Variant hit;
    ASSERT_EQ((*table_)->accHitTest(left + 10, top + 10, hit.put()), S_OK);
    EXPECT_EQ(Tell(hit), Cell(row, col).Name() + "=" + Cell(row, col).Value());
    EXPECT_EQ(Cell(row, col)->accHitTest(left + 10, top + 10, hit.put()), S_OK);
    EXPECT_EQ(Tell(hit), "self");
  }
  RECT place{};
  GetWindowRect(window(), &place);
  Variant hit;
  EXPECT_EQ((*table_)->accHitTest(place.left - 5, place.top, hit.put()), S_FALSE);
  (*table_)->accHitTest(place.left + 280, place.top + 140, hit.put());
  EXPECT_EQ(Tell(hit), "self") << "behind the last cell";
}

TEST_F(Accessible, IsWalkedFromChildToChild) {
  const struct {
    LONG direction;
    const char* to;  // from the cell 1, 1
  } cases[] = {{NAVDIR_RIGHT, "Name=うめ"}, {NAVDIR_NEXT, "Name=うめ"},
               {NAVDIR_LEFT, "=   1"},      {NAVDIR_UP, "Code=Code"},
               {NAVDIR_DOWN, "Code=2"},     {NAVDIR_FIRSTCHILD, "nothing"}};
  for (const auto& row : cases) {
    Variant found;
    Cell(1, 1)->accNavigate(row.direction, *Self().get(), found.put());
    EXPECT_EQ(Tell(found), row.to) << row.direction;
  }
  Variant end;
  EXPECT_EQ(Cell(4, 3)->accNavigate(NAVDIR_NEXT, *Self().get(), end.put()), S_FALSE);
  EXPECT_EQ((*table_)->accNavigate(NAVDIR_LASTCHILD, *Self().get(), end.put()), S_OK);
  EXPECT_EQ(Tell(end), "   4=none");
}

TEST_F(Accessible, ACellIsChosen) {
  ASSERT_EQ(Cell(3, 2)->accSelect(SELFLAG_TAKEFOCUS, *Self().get()), S_OK);
  EXPECT_EQ(Current(), "3,2");
  ASSERT_EQ(Cell(2, 1)->accDoDefaultAction(*Self().get()), S_OK);
  EXPECT_EQ(Current(), "2,1");
  EXPECT_EQ(Cell(0, 1)->accDoDefaultAction(*Self().get()), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(Current(), "2,1");
}

TEST_F(Accessible, ObjectsOutliveTheirGrid) {
  const auto cell = Cell(1, 1);
  host_.reset();
  com::Bstr name;
  EXPECT_EQ(cell->get_accName(*Self().get(), name.put()), CO_E_OBJNOTCONNECTED);
  Variant focus;
  EXPECT_EQ((*table_)->get_accFocus(focus.put()), CO_E_OBJNOTCONNECTED);
  table_.reset();
}

std::string heardByReader;

void CALLBACK Hear(HWINEVENTHOOK, DWORD event, HWND, LONG object, LONG child, DWORD, DWORD) {
  if (object == OBJID_CLIENT && event == EVENT_OBJECT_FOCUS)
    heardByReader += std::to_string(child) + " ";
}

TEST_F(Accessible, AMoveIsToldWithTheCellsNumber) {
  const HWINEVENTHOOK hook = SetWinEventHook(EVENT_OBJECT_FOCUS, EVENT_OBJECT_FOCUS, nullptr, &Hear,
                                             GetCurrentProcessId(), 0, WINEVENT_OUTOFCONTEXT);
  ASSERT_NE(hook, nullptr);
  RunMessages();
  heardByReader.clear();
  Key(VK_DOWN);
  Click(Middle(3, 2));
  RunMessages();
  UnhookWinEvent(hook);
  // Behind five rows, four cells in each.
  EXPECT_NE(heardByReader.find("15 "), std::string::npos) << heardByReader;
  EXPECT_NE(heardByReader.find("20 "), std::string::npos) << heardByReader;
  EXPECT_EQ(table_->Child(15).Value(), "2");
}

}  // namespace
}  // namespace qrn::test
