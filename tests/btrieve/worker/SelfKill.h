// Death, or a halt, at a chosen moment of the storage's work.
#pragma once

#include <cstdint>

namespace btrieve::test {

enum class Moments : uint8_t {
  Writes,  // writing, cutting or removing a file
  All,     // also locking, unlocking and publishing in shared memory
};

// To be called once, before the first call of the record manager. False when it cannot be done.
[[nodiscard]] bool PrepareToDie();

// From now on counts such moments; at the n-th one the process dies, of a write half being done. 0
// does nothing.
void KillAt(uint32_t n, Moments moments = Moments::Writes);

// The same for standing still at the n-th of all moments, until somebody lets the process go on.
void HaltAt(uint32_t n);

}  // namespace btrieve::test
