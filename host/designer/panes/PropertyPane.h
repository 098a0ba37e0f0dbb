// The property list of the designer's window.
#pragma once

#include <memory>

#include "host/designer/panes/Workplace.h"

namespace qrn::designer {

// A list of the form's objects; below it the properties of what is selected, the value of one of
// them in a field or a drop-down list over its row; below that what the property is. `place`
// outlives the pane; `parent` sizes the pane's window.
std::unique_ptr<Pane> MakePropertyPane(Workplace& place, HWND parent);

}  // namespace qrn::designer
