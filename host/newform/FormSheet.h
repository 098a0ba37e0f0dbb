// The drawing of a form: every control in its place, in the order of the Tab key.
#pragma once

#include <string>

#include "host/newform/FormPart.h"
#include "host/newform/FormPlan.h"

namespace qrn::newform {

// Lays out and draws the form. Sets the plan's pages.
FormPart DrawForm(FormPlan& plan);

}  // namespace qrn::newform
