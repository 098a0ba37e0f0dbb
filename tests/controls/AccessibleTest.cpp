// What a screen reader finds in the contained windows of lists and combos, and the label that names
// them.
#include <windowsx.h>

#include "ListFixture.h"
#include "PeopleForm.h"
#include "ScreenReader.h"
#include "controls/QRNBtn.h"
#include "controls/list/ComboControl.h"
#include "platform/Utf.h"

namespace qrn::test {
namespace {

struct Readers : Lists {
  void MakeOnForm(const ListClass& which) {
    Make(which);
    host_->site.form = form_.get();
    ASSERT_EQ(host_->Show(), S_OK);
  }
  // The window of the items: of a combo the list inside.
  HWND ListInside() {
    if (!which_->combo) return window();
    COMBOBOXINFO inside{};
    inside.cbSize = sizeof inside;
    GetComboBoxInfo(window(), &inside);
    return inside.hwndList;
  }

  Window form_;
};

TEST_F(Readers, FindNameValueAndItemsOfEveryList) {
  InsertPeople();
  for (const ListClass* each : AllLists()) {
    SCOPED_TRACE(each->name);
    MakeOnForm(*each);
    const Label label(L"顧客(&C)", list_->hwnd(), form_.get());
    const Reader own(window());
    EXPECT_EQ(own.Name(), "顧客(C)");
    EXPECT_EQ(own.Role(), each->combo ? ROLE_SYSTEM_COMBOBOX : ROLE_SYSTEM_LIST);
    Set(L"ListIndex", Long(0));
    EXPECT_EQ(own.Value(), "うめ");
    const Reader items(ListInside());
    EXPECT_EQ(items.Name(), "顧客(C)");
    EXPECT_EQ(items.Count(), list_->GetListCount());
    const long last = items.Count();
    EXPECT_EQ(items.Name(1), "うめ");
    EXPECT_EQ(items.Name(last), "うめだ");
    EXPECT_EQ(items.Role(last), ROLE_SYSTEM_LISTITEM);
    EXPECT_EQ(items.Name(last + 1), "none");
    EXPECT_EQ(items.Role(last + 1), -1);
    Say(L"Clear");
    EXPECT_EQ(items.Count(), 0);
  }
}

TEST_F(Readers, FindWhichItemIsChosen) {
  InsertPeople();
  MakeOnForm(kListBox);
  const Reader reader(window());
  EXPECT_EQ(reader.Selection(), 0);
  EXPECT_EQ(reader.Value(), "");
  EXPECT_EQ(reader->accSelect(SELFLAG_TAKESELECTION, Long(2)), S_OK);
  EXPECT_EQ(host_->Value(L"ListIndex"), "ok I4:1");
  EXPECT_EQ(reader.Value(), "さくら");
  EXPECT_EQ(reader.Selection(), 2);
  EXPECT_EQ(reader.State(2) & (STATE_SYSTEM_SELECTED | STATE_SYSTEM_FOCUSED),
            STATE_SYSTEM_SELECTED);
  EXPECT_EQ(reader.State(1) & STATE_SYSTEM_SELECTED, 0);
  EXPECT_EQ(reader.Focus(), 0);
  SetFocus(window());
  EXPECT_EQ(reader.Focus(), 2);
  EXPECT_NE(reader.State(2) & STATE_SYSTEM_FOCUSED, 0);
  SetFocus(TheForm());
}

TEST_F(Readers, FindItemsByTheirPlace) {
  InsertPeople();
  MakeOnForm(kListBox);
  const Reader reader(window());
  long left = 0;
  long top = 0;
  long width = 0;
  long height = 0;
  ASSERT_EQ(reader->accLocation(&left, &top, &width, &height, Long(2)), S_OK);
  EXPECT_EQ(height, SendMessageW(window(), LB_GETITEMHEIGHT, 0, 0));
  Variant hit;
  EXPECT_EQ(reader->accHitTest(left + 1, top + 1, hit.put()), S_OK);
  EXPECT_EQ(hit->lVal, 2);
  Variant beside;
  reader->accHitTest(left - 500, top, beside.put());
  EXPECT_EQ(beside->lVal, CHILDID_SELF) << "no item";
}

TEST_F(Readers, FindTheLineOfACombo) {
  MakeOnForm(kComboBox);
  const Label label(L"&Town && land", list_->hwnd(), form_.get());
  EXPECT_EQ(Reader(GetWindow(window(), GW_CHILD)).Name(), "Town & land");
}

TEST_F(Readers, NameByTheNearestLabelAlone) {
  Hosted<CQRNEdit> edit(L"edt1");
  edit.site.form = form_.get();
  ASSERT_EQ(edit.Show(), S_OK);
  const Reader reader(edit.window());
  EXPECT_EQ(reader.Name(), "none");
  const Label farther(L"far", edit->hwnd(), form_.get());
  EXPECT_EQ(reader.Name(), "far");
  {
    const Label nearer(L"near", edit->hwnd(), form_.get());
    EXPECT_EQ(reader.Name(), "near");
  }
  const HWND stop = CreateWindowExW(0, L"BUTTON", L"", WS_CHILD | WS_TABSTOP, 0, 0, 9, 9,
                                    form_.get(), nullptr, nullptr, nullptr);
  SetWindowPos(stop, farther.get(), 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  EXPECT_EQ(reader.Name(), "none") << "what is before another control is that one's";
  Hosted<CQRNBtn> button(L"btn1");
  button.Set(L"Caption", Text(L"Go"));
  button.site.form = form_.get();
  ASSERT_EQ(button.Show(), S_OK);
  const Label before(L"near", button->hwnd(), form_.get());
  EXPECT_EQ(Reader(button.window()).Name(), "Go");
  button.Set(L"Caption", Text(L""));
  EXPECT_EQ(Reader(button.window()).Name(), "near") << "a picture alone tells nothing";
}

TEST_F(Readers, AreToldTheTextOfAnEditButNoPassword) {
  Hosted<CQRNEdit> edit(L"edt1");
  edit.Set(L"Text", Text(L"abc"));
  edit.site.form = form_.get();
  ASSERT_EQ(edit.Show(), S_OK);
  EXPECT_EQ(Reader(edit.window()).Value(), "abc");
  edit.Set(L"PasswordChar", Text(L"*"));
  EXPECT_EQ(Reader(edit.window()).Value(), "none");
}

TEST_F(Readers, MayOutliveTheControl) {
  InsertPeople();
  for (const ListClass* each : AllLists()) {
    MakeOnForm(*each);
    const Reader own(window());
    const Reader items(ListInside());
    host_.reset();
    EXPECT_EQ(items.Count(), 0) << each->name;
    EXPECT_EQ(items.Name(1), "none");
    EXPECT_EQ(own.Value() + items.Value(), "");
    EXPECT_EQ(items.Selection(), 0);
  }
}

// The mouse over the line of a combo, in pixels from the combo's corner.
TEST_F(Readers, HearOfTheMouseInsideACombo) {
  for (const int32_t style : {kDropDownCombo, kNormalCombo}) {
    SCOPED_TRACE(style);
    Make(kComboBox);
    host_->site.place = {10, 10, 110, 110};
    Set(L"Style", Long(style));
    ASSERT_EQ(host_->Show(), S_OK);
    for (HWND inner = GetWindow(window(), GW_CHILD); inner; inner = GetWindow(inner, GW_HWNDNEXT)) {
      POINT place{3, 2};
      MapWindowPoints(inner, window(), &place, 1);
      const std::string at =
          "I2:0,R4:" + std::to_string(place.x) + ",R4:" + std::to_string(place.y) + ") ";
      host_->events.log.clear();
      SendMessageW(inner, WM_MOUSEMOVE, 0, MAKELPARAM(3, 2));
      SendMessageW(inner, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 2));
      SendMessageW(inner, WM_LBUTTONUP, 0, MAKELPARAM(3, 2));
      const std::string& told = host_->events.log;
      EXPECT_NE(told.find("-606(I2:0," + at), std::string::npos) << told;
      EXPECT_NE(told.find("-605(I2:1," + at), std::string::npos) << told;
      EXPECT_NE(told.find("-607(I2:1," + at), std::string::npos) << told;
    }
  }
}

}  // namespace
}  // namespace qrn::test
