// The status codes of the record manager: 0 is success, every other number is an answer a caller
// acts upon (include/btrieve.h).
#pragma once

#include <cstdint>

#include "btrieve.h"

namespace btrieve {

using Status = int16_t;

// kOk, kKeyNotFound and so on.
#define BTRIEVE_STATUS(name, number) inline constexpr Status k##name = (number);
BTR_STATUSES(BTRIEVE_STATUS)
#undef BTRIEVE_STATUS

}  // namespace btrieve
