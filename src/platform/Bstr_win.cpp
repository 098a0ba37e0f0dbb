// windows.h comes first.
// clang-format off
#include <windows.h>
#include <oleauto.h>
// clang-format on

#include "platform/BstrAllocation.h"

namespace qrn {

BstrText AllocateSystemBstr(size_t units) {
  return reinterpret_cast<BstrText>(SysAllocStringLen(nullptr, static_cast<UINT>(units)));
}

void FreeBstr(BstrText text) noexcept { SysFreeString(reinterpret_cast<BSTR>(text)); }

}  // namespace qrn
