// Values that are known to stand in an index, so that a bulk of inserts need not look for each one
// whether it is the first of its kind: keys with duplicates mostly have few values. It may forget.
#pragma once

#include <cstdint>
#include <cstring>
#include <new>
#include <vector>

#include "btrieve/keys/Entry.h"

namespace btrieve {

class SeenValues {
 public:
  // All values of an index are of one size, 1 at least.
  explicit SeenValues(size_t valueSize) noexcept : size_(valueSize) {}

  bool Has(ByteView value) const noexcept {
    const uint8_t* place = values_.empty() ? nullptr : PlaceOf(value);
    return place && *place == kTaken && std::memcmp(place + 1, value.data(), size_) == 0;
  }
  void Add(ByteView value) noexcept {
    if (values_.empty() && !MakeRoom()) return;
    uint8_t* place = PlaceOf(value);
    *place = kTaken;
    std::memcpy(place + 1, value.data(), size_);
  }
  void Remove(ByteView value) noexcept {
    if (Has(value)) *PlaceOf(value) = 0;
  }
  void Forget() noexcept { values_.clear(); }

 private:
  static constexpr size_t kPlaces = 1024;
  static constexpr uint8_t kTaken = 1;

  bool MakeRoom() noexcept try {
    values_.resize(kPlaces * (size_ + 1));
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }

  // FNV-1a.
  size_t OffsetOf(ByteView value) const noexcept {
    uint64_t hash = 0xCBF29CE484222325;
    for (const uint8_t byte : value) hash = (hash ^ byte) * 0x100000001B3;
    return (hash >> 20) % kPlaces * (size_ + 1);
  }
  const uint8_t* PlaceOf(ByteView value) const noexcept { return &values_[OffsetOf(value)]; }
  uint8_t* PlaceOf(ByteView value) noexcept { return &values_[OffsetOf(value)]; }

  size_t size_;
  std::vector<uint8_t> values_;  // for each place whether it is taken, and the value
};

}  // namespace btrieve
