#pragma once

namespace qrn {

enum HeapState : int { kHeapGood = -2, kHeapBadBegin = -3, kHeapBadNode = -4 };

using HeapStateFunction = HeapState (*)();

// Walks the process heap and says whether it is whole. Natively always good: the sanitizers watch
// there.
HeapState ValidateHeap() noexcept;

// Puts another function in its place; null brings the real one back. Returns what stood there.
HeapStateFunction ReplaceValidateHeap(HeapStateFunction function) noexcept;

}  // namespace qrn
