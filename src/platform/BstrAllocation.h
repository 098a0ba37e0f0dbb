// What Bstr.cpp needs of the system.
#pragma once

#include "platform/Bstr.h"

namespace qrn {

// `units` UTF-16 units, contents unset, with the prefix set and the terminator in place; null when
// memory is short.
BstrText AllocateSystemBstr(size_t units);

}  // namespace qrn
