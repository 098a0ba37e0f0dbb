// The records of an old file along one of its keys: tree and chains of duplicates walked once, and
// everything they say compared.
#pragma once

#include <cstdint>
#include <vector>

#include "btrieve/keys/KeyOrder.h"
#include "btrieve/legacy/OldHead.h"
#include "btrieve/legacy/Pages.h"
#include "btrieve/legacy/Slots.h"

namespace btrieve::legacy {

struct KeyRow {
  std::vector<uint32_t> records;  // addresses, in the key's order
  std::vector<uint32_t> ranks;    // by slot number: the place in `records`; kNone without one
};

// A page belongs to one tree; `taken` tells which pages have one already, and learns of this key's.
// Throws Damage (2) for any disagreement of the key with the records and with itself.
KeyRow ReadKey(const Pages& pages, const OldHead& head, const Slots& slots, size_t key,
               const KeyOrder& order, std::vector<bool>& taken);

}  // namespace btrieve::legacy
