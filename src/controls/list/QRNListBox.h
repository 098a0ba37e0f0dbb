// QRNListBox: a list box filled with one field of a table's records.
#pragma once

#include "controls/list/ListBoxControl.h"
#include "controls/list/PlainFill.h"

namespace qrn {

class CQRNListBox final : public PlainFilled<ListBoxControl> {
 public:
  CQRNListBox();
  ControlType GetControlType() override { return kTypeListBox; }

 protected:
  // Kept so: an index that was never put leaves the list empty. A combo box takes the first key.
  bool IsFillable() const override { return !DbListIndex.null(); }
  std::span<const int32_t> RemadeInDesigner() const override;
};

}  // namespace qrn
