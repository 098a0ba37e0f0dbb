// QRNOptBtn: one choice of several that are bound to one field. Each stands in a window of its own,
// where the system's grouping of option buttons does not reach: buttons of the same three names are
// the group.
#pragma once

#include <vector>

#include "controls/mark/MarkControl.h"

namespace qrn {

class CQRNOptBtn final : public MarkControl {
 public:
  CQRNOptBtn();
  ControlType GetControlType() override { return kTypeOptBtn; }

  bool OnWindowMessage(com::Message& message) override;
  bool OnContainedMessage(com::Message& message) override;

 protected:
  void TakeClick() override;
  void OnMnemonicKey() override { Choose(); }
  KeyEnd OnKeyDown(MSG& message) override;

 private:
  // Registered buttons of the same names, this one among them, in the order of registration.
  std::vector<CQRNOptBtn*> Group() const;
  void ClearGroup();
  // The button of this form to which an arrow leads; null without one.
  CQRNOptBtn* Neighbour(bool back);
  void Choose();

  bool focusComes_ = false;
};

}  // namespace qrn
