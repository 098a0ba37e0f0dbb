// What the binding knows of a control: its names, its form, its kind, and what it does when its
// data comes or moves. The registry holds controls by this face and calls them through it; what
// differs by kind goes through the small faces of binding/BoundFaces.h.
//
// Texts are code page 932 bytes, as the registry compares them. Handlers of the application may run
// inside any of the calls that do something (from `OnDataControlReady` on): a control keeps itself
// alive through them, and a caller looks its entry up again afterwards.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/WindowText.h"

namespace qrn {

// What GetControlType gives.
enum ControlType : int32_t {
  kTypeBtr = 1,
  kTypeBtn = 2,
  kTypeScroll = 3,  // both of them
  kTypeListBox = 4,
  kTypeComboBox = 5,
  kTypeExListBox = 6,
  kTypeExComboBox = 7,
  kTypeGrid = 8,
  kTypeEdit = 9,
  kTypeCheck = 10,
  kTypeOptBtn = 11,
  kTypePic = 12,
};

// A text as a host may have put it: null and empty are told apart.
using NullableText = std::optional<std::string>;

class CQuorin {
 public:
  CQuorin(const CQuorin&) = delete;
  CQuorin& operator=(const CQuorin&) = delete;

  // Ends the control while its container may still hold references: another control of its name has
  // taken its place on the form. It loses its window and its site.
  virtual void Destroy() = 0;

  // The name that the container gave the control; empty if it gives none.
  virtual std::string GetControlName() = 0;

  // The form that the control stands on, null without one. Frames and tab controls are seen through
  // (ole/ClientSite.h).
  virtual WindowHandle GetContainerWindow() = 0;

  // The database control that the list of a list control or grid comes from.
  virtual std::string GetDbSourceRef() { return own_; }

  // Of a scroll bar the database control, not the table.
  virtual std::string GetDbTableRef() { return own_; }

  virtual ControlType GetControlType() = 0;

  // Of a list control or grid the low word of `DbUpdateOption`: above 0 it fills itself when its
  // database control starts.
  virtual uint16_t GetUpdateOption() { return 0; }

  // The bound field and its table. A field control with a null text is not registered.
  virtual NullableText GetBoundField() { return own_; }
  virtual NullableText GetBoundTable() { return own_; }

  // Scroll bars: the database control is ready; another control moved to another record of the
  // table along the key at an index position.
  virtual void OnDataControlReady() {}
  virtual void OnPositionChanged(const std::string& /*tableName*/, int32_t /*indexId*/) {}

  // List controls and the grid fill themselves anew.
  virtual void ReloadList() {}

 protected:
  CQuorin() = default;
  ~CQuorin() = default;  // controls are counted, never deleted by way of this face

 private:
  std::string own_;  // what a control without such a property answers
};

}  // namespace qrn
