// What a check box and an option button share: a "Button" window with a mark, the texts of a field
// that stand for its states, and the names of the field.
//
// `Value` and the mark are two things. Showing a record sets both, a put of `Value` only the
// number, a clearing only the mark; what a click does differs by class.
#pragma once

#include "binding/BoundFaces.h"
#include "binding/FieldBound.h"
#include "ole/Captioned.h"

namespace qrn {

class MarkControl : public ole::Captioned<FieldBound<MarkFace>> {
 public:
  // Properties.
  com::Bstr DbValueTrue = com::Bstr(L"1");
  com::Bstr DbValueFalse = com::Bstr(L"0");
  int16_t Value = 0;
  int32_t Alignment = 0;  // 1: the text to the left of the mark

  // MarkFace
  int32_t GetValue() override { return Value; }
  void SetValue(int32_t value) override { Value = static_cast<int16_t>(value); }
  void ShowMark(int32_t mark) override;
  std::string GetValueTrue() override { return NarrowText(DbValueTrue); }
  std::string GetValueFalse() override { return NarrowText(DbValueFalse); }
  std::string GetValueIndeterminate() override { return {}; }

  bool OnWindowMessage(com::Message& message) override;

 protected:
  // `buttonStyle` is the kind of button: BS_CHECKBOX or BS_AUTORADIOBUTTON.
  MarkControl(const ole::ControlTable& table, const ole::Binding& binding, DWORD buttonStyle);

  // The user clicked: sets `Value` and the mark. The event comes after it.
  virtual void TakeClick() = 0;
  void Click();
  void OnMnemonicKey() override { Click(); }
  LONG AccessibleRole() const override {
    return buttonStyle_ == BS_CHECKBOX ? ROLE_SYSTEM_CHECKBUTTON : ROLE_SYSTEM_RADIOBUTTON;
  }

  std::optional<ole::ContainedDescription> DescribeContained() override;
  std::span<const int32_t> RemadeInDesigner() const override;

 private:
  bool OnCommand(com::Message& message);

  static const com::MessageRow<MarkControl> kOwnMessages[];

  const DWORD buttonStyle_;
};

}  // namespace qrn
