// Properties whose change is more than one line: names, places, the order of the Tab key, the scale
// of a form, the one default button.
#pragma once

#include <string_view>

#include "host/designer/model/Design.h"

namespace qrn::designer {

// Writes a value with everything that goes with it, within a step. The value is of the property's
// kind; for Name it is a text, for Index an empty text takes the control out of its array.
Refusal PutByRules(Design& design, ControlId id, const PropertyInfo& info,
                   const form::PropertyValue& value);

}  // namespace qrn::designer
