// Death at a chosen write to a file.
#pragma once

#include <cstdint>

namespace btrieve::test {

// From now on counts what the storage writes, cuts or removes; at the n-th time the process dies,
// of a write half being done. 0 does nothing.
void KillAtWrite(uint32_t n);

}  // namespace btrieve::test
