// Persisted items as variants and back: texts, numbers, and fonts and pictures in their own bytes.
#pragma once

#include "ole/Kit.h"
#include "ole/tables/PersistStream.h"

namespace qrn::ole {

// The item that stands for a value of one of the persisted types. Throws Failure where an object
// cannot be persisted.
PersistedItem ItemOf(const VARIANT& value);

// The value that an item stands for; an object is made anew from its bytes. Throws Failure.
Variant ValueOf(const PersistedItem& item);

}  // namespace qrn::ole
