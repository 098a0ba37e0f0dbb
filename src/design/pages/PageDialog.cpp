#include "design/pages/PageDialog.h"

#include <algorithm>

#include "binding/ListItems.h"
#include "binding/ListWindow.h"
#include "binding/pages/DictionaryFolder.h"
#include "com/Text.h"
#include "com/WindowText.h"
#include "design/pages/ChooseFile.h"

namespace qrn::design {
namespace {

// The operations of a button, by their numbers. One is misspelt, as forms' handbooks have it.
constexpr const char* kOperations[] = {"Insert",
                                       "Update",
                                       "Delete",
                                       "GetEqual",
                                       "GetFirst",
                                       "GetLast",
                                       "GetNext",
                                       "GetPrevious",
                                       "GetGreater",
                                       "GetLessThan",
                                       "GetGreaterOrEuqal",
                                       "GetLessThanOrEqual",
                                       "StepFirst",
                                       "StepLast",
                                       "StepNext",
                                       "StepPrevious",
                                       "InsertNCC",
                                       "UpdateNCC"};

std::optional<com::Variant> TextValue(const std::string& text) {
  return com::Variant(com::WidenToBstr(text));
}

std::optional<PickerLists> PickerOf(HWND dialog, const PageLayout& layout) {
  const auto row = std::ranges::find(layout.controls, Role::FieldList, &PageControl::role);
  if (row == layout.controls.end()) return std::nullopt;
  return PickerLists(dialog, row->id);
}

}  // namespace

PageDialog::PageDialog(HWND dialog, const PageLayout& layout, HWND form)
    : dialog_(dialog),
      layout_(layout),
      picker_(PickerOf(dialog, layout)),
      chains_{{dialog, form, layout.controls, Chain::Bound, nullptr},
              {dialog, form, layout.controls, Chain::List, picker_ ? &*picker_ : nullptr}} {}

void PageDialog::Open(const PageObjects& objects) {
  opening_ = true;
  for (const PageControl& row : layout_.controls) OpenSingle(row, objects);
  for (ChoiceChain& chain : chains_) chain.Open(objects);
  opening_ = false;
}

void PageDialog::OpenSingle(const PageControl& row, const PageObjects& objects) {
  const HWND control = GetDlgItem(dialog_, row.id);
  if (row.role == Role::Directory) {
    SetWindowTextW(control, com::WidenToBstr(objects.Text(row.property)).c_str());
  } else if (row.role == Role::Operation) {
    FillList(control, NameList(std::begin(kOperations), std::end(kOperations)));
    ListItems(control, kComboBoxMessages).Select(objects.Number(row.property));
  }
}

const PageControl* PageDialog::RowOf(int id) const {
  const auto row = std::ranges::find(layout_.controls, id, &PageControl::id);
  return row != layout_.controls.end() ? &*row : nullptr;
}

bool PageDialog::OnCommand(int id, int notice) {
  if (opening_) return false;
  if (notice == BN_CLICKED) return OnButton(id);
  const PageControl* row = RowOf(id);
  if (!row) return false;
  if (row->role == Role::Directory) return notice == EN_CHANGE;
  return notice == CBN_SELCHANGE && row->role != Role::FieldList && OnChoice(*row);
}

bool PageDialog::OnChoice(const PageControl& row) {
  for (ChoiceChain& chain : chains_) {
    if (chain.Has(row)) chain.RefillBelow(row.role);
  }
  return true;
}

bool PageDialog::OnButton(int id) {
  if (id == item::kBrowse) Browse();
  return picker_ && picker_->OnButton(id);
}

// The text's change marks the page.
void PageDialog::Browse() {
  const HWND dialog = dialog_;
  const auto chosen = ChooseDictionaryFile(dialog);
  if (!chosen || !IsWindow(dialog)) return;
  for (const PageControl& row : layout_.controls) {
    if (row.role != Role::Directory) continue;
    SetDlgItemTextW(dialog, row.id, com::WidenToBstr(DictionaryFolder(*chosen)).c_str());
  }
}

std::optional<com::Variant> PageDialog::ValueOf(const PageControl& row) const {
  const HWND control = GetDlgItem(dialog_, row.id);
  if (row.role == Role::Directory) {
    return TextValue(
        CutToBytes(com::NarrowText(com::Bstr(com::TextOfWindow(control))), kLongestDirectory));
  }
  if (row.role == Role::FieldList) {
    if (picker_->text().empty()) return std::nullopt;
    return TextValue(CutToBytes(picker_->text(), FieldPicker::kAppliedBytes));
  }
  const auto chosen = ChosenIn(control);
  if (!chosen) return std::nullopt;
  if (row.role != Role::Operation) return TextValue(*chosen);
  return com::Variant(ListItems(control, kComboBoxMessages).Selected());
}

std::vector<PropertyValue> PageDialog::Values() const {
  std::vector<PropertyValue> values;
  for (const PageControl& row : layout_.controls) {
    if (auto value = ValueOf(row)) values.push_back({row.property, std::move(*value)});
  }
  return values;
}

}  // namespace qrn::design
