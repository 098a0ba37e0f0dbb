// Ids of rows as the system has them: the same 16 bytes.
#pragma once

#include <guiddef.h>

#include "ole/tables/Guid.h"

namespace qrn::ole {

static_assert(sizeof(Guid) == sizeof(GUID));

inline const GUID& AsGuid(const Guid& id) noexcept { return reinterpret_cast<const GUID&>(id); }
inline Guid FromGuid(const GUID& id) noexcept { return reinterpret_cast<const Guid&>(id); }

}  // namespace qrn::ole
