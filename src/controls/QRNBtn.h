// QRNBtn: a push button that runs one operation of the record manager with what the controls of its
// form hold, and shows the record that comes back on them. It looks its table up at every click.
#pragma once

#include "binding/FieldBound.h"
#include "core/ButtonOperations.h"
#include "ole/Captioned.h"

namespace qrn {

class CQRNBtn final : public ole::Captioned<TableBound<BoundControl<ole::VisibleControl>>> {
 public:
  CQRNBtn();

  // Properties.
  com::Com<IPictureDisp> Picture;
  com::Bstr DbIndex = com::Bstr::Empty();
  com::Bstr ConfirmMsg = com::Bstr::Empty();
  int32_t DbOperation = DbInsert;
  int32_t Style = 0;  // not 0: the picture instead of the caption
  int16_t Abort = 0;  // set by a handler of `SetData` to refuse the operation
  int16_t ClearControlData = -1;
  int16_t Cancel = 0;  // stored, without effect
  int16_t Default = 0;
  int32_t DbLocks = 0;
  int16_t IndexID = 0;  // position of `DbIndex`, found anew at every click

  void PutStyle(int32_t style);

  // Sets `IndexID` from `DbIndex`: the first key for a name that the table does not have.
  void FindIndex(const DbTableInfo& table);

  // Runs the operation, then raises `Click`.
  void Click();

  ControlType GetControlType() override { return kTypeBtn; }

  bool OnWindowMessage(com::Message& message) override;
  void OnChanged(int32_t id) override;
  void OnFillControlInfo(CONTROLINFO& info) override;

 protected:
  std::optional<ole::ContainedDescription> DescribeContained() override;
  void OnContainedMade() override;
  void OnMnemonicKey() override { Click(); }
  LONG AccessibleRole() const override { return ROLE_SYSTEM_PUSHBUTTON; }
  KeyEnd OnKeyDown(MSG& message) override;

 private:
  bool OnCommand(com::Message& message);
  void FindIndexAtStart();

  static const com::MessageRow<CQRNBtn> kOwnMessages[];
};

}  // namespace qrn
