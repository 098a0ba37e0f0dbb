#include "tools/qrndata/convert/DuplicateNumbers.h"

#include <algorithm>

namespace qrndata {

using btrieve::Hit;
using btrieve::kPhysicalSlot;
using btrieve::legacy::OldFile;

DuplicateNumbers::DuplicateNumbers(OldFile& old) : total_(old.Total(kPhysicalSlot)) {
  const auto keys = static_cast<int>(old.Spec().keys.size());
  numbers_.resize(old.Spec().keys.size());
  for (int slot = 0; slot < keys; ++slot) {
    if (old.Spec().keys[static_cast<size_t>(slot)].AllowsDuplicates()) NumberKey(old, slot);
  }
}

// Behind every number that a position gives, in the chain's order.
void DuplicateNumbers::NumberGroup(const std::vector<uint32_t>& ranks,
                                   std::vector<uint64_t>& numbers) {
  if (std::is_sorted(ranks.begin(), ranks.end())) return;
  numbers.resize(total_);
  for (const uint32_t rank : ranks) numbers[rank] = btrieve::FirstOrderNumber(total_) | ++moved_;
}

void DuplicateNumbers::NumberKey(OldFile& old, int slot) {
  std::vector<uint64_t>& numbers = numbers_[static_cast<size_t>(slot)];
  std::vector<uint32_t> group;
  btrieve::Entry value;
  for (uint32_t at = 0; at < old.Total(slot); ++at) {
    Hit hit;
    old.Read(slot, at, hit);
    const auto own = hit.entry.first(hit.entry.size() - btrieve::kOrderNumberSize);
    if (!btrieve::BytesEqual(own, value.View())) {
      NumberGroup(group, numbers);
      group.clear();
      value.Assign(own);
    }
    group.push_back(old.RankOf(kPhysicalSlot, btrieve::PositionEntry(hit.position).View()));
  }
  NumberGroup(group, numbers);
}

btrieve::OrderNumbers DuplicateNumbers::Of(uint32_t rank) const {
  btrieve::OrderNumbers all;
  for (size_t slot = 0; slot < numbers_.size(); ++slot) {
    if (numbers_[slot].empty() || numbers_[slot][rank] == 0) continue;
    all.Set(static_cast<uint16_t>(slot + 1), numbers_[slot][rank]);
  }
  return all;
}

}  // namespace qrndata
