#include "design/pages/PickerLists.h"

#include "binding/ListItems.h"
#include "com/Text.h"
#include "design/pages/PageRows.h"

namespace qrn::design {
namespace {

ListItems ItemsOf(HWND dialog, int id) { return {GetDlgItem(dialog, id), kListBoxMessages}; }

void Fill(const ListItems& items, const NameList& names) {
  items.Reset();
  for (const std::string& name : names) items.Add(com::WidenToBstr(name).c_str());
}

// A button that goes dark under the keyboard hands it on.
void EnableButton(HWND dialog, int id, bool enabled) {
  const HWND button = GetDlgItem(dialog, id);
  if (!enabled && GetFocus() == button) {
    SetFocus(GetNextDlgTabItem(dialog, button, FALSE));
  }
  EnableWindow(button, enabled ? TRUE : FALSE);
}

}  // namespace

NameList PickerLists::Shown() const {
  const ListItems items = ItemsOf(dialog_, item::kOffered);
  NameList names;
  for (int32_t i = 0; i < items.Count(); ++i)
    names.push_back(com::NarrowText(com::Bstr(items.Text(i))));
  return names;
}

void PickerLists::Start(NameList fields, const std::string& list) {
  picker_.Start(std::move(fields), list);
  Show();
}

bool PickerLists::OnButton(int id) {
  const std::string before = picker_.text();
  const ListItems offered = ItemsOf(dialog_, item::kOffered);
  const ListItems chosen = ItemsOf(dialog_, item::kChosen);
  switch (id) {
    case item::kChoose:
      picker_.Choose(com::NarrowText(com::Bstr(offered.SelectedText())));
      break;
    case item::kChooseAll:
      picker_.ChooseAll(Shown());
      break;
    case item::kGiveBack:
      if (chosen.Selected() != ListItems::kNone) {
        picker_.GiveBack(static_cast<size_t>(chosen.Selected()));
      }
      break;
    case item::kGiveBackAll:
      picker_.GiveBackAll();
      break;
    default:
      return false;
  }
  if (picker_.text() == before) return false;
  Show();
  return true;
}

void PickerLists::Show() const {
  Fill(ItemsOf(dialog_, item::kOffered), picker_.offered());
  Fill(ItemsOf(dialog_, item::kChosen), picker_.chosen());
  SetDlgItemTextW(dialog_, textId_, com::WidenToBstr(picker_.text()).c_str());
  Enable();
}

// What comes into play first: a button that goes out of it may have the keyboard.
void PickerLists::Enable() const {
  const bool mayChoose = !picker_.offered().empty();
  const bool mayGiveBack = !picker_.chosen().empty();
  for (const bool enabled : {true, false}) {
    for (const int id : {item::kChoose, item::kChooseAll}) {
      if (mayChoose == enabled) EnableButton(dialog_, id, enabled);
    }
    for (const int id : {item::kGiveBack, item::kGiveBackAll}) {
      if (mayGiveBack == enabled) EnableButton(dialog_, id, enabled);
    }
  }
}

}  // namespace qrn::design
