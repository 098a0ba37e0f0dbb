// Plain values out of a form file's properties. Each throws std::runtime_error with a reason that
// names the property when the value is of another kind.
#pragma once

#include <string>

#include "host/form/FormFile.h"

namespace qrn::host {

std::wstring TextOf(const form::Property& property);
double NumberOf(const form::Property& property);
int WholeOf(const form::Property& property);
// A whole number from `least` to `most`.
int WholeOf(const form::Property& property, int least, int most);
bool TruthOf(const form::Property& property);

}  // namespace qrn::host
