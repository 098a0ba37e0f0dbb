// The faces by which data moves between a field and its controls, one for each kind. A control
// derives from the face of its kind in the place of CQuorin; `GetControlType` tells which it is.
//
// Texts are code page 932, NUL-terminated and the caller's, valid through the call: a control's
// handlers may free what they came from. Controls whose window does not exist do nothing.
#pragma once

#include "binding/CQuorin.h"
#include "core/DbTypes.h"

namespace qrn {

// kTypeEdit.
class EditFace : public CQuorin {
 public:
  virtual WindowHandle ContainedWindow() = 0;

  // Shows a field's text, dressed as the control's properties say.
  virtual void ShowFieldText(const char* text) = 0;

  // Empties `Text` and the window.
  virtual void ClearFieldText() = 0;

 protected:
  ~EditFace() = default;
};

// kTypeCheck and kTypeOptBtn.
class MarkFace : public CQuorin {
 public:
  virtual int32_t GetValue() = 0;

  // Stores `Value`, without touching the mark.
  virtual void SetValue(int32_t value) = 0;

  // BM_SETCHECK: 0 no mark, 1 the mark, 2 the third state.
  virtual void ShowMark(int32_t mark) = 0;

  virtual std::string GetValueTrue() = 0;           // `DbValueTrue`
  virtual std::string GetValueFalse() = 0;          // `DbValueFalse`
  virtual std::string GetValueIndeterminate() = 0;  // `DbValueIndeterminate`, of check boxes alone

 protected:
  ~MarkFace() = default;
};

// kTypePic.
class PictureFace : public CQuorin {
 public:
  // Shows the picture that the field's text names. The table is good until a handler runs.
  virtual void LoadPictureFromField(const DbTableInfo& table, const char* text) = 0;

 protected:
  ~PictureFace() = default;
};

// kTypeListBox, kTypeExListBox, kTypeComboBox, kTypeExComboBox. On Windows binding/ListWindow.h
// does what is asked with a list box or combo box.
class ListFace : public CQuorin {
 public:
  // The selected item's text, empty when there is none; of a combo box with a text of its own
  // (`Style` 0) that text.
  virtual std::string SelectedText() = 0;

  // Selects the item of that text; where there is none a list box keeps its selection, and so does
  // a combo box that has no text of its own.
  virtual void SelectText(const char* text) = 0;

  // Selects nothing; a combo box shows no text.
  virtual void ClearSelection() = 0;

 protected:
  ~ListFace() = default;
};

}  // namespace qrn
