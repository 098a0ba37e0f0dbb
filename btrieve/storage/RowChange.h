// What a write does to one record, with its entries in all keys.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "btrieve/keys/Entry.h"

namespace btrieve {

// A record's entries in one key before and after; empty where it has none.
struct KeyChange {
  Entry before;
  Entry after;
  bool Moves() const noexcept { return !(before == after); }
};

struct RowChange {
  uint32_t position = 0;
  bool existed = false;
  bool remains = false;
  uint64_t version = 0;
  ByteView numbers;  // OrderNumbers::Stored
  ByteView data;
  std::span<const KeyChange> keys;  // by slot
};

}  // namespace btrieve
