#include "ListFixture.h"

#include "controls/list/QRNComboBox.h"
#include "controls/list/QRNExComboBox.h"
#include "controls/list/QRNExListBox.h"
#include "controls/list/QRNListBox.h"
#include "platform/Utf.h"

namespace qrn::test {
namespace {

template <class C>
MadeList MakeList(const wchar_t* name, bool runs) {
  auto hosted = std::make_unique<Hosted<C>>(name, runs);
  ListControl* list = &**hosted;
  return {std::move(hosted), list};
}

}  // namespace

const ListClass kListBox{"QRNListBox", false, false, &MakeList<CQRNListBox>};
const ListClass kComboBox{"QRNComboBox", true, false, &MakeList<CQRNComboBox>};
const ListClass kExListBox{"QRNExListBox", false, true, &MakeList<CQRNExListBox>};
const ListClass kExComboBox{"QRNExComboBox", true, true, &MakeList<CQRNExComboBox>};

std::vector<const ListClass*> AllLists() {
  return {&kListBox, &kComboBox, &kExListBox, &kExComboBox};
}

void Lists::Insert(const char* code, const char* name, const char* town) {
  PlayedForm form;
  form.texts = {{"Code", code}, {"Name", name}, {"Town", town}};
  PlayedButton button(office_, form, "People");
  ASSERT_EQ(DbButtonInsert(office_.engine, button, false), 0);
}

void Lists::InsertPeople() {
  Insert("3", "さくら", "Kyoto");
  Insert("1", "うめ", "Kyoto");
  Insert("2", "", "Osaka");
  Insert("4", "うめだ", "Nara");
}

HostedControl& Lists::Make(const ListClass& which, bool runs) {
  host_.reset();
  MadeList made = which.make(L"lst1", runs);
  host_ = std::move(made.host);
  list_ = made.list;
  which_ = &which;
  for (const wchar_t* source : {L"DbSource", L"DbListSource"}) Set(source, Text(L"Db1"));
  for (const wchar_t* table : {L"DbTable", L"DbListTable"}) Set(table, Text(L"People"));
  Set(L"DbField", Text(L"Town"));
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

std::string Lists::Events() {
  std::string events;
  std::string& log = host_->events.log;
  for (size_t at = 0; at < log.size();) {
    const size_t end = std::min(log.find(") ", at), log.size() - 2) + 2;
    const std::string event = log.substr(at, end - at);
    if (!event.starts_with("-602") && !event.starts_with("-603") && !event.starts_with("-604") &&
        !event.starts_with("-605") && !event.starts_with("-606") && !event.starts_with("-607")) {
      events += event;
    }
    at = end;
  }
  log.clear();
  return events;
}

}  // namespace qrn::test
