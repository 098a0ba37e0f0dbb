#include <algorithm>
#include <cstring>

#include "btrieve/session/Cursor.h"

namespace btrieve {
namespace {

constexpr uint64_t kBlockMark = 0x3142505145495442;

struct BlockContent {
  uint64_t mark;
  uint64_t slot;
  uint64_t generation;
  uint64_t check;
};

uint64_t CheckOf(const BlockContent& content) noexcept {
  return (content.mark ^ content.slot * 0x9E3779B97F4A7C15) + content.generation * 0x100000001B3;
}

}  // namespace

Cursor* CursorTable::Find(const void* block) const noexcept {
  if (!block) return nullptr;
  BlockContent content;
  std::memcpy(&content, block, sizeof content);
  if (content.mark != kBlockMark || content.check != CheckOf(content)) return nullptr;
  if (content.slot >= slots_.size()) return nullptr;
  const Slot& slot = slots_[content.slot];
  return slot.generation == content.generation ? slot.cursor.get() : nullptr;
}

bool CursorTable::Add(std::unique_ptr<Cursor> cursor, void* block) {
  auto free = std::find_if(slots_.begin(), slots_.end(),
                           [](const Slot& slot) { return slot.cursor == nullptr; });
  if (free == slots_.end()) {
    if (slots_.size() == kMostCursors) return false;
    free = slots_.emplace(slots_.end());
  }
  free->cursor = std::move(cursor);
  free->generation = nextGeneration_++;
  BlockContent content{kBlockMark, static_cast<uint64_t>(free - slots_.begin()), free->generation,
                       0};
  content.check = CheckOf(content);
  std::memset(block, 0, kBlockSize);
  std::memcpy(block, &content, sizeof content);
  return true;
}

void CursorTable::Remove(void* block) noexcept {
  BlockContent content;
  std::memcpy(&content, block, sizeof content);
  slots_[content.slot].cursor.reset();
  std::memset(block, 0, kBlockSize);
}

void CursorTable::Clear() noexcept {
  for (Slot& slot : slots_) slot.cursor.reset();
}

}  // namespace btrieve
