// Zeroed memory for what outlives a call: dictionaries and record buffers. One pair of functions
// for whoever allocates, grows and frees them; and whether the process's heap is whole.
#pragma once

#include <cstddef>

namespace qrn {

using AllocateFunction = void* (*)(size_t size);

// `size` zeroed bytes (at least one is allocated), null without memory.
[[nodiscard]] void* AllocateZeroed(size_t size) noexcept;

// Null is allowed.
void FreeMemory(void* memory) noexcept;

// Puts another function in the allocator's place, to provoke what happens without memory: it gives
// zeroed memory for FreeMemory (calloc) or null. Null brings the real one back. Returns what stood
// there.
AllocateFunction ReplaceAllocate(AllocateFunction function) noexcept;

// Frees on scope end; for std::unique_ptr.
struct MemoryDeleter {
  void operator()(void* memory) const noexcept { FreeMemory(memory); }
};

enum HeapState : int { kHeapGood = -2, kHeapBadBegin = -3, kHeapBadNode = -4 };

using HeapStateFunction = HeapState (*)();

// Walks the process heap and says whether it is whole. Natively always good: the sanitizers watch
// there.
HeapState ValidateHeap() noexcept;

// Puts another function in its place; null brings the real one back. Returns what stood there.
HeapStateFunction ReplaceValidateHeap(HeapStateFunction function) noexcept;

// The system's own, behind ValidateHeap.
HeapState SystemHeapState();

}  // namespace qrn
