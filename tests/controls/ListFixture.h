// The four list controls over the office's people, and what tests do with all of them alike.
#pragma once

#include "OfficeFixture.h"
#include "controls/list/ListControl.h"

namespace qrn::test {

using MadeList = Made<ListControl>;

struct ListClass {
  const char* name;
  bool combo, extended;
  MadeList (*make)(const wchar_t* name, bool runs);
};
extern const ListClass kListBox;
extern const ListClass kComboBox;
extern const ListClass kExListBox;
extern const ListClass kExComboBox;
// All four, for tests of what they share.
std::vector<const ListClass*> AllLists();

struct Lists : OfficeFixture {
  // People by code: 1 うめ Kyoto, 2 (no name) Osaka, 3 さくら Kyoto, 4 うめだ Nara.
  void InsertPeople();

  // A control bound to Db1, with the people's names along ByCode as its list, not yet shown.
  HostedControl& Make(const ListClass& which, bool runs = true);
  HostedControl& MakeShown(const ListClass& which) {
    HostedControl& made = Make(which);
    EXPECT_EQ(made.Show(), S_OK);
    return made;
  }
  void Set(const wchar_t* name, VARIANT value) { EXPECT_EQ(host_->Set(name, value), S_OK); }
  std::string Say(const wchar_t* method, std::initializer_list<VARIANT> arguments = {}) {
    return CallMethod(host_->object(), method, arguments).Text();
  }
  HWND window() { return list_->contained(); }
  // All items as UTF-8, "a;b;".
  std::string Items();
  // What the control raised since the last look, without events of keys and the mouse.
  std::string Events() { return host_->TakeEvents("234567"); }

  int32_t formatEvent() const { return which_->combo ? 4 : 3; }

  std::unique_ptr<HostedControl> host_;
  ListControl* list_ = nullptr;
  const ListClass* which_ = nullptr;
};

}  // namespace qrn::test
