// The numbers that order duplicates. A record's entries carry its position, shifted up, as long as
// no Update has moved them; an entry that an Update has put at the end of its new value's group
// carries a later number, which then stands with the record, by the key's id.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace btrieve {

// The number of an entry that still stands where Insert put it.
constexpr uint64_t FirstOrderNumber(uint32_t position) noexcept { return uint64_t{position} << 32; }

// Bytes of each moved entry's number as it is stored.
inline constexpr size_t kOrderNumberRow = 10;

class OrderNumbers {
 public:
  OrderNumbers() = default;
  // From the stored form: for each moved entry u16 key id and u64 number, little-endian.
  explicit OrderNumbers(std::span<const uint8_t> stored) : stored_(stored.begin(), stored.end()) {}

  uint64_t For(uint16_t keyId, uint32_t position) const noexcept;
  void Set(uint16_t keyId, uint64_t number);
  std::span<const uint8_t> Stored() const noexcept { return stored_; }
  // The highest count of updates in any number.
  uint32_t HighestUpdate() const noexcept;

 private:
  std::vector<uint8_t> stored_;
};

// The same look-up on stored bytes in place.
uint64_t OrderNumberIn(std::span<const uint8_t> stored, uint16_t keyId, uint32_t position) noexcept;

}  // namespace btrieve
