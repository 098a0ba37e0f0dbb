#include "platform/Memory.h"

#include <cstdlib>

#include "platform/Seam.h"

namespace qrn {
namespace {

constinit Seam<AllocateFunction> allocate{[](size_t size) { return std::calloc(1, size); }};
constinit Seam<HeapStateFunction> validate{&SystemHeapState};

}  // namespace

void* AllocateZeroed(size_t size) noexcept { return allocate(size != 0 ? size : 1); }
void FreeMemory(void* memory) noexcept { std::free(memory); }
AllocateFunction ReplaceAllocate(AllocateFunction function) noexcept {
  return allocate.Replace(function);
}

HeapState ValidateHeap() noexcept { return validate(); }
HeapStateFunction ReplaceValidateHeap(HeapStateFunction function) noexcept {
  return validate.Replace(function);
}

}  // namespace qrn
