// The property pages of a control in a frame of the runner's own: tabs, OK, Cancel, Apply.
#pragma once

#include <windows.h>

#include <string>

#include "host/container/ControlClasses.h"

namespace qrn::host {

// Shows the pages a control names and waits until they are closed. Pages that cannot be made are
// left out. False, with no window shown, if the control has no page that can.
bool ShowPropertyPages(HWND owner, const std::wstring& controlName, IUnknown* control,
                       ControlClasses& classes);

// True if the control names a page that can be made.
bool HasPropertyPages(IUnknown* control, ControlClasses& classes);

}  // namespace qrn::host
