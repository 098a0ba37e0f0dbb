// The process's way to the input method, beside the registry of its controls.
#pragma once

#include "ole/ImeApi.h"

namespace qrn {

// Found at first use, which the module makes its load.
ole::ImeApi& TheInputMethod();

}  // namespace qrn
