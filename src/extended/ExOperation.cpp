#include "extended/ExOperation.h"

#include <iterator>

#include "btrieve.h"

namespace qrn {
namespace {

// Row number is the code.
constexpr ExOperation kOperations[] = {
    {BtrOpGetLast, BtrOpGetPreviousExtended, true},     // OpGetPrevEx: Get Last
    {BtrOpGetFirst, BtrOpGetNextExtended, true},        // OpGetNextEx: Get First
    {BtrOpStepLast, BtrOpStepPreviousExtended, false},  // OpStepPrevEx: Step Last
    {BtrOpStepFirst, BtrOpStepNextExtended, false},     // OpStepNextEx: Step First
};

}  // namespace

const ExOperation* FindExOperation(int32_t exOpCode) {
  const bool exists = exOpCode >= 0 && exOpCode < static_cast<int32_t>(std::size(kOperations));
  return exists ? &kOperations[exOpCode] : nullptr;
}

bool IsExtendedOperation(int32_t operation) {
  const int32_t lock = operation / 100;
  const int32_t base = operation % 100;
  return lock >= 0 && lock <= 4 && base >= BtrOpGetNextExtended &&
         base <= BtrOpStepPreviousExtended;
}

bool NeedsKey(int32_t operation) { return operation % 100 <= BtrOpGetPreviousExtended; }

}  // namespace qrn
