// What stands in a page's dialog: its drop-down lists, its field picker, its directory.
#pragma once

#include <windows.h>

#include <optional>
#include <vector>

#include "com/Variant.h"
#include "design/pages/ChoiceChain.h"

namespace qrn::design {

struct PropertyValue {
  const char* property;
  com::Variant value;
};

class PageDialog {
 public:
  // `dialog` was made from the template of `layout`; `form` is where the page's objects stand.
  PageDialog(HWND dialog, const PageLayout& layout, HWND form);
  PageDialog(const PageDialog&) = delete;
  PageDialog& operator=(const PageDialog&) = delete;

  // Shows what the objects have.
  void Open(const PageObjects& objects);

  // A control of the dialog tells of something. True if there is now something to apply. The button
  // of the directory runs a dialog of the system, in which the dialog
  // may end; whoever calls keeps this object.
  bool OnCommand(int id, int notice);

  // What is to be put, in the order of the rows. What is not chosen is left out.
  std::vector<PropertyValue> Values() const;

 private:
  const PageControl* RowOf(int id) const;
  std::optional<com::Variant> ValueOf(const PageControl& row) const;
  void OpenSingle(const PageControl& row, const PageObjects& objects);
  bool OnChoice(const PageControl& row);
  bool OnButton(int id);
  void Browse();

  HWND dialog_;
  const PageLayout& layout_;
  std::optional<PickerLists> picker_;
  ChoiceChain chains_[2];
  bool opening_ = false;
};

}  // namespace qrn::design
