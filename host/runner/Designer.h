// A form while it is designed.
#pragma once

#include "host/form/KeyNames.h"

namespace qrn::host {

// True for keys that mean something to a form being designed: F4 for the property pages, and those
// of its window (Alt+F4, Alt+Space, F10). No other key goes anywhere.
bool IsDesignerKey(const form::KeyChord& chord) noexcept;

}  // namespace qrn::host
