#include <windows.h>

#include "platform/Heap.h"
#include "platform/Seam.h"

namespace qrn {
namespace {

HeapState SystemHeapState() {
  const HANDLE heap = GetProcessHeap();
  if (heap == nullptr) return kHeapBadBegin;
  return HeapValidate(heap, 0, nullptr) != FALSE ? kHeapGood : kHeapBadNode;
}

constinit Seam<HeapStateFunction> validate{&SystemHeapState};

}  // namespace

HeapState ValidateHeap() noexcept { return validate(); }
HeapStateFunction ReplaceValidateHeap(HeapStateFunction function) noexcept {
  return validate.Replace(function);
}

}  // namespace qrn
