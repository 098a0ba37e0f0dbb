#include <windows.h>

#include "platform/Memory.h"

namespace qrn {

HeapState SystemHeapState() {
  const HANDLE heap = GetProcessHeap();
  if (heap == nullptr) return kHeapBadBegin;
  return HeapValidate(heap, 0, nullptr) != FALSE ? kHeapGood : kHeapBadNode;
}

}  // namespace qrn
