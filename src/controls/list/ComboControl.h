// The list controls whose window is a combo box.
#pragma once

#include <memory>
#include <vector>

#include "controls/list/ListControl.h"
#include "ole/InnerWindow.h"

namespace qrn {

enum ComboStyle : int32_t { kDropDownCombo = 0, kNormalCombo = 1, kDropDownList = 2 };

class ComboControl : public ListControl {
 public:
  com::Bstr Text = com::Bstr::Empty();  // as last known: the window's is asked for first
  int32_t Style = kDropDownCombo;
  int32_t IMEMode = 0;

  HRESULT GetText(com::Bstr& text);
  void PutText(const com::Bstr& text);
  void PutStyle(int32_t style);  // a window in place is made anew, without its items

  // The selection in the edit part, in characters, of a drop-down combo at run time: all others
  // fail, gets with 394, puts with 383. Positions travel packed, 16 bits each.
  HRESULT GetSelStart(int32_t& start);
  HRESULT PutSelStart(int32_t start);
  HRESULT GetSelLength(int32_t& length);
  HRESULT PutSelLength(int32_t length);
  HRESULT GetSelText(com::Bstr& text);
  HRESULT PutSelText(const com::Bstr& text);

  std::string SelectedText() override;
  void SelectText(const char* text) override;
  void ClearSelection() override;

  void AdjustExtent(SIZE& himetric) override;

 protected:
  ComboControl(const ole::ControlTable& table, const ole::Binding& binding);

  std::optional<ole::ContainedDescription> DescribeContained() override;
  void OnContainedMade() override;
  void LayOut(const RECT& client) override;
  void OnNotice(WORD code) override;
  KeyEnd OnKeyDown(MSG& message) override;
  com::Com<IAccessible> MakeAccessible(HWND window) override;

 private:
  struct Selection {
    WORD start;
    WORD end;
  };
  bool HasSelection() const noexcept;
  Selection GetSelection() const noexcept;
  void Select(Selection selection) const noexcept;
  int LineHeight();

  // Whether the text may be anything, and not an item's alone.
  bool HasOwnText() const noexcept { return Style == kDropDownCombo; }

  // Its line and its list; the line of a drop-down list is the combo box itself.
  COMBOBOXINFO Inside() const noexcept;

  std::vector<std::unique_ptr<ole::InnerWindow>> inside_;
};

}  // namespace qrn
