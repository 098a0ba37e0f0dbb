// The four extended reads, as controls name them (`DbExOperation`) and as the record manager does.
#pragma once

#include <cstdint>

namespace qrn {

enum ExOpCode : int32_t { OpGetPrevEx = 0, OpGetNextEx = 1, OpStepPrevEx = 2, OpStepNextEx = 3 };

struct ExOperation {
  uint16_t first;     // goes to the record that the extended reads begin with
  uint16_t extended;  // reads a batch from there
  bool alongKey;      // otherwise in the file's own order, without a key
};

// Null for a code of no row.
const ExOperation* FindExOperation(int32_t exOpCode);

// True for 36 to 39, plus 0, 100, 200, 300 or 400 for the lock.
bool IsExtendedOperation(int32_t operation);

// Of those, true for the ones along a key.
bool NeedsKey(int32_t operation);

}  // namespace qrn
