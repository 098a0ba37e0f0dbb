// Ordinal places in an index or in physical order, as the client sees the file: what the storage
// counts, corrected by what a concurrent transaction has changed.
#pragma once

#include "btrieve/files/DataFile.h"

namespace btrieve {

uint64_t TotalEntries(DataFile& file, int slot);
// Entries below the bound.
uint64_t RankOf(DataFile& file, int slot, ByteView bound);
// A bound at which entry number `ordinal` is the first one; `ordinal` is below the total.
Entry BoundOf(DataFile& file, int slot, uint64_t ordinal);

}  // namespace btrieve
