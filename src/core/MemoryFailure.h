#pragma once

#include <new>

#include "core/ReturnCodes.h"

namespace qrn {

// Shows VE001 with this folder's source name and the caller's line.
void ReportMemoryFailure(int line = __builtin_LINE()) noexcept;

// What `body` gives; -1 after VE001 where it finds no memory.
template <class Body>
Status OrNoMemory(Body body, int line = __builtin_LINE()) {
  try {
    return body();
  } catch (const std::bad_alloc&) {
    ReportMemoryFailure(line);
    return kFailure;
  }
}

}  // namespace qrn
