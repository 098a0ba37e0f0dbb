// Forms that lie beside a form and that its code names.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/runner/FormSource.h"

namespace qrn::host {

// Paths of the form files in the form's own folder whose names its code says, but for those that
// `isKnown`; by the files' names in order. A folder that cannot be read has none. Names are
// those that code uses (VB_Name), not the files'.
std::vector<std::string> FormsNamedBy(const FormSource& source,
                                      const std::function<bool(const std::string& name)>& isKnown);

}  // namespace qrn::host
