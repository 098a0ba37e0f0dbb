// The code behind a new form: what its controls cannot do by their properties alone.
#pragma once

#include <string>

#include "host/newform/FormLayout.h"

namespace qrn::newform {

// UTF-8, lines end with CR LF.
std::string FormCode(const FormPlan& plan, const FormLayout& layout);

}  // namespace qrn::newform
