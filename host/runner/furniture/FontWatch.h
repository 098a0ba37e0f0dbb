// Hears when a font object changes: code may write Label1.Font.Size = 12.
#pragma once

#include "com/Fonts.h"

namespace qrn::host {

using com::FontWatch;

}  // namespace qrn::host
