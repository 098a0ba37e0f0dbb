#include "platform/Heap.h"
#include "platform/Seam.h"

namespace qrn {
namespace {

constinit Seam<HeapStateFunction> validate{[] { return kHeapGood; }};

}  // namespace

HeapState ValidateHeap() noexcept { return validate(); }
HeapStateFunction ReplaceValidateHeap(HeapStateFunction function) noexcept {
  return validate.Replace(function);
}

}  // namespace qrn
