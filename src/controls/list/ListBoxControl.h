// The list controls whose window is a list box.
#pragma once

#include "controls/list/ListControl.h"

namespace qrn {

class ListBoxControl : public ListControl {
 public:
  // The selected item's text. A put replaces that item; without a selection it does nothing.
  HRESULT GetText(com::Bstr& text);
  void PutText(const com::Bstr& text);

  std::string SelectedText() override;
  void SelectText(const char* text) override;
  void ClearSelection() override;

  bool OnContainedMessage(com::Message& message) override;

 protected:
  ListBoxControl(const ole::ControlTable& table, const ole::Binding& binding);

  std::optional<ole::ContainedDescription> DescribeContained() override;
  KeyEnd OnKeyDown(MSG& message) override;
  com::Com<IAccessible> MakeAccessible(HWND window) override;
};

}  // namespace qrn
