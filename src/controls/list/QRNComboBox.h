// QRNComboBox: a combo box filled with one field of a table's records.
#pragma once

#include "controls/list/ComboControl.h"
#include "controls/list/PlainFill.h"

namespace qrn {

class CQRNComboBox final : public PlainFilled<ComboControl> {
 public:
  CQRNComboBox();
  ControlType GetControlType() override { return kTypeComboBox; }
};

}  // namespace qrn
