#include "ListFixture.h"

#include "controls/list/QRNComboBox.h"
#include "controls/list/QRNExComboBox.h"
#include "controls/list/QRNExListBox.h"
#include "controls/list/QRNListBox.h"
#include "platform/Utf.h"

namespace qrn::test {

const ListClass kListBox{"QRNListBox", false, false, &test::Make<CQRNListBox, ListControl>};
const ListClass kComboBox{"QRNComboBox", true, false, &test::Make<CQRNComboBox, ListControl>};
const ListClass kExListBox{"QRNExListBox", false, true, &test::Make<CQRNExListBox, ListControl>};
const ListClass kExComboBox{"QRNExComboBox", true, true, &test::Make<CQRNExComboBox, ListControl>};

std::vector<const ListClass*> AllLists() {
  return {&kListBox, &kComboBox, &kExListBox, &kExComboBox};
}

void Lists::InsertPeople() {
  Insert({{"Code", "3"}, {"Name", "さくら"}, {"Town", "Kyoto"}});
  Insert({{"Code", "1"}, {"Name", "うめ"}, {"Town", "Kyoto"}});
  Insert({{"Code", "2"}, {"Name", ""}, {"Town", "Osaka"}});
  Insert({{"Code", "4"}, {"Name", "うめだ"}, {"Town", "Nara"}});
}

HostedControl& Lists::Make(const ListClass& which, bool runs) {
  host_.reset();
  MadeList made = which.make(L"lst1", runs);
  host_ = std::move(made.host);
  list_ = made.control;
  which_ = &which;
  Bind(*host_, L"Town");
  Set(L"DbListSource", Text(L"Db1"));
  Set(L"DbListTable", Text(L"People"));
  Set(which.extended ? L"DbListFields" : L"DbListField", Text(L"Name"));
  Set(L"DbListIndex", Text(L"ByCode"));
  return *host_;
}

std::string Lists::Items() {
  std::string items;
  const ListItems all = list_->Items();
  for (int32_t i = 0; i < all.Count(); ++i) {
    const std::wstring text = all.Text(i);
    items += Utf16ToUtf8({reinterpret_cast<const char16_t*>(text.data()), text.size()}) + ";";
  }
  return items;
}

}  // namespace qrn::test
