// What property pages changed in a live control, taken over into the design.
#pragma once

#include <vector>

#include "host/container/ComObject.h"
#include "host/designer/classes/SavedState.h"
#include "host/designer/model/Design.h"

namespace qrn::designer {

class PageChanges {
 public:
  // Before the pages are shown.
  explicit PageChanges(const host::Com<IUnknown>& control)
      : control_(control), before_(SavedStateOf(control.get())) {}

  // One step: lines, fonts and pictures that differ now. Nothing happens where none does.
  Refusal PutInto(Design& design, ControlId id) const;

 private:
  host::Com<IUnknown> control_;
  std::vector<SavedProperty> before_;
};

}  // namespace qrn::designer
