#include "platform/Memory.h"

#include <cstdlib>

#include "platform/Seam.h"

namespace qrn {
namespace {

constinit Seam<AllocateFunction> allocate{[](size_t size) { return std::calloc(1, size); }};

}  // namespace

void* AllocateZeroed(size_t size) noexcept { return allocate(size != 0 ? size : 1); }
void FreeMemory(void* memory) noexcept { std::free(memory); }
AllocateFunction ReplaceAllocate(AllocateFunction function) noexcept {
  return allocate.Replace(function);
}

}  // namespace qrn
