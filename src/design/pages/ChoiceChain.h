// Drop-down lists of which each offers what belongs to the choice in the one above: the sources of
// a form, the tables of a source, its table's fields and keys.
#pragma once

#include <windows.h>

#include <optional>
#include <span>
#include <string>

#include "binding/pages/Choices.h"
#include "design/pages/PageObjects.h"
#include "design/pages/PageRows.h"
#include "design/pages/PickerLists.h"

namespace qrn::design {

// A drop-down list of a dialog, and its choice as text (code page 932).
void FillList(HWND list, const NameList& names);
std::optional<std::string> ChosenIn(HWND list);
// Chooses the line of that text: the very one, or one that differs in case where there is none. No
// line, no choice.
void ChooseIn(HWND list, std::string_view text);

class ChoiceChain {
 public:
  // `rows` are a page's, of which this takes those of `chain`; `picker` is null without one.
  ChoiceChain(HWND dialog, HWND form, std::span<const PageControl> rows, Chain chain,
              PickerLists* picker);

  // Fills the lists and chooses what the properties say, as far as it is there.
  void Open(const PageObjects& objects);
  // Fills what hangs below a row of this chain, whose choice changed.
  void RefillBelow(Role changed);

  bool Has(const PageControl& row) const noexcept { return row.chain == chain_; }

 private:
  std::optional<std::string> Chosen(Role role) const;
  NameList Offered(Role role) const;
  void Fill(const PageControl& row, const std::string& value);

  HWND dialog_;
  HWND form_;
  std::span<const PageControl> rows_;
  Chain chain_;
  PickerLists* picker_;
};

}  // namespace qrn::design
