// The counters of a data file: one small row that changes with every commit. Read first in each
// read transaction, it also tells whether anything has changed since the last one.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace btrieve {

inline constexpr uint32_t kHighestPosition = 0x7FFFFFFF;

struct Head {
  uint32_t nextPosition = 1;
  uint32_t records = 0;
  uint64_t version = 0;       // the last one given to a record; each write takes the next
  uint32_t updateNumber = 0;  // counts updates that moved an entry to the end of its duplicates
  uint32_t intents = 0;       // transactions over several files that have not settled this one
  std::vector<uint32_t> distinct;  // different values in each index, in the order of the keys

  // The form it is stored in: the members in this order, little-endian.
  void Store(std::vector<uint8_t>& out) const;
  // Whether a file can have such counters: they may have been damaged, and counted on from there.
  bool IsPossible() const noexcept;
  // False for bytes that are no head of a file with `keys` keys.
  [[nodiscard]] bool Load(std::span<const uint8_t> bytes, size_t keys);
};

}  // namespace btrieve
