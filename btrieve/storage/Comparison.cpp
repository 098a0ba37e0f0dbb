#include "btrieve/storage/Comparison.h"

#include <algorithm>

#include "btrieve/storage/BaseWalk.h"

namespace btrieve {
namespace {

using What = Difference::What;

bool HaveSameOwner(Storage& left, Storage& right) {
  const OwnerRecord a = left.ReadOwner();
  const OwnerRecord b = right.ReadOwner();
  return a.set == b.set && (!a.set || (a.mode == b.mode && SameOwnerName(a.name, b.name)));
}

// Intents come and go with the files beside one.
bool HaveSameCounts(Storage& left, Storage& right) {
  left.RenewCounts();
  right.RenewCounts();
  const Head& a = left.Counts();
  const Head& b = right.Counts();
  return a.nextPosition == b.nextPosition && a.records == b.records && a.version == b.version &&
         a.updateNumber == b.updateNumber && a.distinct == b.distinct;
}

bool HaveSameIds(const Storage& left, const Storage& right) {
  return std::ranges::equal(left.Indexes(), right.Indexes(), {}, &Index::id, &Index::id);
}

class Orders {
 public:
  Orders(Storage& left, Storage& right, const WorkWatch& watch)
      : left_(left), right_(right), sameIds_(HaveSameIds(left, right)), watch_(watch) {}

  std::optional<Difference> Compare(int slot) {
    BaseWalk left, right;
    left.Start(left_, slot, true, {});
    right.Start(right_, slot, true, {});
    Hit a, b;
    for (uint64_t rank = 0;; ++rank) {
      const bool isThere = left.Step(a);
      const bool isBeside = right.Step(b);
      if (!isThere && !isBeside) return std::nullopt;
      if (!isBeside) return Difference{What::Missing, slot, rank};
      if (!isThere) return Difference{What::More, slot, rank};
      if (!AreAlike(a, b)) return Difference{What::Record, slot, rank};
      watch_(++done_);
    }
  }

 private:
  bool AreAlike(const Hit& a, const Hit& b) const {
    return a.position == b.position && a.version == b.version && BytesEqual(a.data, b.data) &&
           BytesEqual(a.entry, b.entry) && HaveSameNumbers(a, b);
  }

  // A record may keep numbers of keys that have gone.
  bool HaveSameNumbers(const Hit& a, const Hit& b) const {
    if (sameIds_ && BytesEqual(a.numbers, b.numbers)) return true;
    return std::ranges::equal(left_.Indexes(), right_.Indexes(),
                              [&](const Index& one, const Index& other) {
                                return OrderNumberIn(a.numbers, one.id, a.position) ==
                                       OrderNumberIn(b.numbers, other.id, b.position);
                              });
  }

  Storage& left_;
  Storage& right_;
  bool sameIds_;
  const WorkWatch& watch_;
  uint64_t done_ = 0;
};

}  // namespace

std::optional<Difference> FindDifference(Storage& left, Storage& right, const WorkWatch& watch) {
  if (!(left.Spec() == right.Spec())) return Difference{What::MakeUp};
  if (!HaveSameOwner(left, right)) return Difference{What::Owner};
  if (!HaveSameCounts(left, right)) return Difference{What::Counts};
  Orders orders(left, right, watch);
  for (int slot = kPhysicalSlot; slot < static_cast<int>(left.Indexes().size()); ++slot) {
    if (const auto difference = orders.Compare(slot)) return difference;
  }
  return std::nullopt;
}

uint64_t WorkOfComparison(Storage& file) {
  file.RenewCounts();
  return uint64_t{file.Counts().records} * (file.Indexes().size() + 1);
}

}  // namespace btrieve
