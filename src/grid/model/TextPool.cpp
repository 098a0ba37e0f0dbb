#include "grid/model/TextPool.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "platform/Memory.h"

namespace qrn {
namespace {

// In front of each text: the number of its size, or that it has memory of its own.
constexpr uint8_t kLong = 0xFF;
constexpr size_t kSlabHead = 16;

}  // namespace

char* TextPool::Take(std::string_view text) noexcept {
  const size_t bytes = text.size() + 2;
  const size_t size = (bytes - 1) / kStep;
  const bool isLong = size >= kSizes;
  auto* place = isLong ? static_cast<uint8_t*>(AllocateZeroed(bytes)) : TakePlace(size);
  if (place == nullptr) return nullptr;
  if (isLong) ++long_;
  place[0] = isLong ? kLong : static_cast<uint8_t>(size);
  char* copy = reinterpret_cast<char*>(place + 1);
  std::memcpy(copy, text.data(), text.size());
  copy[text.size()] = '\0';
  return copy;
}

void TextPool::GiveBack(char* text) noexcept {
  if (text == nullptr) return;
  auto* place = reinterpret_cast<uint8_t*>(text) - 1;
  if (place[0] == kLong) {
    --long_;
    return FreeMemory(place);
  }
  Place*& given = given_[place[0]];
  given = new (place) Place{given};
}

void TextPool::ReleaseSlabs() noexcept {
  while (slabs_ != nullptr) FreeMemory(std::exchange(slabs_, slabs_->next));
  std::ranges::fill(given_, nullptr);
  free_ = nullptr;
  freeBytes_ = 0;
  slabBytes_ = kFirstSlab;
}

uint8_t* TextPool::TakePlace(size_t size) noexcept {
  if (Place* place = given_[size]; place != nullptr) {
    given_[size] = place->next;
    return reinterpret_cast<uint8_t*>(place);
  }
  const size_t bytes = (size + 1) * kStep;
  if (bytes > freeBytes_ && !AddSlab()) return nullptr;
  freeBytes_ -= bytes;
  return std::exchange(free_, free_ + bytes);
}

// What is left of the slab before is less than the longest place, and given up.
bool TextPool::AddSlab() noexcept {
  void* memory = AllocateZeroed(slabBytes_);
  if (memory == nullptr) return false;
  slabs_ = new (memory) Slab{slabs_};
  free_ = static_cast<uint8_t*>(memory) + kSlabHead;
  freeBytes_ = slabBytes_ - kSlabHead;
  slabBytes_ = std::min(2 * slabBytes_, kLastSlab);
  return true;
}

}  // namespace qrn
