#include "extended/ExOperation.h"

#include <iterator>

namespace qrn {
namespace {

// Row number is the code.
constexpr ExOperation kOperations[] = {
    {13, 37, true},   // OpGetPrevEx: Get Last
    {12, 36, true},   // OpGetNextEx: Get First
    {34, 39, false},  // OpStepPrevEx: Step Last
    {33, 38, false},  // OpStepNextEx: Step First
};

}  // namespace

const ExOperation* FindExOperation(int32_t exOpCode) {
  const bool exists = exOpCode >= 0 && exOpCode < static_cast<int32_t>(std::size(kOperations));
  return exists ? &kOperations[exOpCode] : nullptr;
}

bool IsExtendedOperation(int32_t operation) {
  const int32_t lock = operation / 100;
  const int32_t base = operation % 100;
  return lock >= 0 && lock <= 4 && base >= 36 && base <= 39;
}

bool NeedsKey(int32_t operation) { return operation % 100 <= 37; }

}  // namespace qrn
