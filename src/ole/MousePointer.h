// The cursors that the MousePointer property names.
#pragma once

#include <ocidl.h>

namespace qrn::ole {

inline constexpr int kPointerUserDefined = 99;

// Shows the cursor of a MousePointer value; `icon` is the one for 99. False for the default, for a
// value that names none, and for 99 without an icon: the window then shows its own.
bool MapMousePointer(int pointer, IPictureDisp* icon) noexcept;

}  // namespace qrn::ole
