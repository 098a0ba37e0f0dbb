#include "design/pages/ChoiceChain.h"

#include "binding/ListItems.h"
#include "com/Text.h"

namespace qrn::design {
namespace {

int32_t FindFrom(HWND list, int32_t before, const wchar_t* text) {
  return static_cast<int32_t>(SendMessageW(list, CB_FINDSTRINGEXACT, static_cast<WPARAM>(before),
                                           reinterpret_cast<LPARAM>(text)));
}

// The search of the window ignores case, and starts over at the end.
int32_t FindLine(const ListItems& items, HWND list, const com::Bstr& text) {
  const int32_t first = FindFrom(list, ListItems::kNone, text.c_str());
  for (int32_t line = first; line != ListItems::kNone;) {
    if (items.Text(line) == text.view()) return line;
    const int32_t next = FindFrom(list, line, text.c_str());
    if (next <= line) break;
    line = next;
  }
  return first;
}

bool IsList(Role role) noexcept { return role <= Role::Index || role == Role::FieldList; }

}  // namespace

void FillList(HWND list, const NameList& names) {
  const ListItems items(list, kComboBoxMessages);
  items.Reset();
  for (const std::string& name : names) items.Add(com::WidenToBstr(name).c_str());
}

std::optional<std::string> ChosenIn(HWND list) {
  const ListItems items(list, kComboBoxMessages);
  if (items.Selected() == ListItems::kNone) return std::nullopt;
  return com::NarrowText(com::Bstr(items.SelectedText()));
}

void ChooseIn(HWND list, std::string_view text) {
  const ListItems items(list, kComboBoxMessages);
  items.Select(FindLine(items, list, com::WidenToBstr(text)));
}

ChoiceChain::ChoiceChain(HWND dialog, HWND form, std::span<const PageControl> rows, Chain chain,
                         PickerLists* picker)
    : dialog_(dialog), form_(form), rows_(rows), chain_(chain), picker_(picker) {}

std::optional<std::string> ChoiceChain::Chosen(Role role) const {
  for (const PageControl& row : rows_) {
    if (Has(row) && row.role == role) return ChosenIn(GetDlgItem(dialog_, row.id));
  }
  return std::nullopt;
}

NameList ChoiceChain::Offered(Role role) const {
  if (role == Role::Source) return FillSources(form_);
  const auto source = Chosen(Role::Source);
  if (!source) return {};
  if (role == Role::Table) return FillTables(form_, *source);
  const auto table = Chosen(Role::Table);
  if (!table) return {};
  return role == Role::Index ? FillIndexes(form_, *source, *table)
                             : FillFields(form_, *source, *table);
}

void ChoiceChain::Fill(const PageControl& row, const std::string& value) {
  if (row.role == Role::FieldList) return picker_->Start(Offered(row.role), value);
  const HWND list = GetDlgItem(dialog_, row.id);
  FillList(list, Offered(row.role));
  if (!value.empty()) ChooseIn(list, value);
}

void ChoiceChain::Open(const PageObjects& objects) {
  for (const PageControl& row : rows_) {
    if (Has(row) && IsList(row.role)) Fill(row, objects.Text(row.property));
  }
}

void ChoiceChain::RefillBelow(Role changed) {
  if (changed > Role::Table) return;
  for (const PageControl& row : rows_) {
    if (Has(row) && IsList(row.role) && row.role > changed) Fill(row, {});
  }
}

}  // namespace qrn::design
