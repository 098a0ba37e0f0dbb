#include "LiveBlocks.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long long> liveBlocks;

}  // namespace

void* operator new(size_t size) {
  void* block = std::malloc(size ? size : 1);
  if (!block) throw std::bad_alloc();
  ++liveBlocks;
  return block;
}
void operator delete(void* block) noexcept {
  if (block) --liveBlocks;
  std::free(block);
}
void operator delete(void* block, size_t) noexcept {
  if (block) --liveBlocks;
  std::free(block);
}

long long qrn::test::LiveBlocks() noexcept { return liveBlocks; }
