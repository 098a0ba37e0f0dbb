// The form as the runner is to show it while it is designed: what it does not know is left out or
// has a box standing for it, what is hidden at run time is shown.
#pragma once

#include "host/designer/model/Design.h"
#include "host/form/FormFile.h"

namespace qrn::designer {

// Every control and property has a number of its own as its line, by which mistakes tell of it. No
// libraries, no code: whoever shows the form brings its classes. References to the form's companion
// go to companion().name(), at the offsets of companion().bytes().
form::FormFile ShownForm(const Design& design);
// A control by itself, without what lies in it.
form::ControlNode ShownControl(const Design& design, ControlId id);

// Takes out what mistakes tell of: a property, or a control, for which a box stands then. False if
// there is nothing to take out: the form cannot be shown.
bool TakeOut(form::FormFile* file, const form::Mistakes& mistakes);
bool TakeOut(form::ControlNode* control, const form::Mistakes& mistakes);

}  // namespace qrn::designer
