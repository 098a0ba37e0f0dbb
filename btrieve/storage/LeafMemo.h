// Where rows were found before: the leaves of a tree of rows, for reads that come back to the same
// leaves out of any order. Finding one here costs one look instead of a way down the tree.
//
// The leaves' pages must stay where they are until Forget.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace btrieve {

// A leaf, and the rows it may hold: above the first number up to the second.
struct Leaf {
  const uint8_t* page = nullptr;
  uint32_t above = 0;
  uint32_t upTo = 0;

  bool MayHold(int64_t row) const noexcept { return row > above && row <= upTo; }
};

class LeafMemo {
 public:
  // Null without one.
  const Leaf* Find(int64_t row) const noexcept {
    if (places_.empty()) return nullptr;
    const Leaf& leaf = places_[PlaceOf(row)];
    return leaf.MayHold(row) ? &leaf : nullptr;
  }

  // The leaf in which a row was sought that had to be looked for; rows as the tree tells them,
  // which in a damaged one may be any numbers.
  Leaf Note(int64_t row, const uint8_t* page, int64_t above, int64_t upTo) {
    constexpr int64_t kHighest = UINT32_MAX;
    const Leaf leaf{page, static_cast<uint32_t>(std::clamp<int64_t>(above, 0, kHighest)),
                    static_cast<uint32_t>(std::clamp<int64_t>(upTo, 0, kHighest))};
    if (places_.empty() && ++sought_ >= kWorthPlaces) places_.resize(kPlaces);
    if (!places_.empty()) places_[PlaceOf(row)] = leaf;
    return leaf;
  }

  void Forget() noexcept {
    places_.clear();
    sought_ = 0;
  }

 private:
  // A leaf of short records is in several places, so that most of its rows lead to it.
  static constexpr unsigned kRowsOfAPlace = 16;
  static constexpr size_t kPlaces = 8192;  // 128 KB
  static constexpr uint32_t kWorthPlaces = 512;

  static size_t PlaceOf(int64_t row) noexcept {
    return static_cast<uint64_t>(row) / kRowsOfAPlace % kPlaces;
  }

  std::vector<Leaf> places_;
  uint32_t sought_ = 0;
};

}  // namespace btrieve
