// The drawing of a form: every control in its place, in the order of the Tab key.
#pragma once

#include <string>

#include "host/newform/FormLayout.h"
#include "host/newform/FormPart.h"

namespace qrn::newform {

FormPart DrawForm(const FormPlan& plan, const FormLayout& layout);

}  // namespace qrn::newform
