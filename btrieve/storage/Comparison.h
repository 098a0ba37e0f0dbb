// Two files that ought to hold the same, wherever each is kept: their make-up, then record by
// record, by place and along every key.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "btrieve/storage/Storage.h"

namespace btrieve {

// Hears how many records long work has gone through; ends the work by what it throws.
using WorkWatch = std::function<void(uint64_t records)>;

struct Difference {
  enum class What : uint8_t {
    MakeUp,  // keys, lengths, flags, sequences
    Owner,
    Counts,   // positions given, versions, different values
    Record,   // bytes, position, version or place among duplicates
    Missing,  // on the right
    More,
  };
  What what;
  int slot = kPhysicalSlot;  // of the last three
  uint64_t rank = 0;         // from 0, in that order
};

// The first difference; none where there is none. Both are open and stay as they are meanwhile.
// Numbers that keys are stored under may differ. Throws Failure when a file cannot be read.
std::optional<Difference> FindDifference(Storage& left, Storage& right, const WorkWatch& watch);

// Records that the comparison of such a file goes through.
uint64_t WorkOfComparison(Storage& file);

}  // namespace btrieve
