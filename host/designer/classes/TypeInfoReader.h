// Properties and events of a control's class from its type information.
#pragma once

#include <oaidl.h>

#include <vector>

#include "host/designer/model/ClassInfo.h"

namespace qrn::designer {

// Properties that can be read without arguments, in the library's order. Those that cannot be set
// are read-only; what the library hides is hidden. `face` is the class's default interface.
std::vector<PropertyInfo> ReadProperties(ITypeInfo* face);

// `events` is the class's default source, null for a class without events.
std::vector<EventInfo> ReadEvents(ITypeInfo* events);

// The event marked as the usual one, else Click, Change, the first; empty if there are none.
std::string UsualEventOf(ITypeInfo* events, const std::vector<EventInfo>& list);

}  // namespace qrn::designer
