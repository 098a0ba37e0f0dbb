#include "btrieve/storage/OrderNumbers.h"

#include <algorithm>

#include "btrieve/system/LittleEndian.h"

namespace btrieve {
namespace {

// Bytes from the start of the row of `keyId`; the size when there is none.
size_t FindRow(std::span<const uint8_t> stored, uint16_t keyId) noexcept {
  for (size_t at = 0; at + kOrderNumberRow <= stored.size(); at += kOrderNumberRow) {
    if (LoadValue<uint16_t>(&stored[at]) == keyId) return at;
  }
  return stored.size();
}

}  // namespace

uint64_t OrderNumberIn(std::span<const uint8_t> stored, uint16_t keyId,
                       uint32_t position) noexcept {
  const size_t row = FindRow(stored, keyId);
  if (row == stored.size()) return FirstOrderNumber(position);
  return LoadValue<uint64_t>(&stored[row + 2]);
}

uint64_t OrderNumbers::For(uint16_t keyId, uint32_t position) const noexcept {
  return OrderNumberIn(stored_, keyId, position);
}

void OrderNumbers::Set(uint16_t keyId, uint64_t number) {
  const size_t row = FindRow(stored_, keyId);
  if (row == stored_.size()) stored_.resize(row + kOrderNumberRow);
  StoreValue(&stored_[row], keyId);
  StoreValue(&stored_[row + 2], number);
}

uint32_t OrderNumbers::HighestUpdate() const noexcept {
  uint32_t highest = 0;
  for (size_t at = 0; at + kOrderNumberRow <= stored_.size(); at += kOrderNumberRow) {
    highest = std::max(highest, LoadValue<uint32_t>(&stored_[at + 2]));
  }
  return highest;
}

}  // namespace btrieve
