// QRNExListBox: a list box with several fields of a table's records in a line.
#pragma once

#include "controls/list/ExtendedFill.h"
#include "controls/list/ListBoxControl.h"

namespace qrn {

class CQRNExListBox final : public ExtendedFilled<ListBoxControl> {
 public:
  // Kept so: never parsed. Any text puts a tab between the fields, none a blank.
  com::Bstr DbTabStops = com::Bstr::Empty();

  CQRNExListBox();
  ControlType GetControlType() override { return kTypeExListBox; }

 protected:
  const com::Bstr& DelimiterText() const override { return DbTabStops; }
  std::span<const int32_t> RemadeInDesigner() const override;
};

}  // namespace qrn
