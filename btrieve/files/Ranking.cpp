#include "btrieve/files/Ranking.h"

#include <algorithm>

namespace btrieve {
namespace {

RankIndex& Ranks(DataFile& file, int slot) {
  RankIndex& ranks = file.Base().Ranks(slot);
  if (file.Base().IsWriting()) {
    file.Base().EndWalks();
    ranks.Flush();
  }
  return ranks;
}

// Of the file itself.
uint64_t BaseTotal(DataFile& file, int slot) {
  if (const ForeignFile* foreign = file.Base().Foreign()) return foreign->Total(slot);
  return Ranks(file, slot).Total();
}

uint64_t BaseRank(DataFile& file, int slot, ByteView bound) {
  if (ForeignFile* foreign = file.Base().Foreign()) return foreign->RankOf(slot, bound);
  return Ranks(file, slot).RankOf(bound);
}

Entry BaseEntry(DataFile& file, int slot, uint64_t rank) {
  if (ForeignFile* foreign = file.Base().Foreign()) return foreign->EntryAt(slot, rank);
  Entry entry;
  if (!Ranks(file, slot).EntryAt(rank, entry)) throw Failure{kIoError};
  return entry;
}

template <class Set>
int64_t CountBelow(const Set& set, ByteView bound) {
  return std::distance(set.begin(), set.lower_bound(bound));
}

// How many entries more the client sees below the bound than the file has.
int64_t ChangeBelow(const Overlay& changes, int slot, ByteView bound) {
  if (slot != kPhysicalSlot) {
    return CountBelow(changes.Added(slot), bound) - CountBelow(changes.Hidden(slot), bound);
  }
  int64_t change = 0;
  const int64_t end = BoundPosition(bound);
  for (const auto& [position, record] : changes.All()) {
    if (position >= end) break;
    change += static_cast<int>(!record.deleted) - static_cast<int>(record.inBase);
  }
  return change;
}

Entry EntryOf(const Hit& hit, int slot) {
  return slot == kPhysicalSlot ? PositionEntry(hit.position) : Entry(hit.entry);
}

// From a place near by, entry by entry; never further than the transaction has changed entries.
Entry WalkTo(DataFile& file, int slot, uint64_t ordinal, const Entry& near) {
  const uint64_t rank = RankOf(file, slot, near.View());
  const bool forward = rank <= ordinal;
  uint64_t steps = forward ? ordinal - rank + 1 : rank - ordinal;
  Walk walk;
  walk.Start(file, slot, forward, near.View());
  Hit hit;
  for (; steps > 0 && walk.Step(hit); --steps) {
  }
  if (steps > 0) throw Failure{kIoError};
  return EntryOf(hit, slot);
}

}  // namespace

uint64_t TotalEntries(DataFile& file, int slot) {
  const uint64_t total = BaseTotal(file, slot);
  const Overlay* changes = file.Uncommitted();
  if (!changes) return total;
  if (slot == kPhysicalSlot)
    return static_cast<uint64_t>(static_cast<int64_t>(total) + changes->RecordChange());
  return total + changes->Added(slot).size() - changes->Hidden(slot).size();
}

uint64_t RankOf(DataFile& file, int slot, ByteView bound) {
  const uint64_t rank = BaseRank(file, slot, bound);
  const Overlay* changes = file.Uncommitted();
  return changes ? rank + static_cast<uint64_t>(ChangeBelow(*changes, slot, bound)) : rank;
}

Entry BoundOf(DataFile& file, int slot, uint64_t ordinal) {
  const uint64_t total = BaseTotal(file, slot);
  const Entry entry = total == 0 ? Entry() : BaseEntry(file, slot, std::min(ordinal, total - 1));
  return file.Uncommitted() ? WalkTo(file, slot, ordinal, entry) : entry;
}

}  // namespace btrieve
