// What the container tells of the form that a control stands on. It is asked late-bound, as code of
// the form would ask: the extended control that stands for the control there has a `Parent`, and
// that has a name and a window. Visual Basic's forms are reached in no other way.
#pragma once

#include <optional>
#include <string>

#include "ole/ClientSite.h"
#include "platform/WindowText.h"

namespace qrn {

// Nothing after a message: VE808 to VE811 say at which step.
std::optional<std::string> FormNameOf(const ole::ClientSite& site);
std::optional<WindowHandle> FormWindowOf(const ole::ClientSite& site);

}  // namespace qrn
