// From an operation number to what answers it.
#pragma once

#include "btrieve/operations/Call.h"

namespace btrieve {

// Decodes the operation, checks what its row demands, runs it. Throws Failure.
[[nodiscard]] Status RunCall(Call& call, uint16_t operation);

}  // namespace btrieve
