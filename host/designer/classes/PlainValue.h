// Values of controls as lines of form files have them.
#pragma once

#include <oaidl.h>

#include <optional>

#include "host/form/FormFile.h"

namespace qrn::designer {

// Numbers and texts; an object (a font, a picture) is none.
std::optional<form::PropertyValue> PlainValue(VARIANT& value);

}  // namespace qrn::designer
