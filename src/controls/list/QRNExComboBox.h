// QRNExComboBox: a combo box with several fields of a table's records in a line.
#pragma once

#include "controls/list/ComboControl.h"
#include "controls/list/ExtendedFill.h"

namespace qrn {

class CQRNExComboBox final : public ExtendedFilled<ComboControl> {
 public:
  CQRNExComboBox();
  ControlType GetControlType() override { return kTypeExComboBox; }
};

}  // namespace qrn
