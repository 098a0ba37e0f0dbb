// QRNCheck: a field as a mark of three states.
#pragma once

#include "controls/mark/MarkControl.h"

namespace qrn {

class CQRNCheck final : public MarkControl {
 public:
  com::Bstr DbValueIndeterminate = com::Bstr::Empty();

  CQRNCheck();
  ControlType GetControlType() override { return kTypeCheck; }
  std::string GetValueIndeterminate() override { return NarrowText(DbValueIndeterminate); }

 protected:
  void TakeClick() override;
};

}  // namespace qrn
