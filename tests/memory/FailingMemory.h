// The allocator of the test program: on demand one allocation fails.
#pragma once

#include "tests/support/Company.h"
#include "tests/support/Test.h"

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

// `round` with 0, 1, ... for the allocation that is to fail, until it tells that none has failed.
void FailEachInTurn(const std::function<bool(int failing)>& round);

// Whether the allocation failed while `work` was done.
template <class Work>
bool FailsIn(int failing, Work work) {
  const FailingMemory memory(failing);
  work();
  return memory.Happened();
}

}  // namespace qrn::test
