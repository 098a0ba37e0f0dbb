// The allocator of the test program: on demand one allocation fails.
#pragma once

#include "tests/support/Company.h"

namespace qrn::test {

// From its making on, the engine's allocation number `failing` (from 0) fails, and that one alone.
// `operator new` and platform/Memory.h count alike; what the record manager and the dictionary
// library allocate for themselves does not count.
class FailingMemory : Pinned {
 public:
  explicit FailingMemory(int failing);
  ~FailingMemory();

  bool Happened() const;
};

// Nothing is counted while it lives: the test's own code.
class NotCounted : Pinned {
 public:
  NotCounted();
  ~NotCounted();
};

}  // namespace qrn::test
