// The order in which the Tab key goes through the form: TabIndex, counted over the whole form.
#pragma once

#include <cstdint>
#include <vector>

#include "host/designer/model/Design.h"

namespace qrn::designer {

// Controls that have a TabIndex, in its order; of equal ones the first in the file is first.
std::vector<ControlId> TabOrderOf(const Design& design);

// The TabIndex of a control that is added: one more than the largest.
int32_t NextTabIndex(const Design& design);

// The controls clicked in turn come first, in that order; the others follow as they did. One step.
Refusal PutTabOrder(Design& design, const std::vector<ControlId>& clicked);

// Gives a control its place in the order, counted from 0; those behind move on. Within a step.
Refusal PutTabIndex(Design& design, ControlId id, int32_t index);

// Numbers of controls that were deleted: those behind move up. Within a step.
Refusal CloseTabOrder(Design& design, const std::vector<int32_t>& gone);

}  // namespace qrn::designer
