// What a control of a class says of itself when it is new: its lines in a form file, its values,
// its size.
#pragma once

#include <oaidl.h>

#include "host/container/ComObject.h"
#include "host/designer/model/ClassInfo.h"

namespace qrn::designer {

// Fills firstProperties (what the control saves of itself when new), the initial values of the
// properties that it does not save then, width, height, hasSize and holdsOthers. What the control
// does not tell stays as it is. The control needs no form; it is let go afterwards.
void AskFreshControl(const host::Com<IUnknown>& control, ClassInfo* info);

}  // namespace qrn::designer
