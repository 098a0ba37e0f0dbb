// The property list of the designer's window.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "com/Handles.h"
#include "host/designer/panes/ObjectBox.h"
#include "host/designer/panes/PaneWindow.h"
#include "host/designer/panes/PropertyRows.h"
#include "host/designer/panes/RowList.h"
#include "host/designer/panes/TypedValue.h"
#include "host/designer/panes/ValueCell.h"
#include "host/designer/panes/Workplace.h"

namespace qrn::designer {

// A list of the form's objects; below it the properties of what is selected, the value of one of
// them in a field or a drop-down list over its row; below that what the property is.
class PropertyPane final : public Pane, private PaneWindow {
 public:
  // `place` outlives the pane; `parent` sizes the pane's window.
  PropertyPane(Workplace& place, HWND parent);
  ~PropertyPane() override { Close(); }

  HWND Window() const noexcept override { return window(); }
  void TakeFocus() override { cell_.TakeFocus(); }
  void OnChange(const ChangeReport& report) override;
  void OnOpened() override;
  bool Settle() override;
  bool PreTranslate(MSG& message) override;

  // A property's row on the screen, once it is scrolled into view; empty if what is selected has no
  // such property.
  RECT PlaceOf(const std::string& property);

 private:
  struct KeyRow;
  static const KeyRow kKeys[];

  bool OnMessage(com::Message& message) override;
  void OnCommand(int id, int code);
  bool OnNotify(const NMHDR& notice, LRESULT* result);
  void OnTyped();
  void OnLeft();
  void OnOffer();
  void OnObject();

  Design& design() const { return place_.design(); }
  PropertyList List() const { return PropertyList(place_.design(), &place_.offers()); }
  void LookForPages();
  void Refresh();
  void Arrange();
  void ShowCell();
  void PlaceCell();
  void Describe();

  void Choose(size_t row);
  void Walk(int steps);
  void JumpTo(char letter);
  bool Take();
  void TakeAside();
  void GiveBack();
  void Put(const Refusal& refusal);
  void GoOn();
  void Reset();
  void OpenDialog();
  void ShowMenu();
  void Undo();

  bool OnKey(UINT key);
  bool OnEnter();
  bool OnEscape();
  bool OnDelete();
  bool OnMove(UINT key);
  bool OnMouse(const MSG& message);

  Workplace& place_;
  ObjectBox objects_;
  RowList list_;
  ValueCell cell_;
  HWND title_ = nullptr;
  HWND description_ = nullptr;
  com::GdiFont bold_;
  bool hasPages_ = false;
  PropertyRows rows_;
  TypedValue typed_;
  bool isChoosing_ = false;
  DWORD chosenAt_ = 0;  // when a row was clicked, in the system's milliseconds
};

}  // namespace qrn::designer
