// The field picker of a page as its controls show it: the text of the list, the fields on offer
// (sorted by their window), those chosen, and the four buttons between them.
#pragma once

#include <windows.h>

#include "binding/pages/FieldPicker.h"

namespace qrn::design {

class PickerLists {
 public:
  // `textId` is the control that shows the list's text.
  PickerLists(HWND dialog, int textId) noexcept : dialog_(dialog), textId_(textId) {}

  void Start(NameList fields, const std::string& list);
  // A button of the picker was pressed. False for another control, and where nothing moved.
  bool OnButton(int id);

  const std::string& text() const noexcept { return picker_.text(); }

 private:
  NameList Shown() const;
  void Show() const;
  void Enable() const;

  HWND dialog_;
  int textId_;
  FieldPicker picker_;
};

}  // namespace qrn::design
