// The COM kit, whose names the control service uses as its own.
#pragma once

#include "com/Bstr.h"
#include "com/Com.h"
#include "com/Guard.h"
#include "com/Handles.h"
#include "com/Message.h"
#include "com/Text.h"
#include "com/Variant.h"

namespace qrn::ole {

using namespace com;

}  // namespace qrn::ole
