// How a property of the grid answers a host, as automation's own codes.
#pragma once

#include <cstdint>

namespace qrn {

enum class GridResult : uint32_t {
  Done = 0,
  InvalidValue = 0x800A017C,  // error 380
  InvalidIndex = 0x800A017D,  // 381
  NotAvailable = 0x800A018A,  // 394
  NoMemory = 0x8007000E,
};

}  // namespace qrn
