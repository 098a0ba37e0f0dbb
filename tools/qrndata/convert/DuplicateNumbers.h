// The numbers that keep duplicates in the order an old file's chains have them in: by place a
// record gets its number from its position, so only values whose chain goes another way need any.
#pragma once

#include <cstdint>
#include <vector>

#include "btrieve/legacy/OldFile.h"

namespace qrndata {

class DuplicateNumbers {
 public:
  // For a new file whose keys have the ids 1, 2, ... and whose records the positions 1, 2, ... in
  // the order of their places.
  explicit DuplicateNumbers(btrieve::legacy::OldFile& old);

  // Of the record at `rank` by place.
  btrieve::OrderNumbers Of(uint32_t rank) const;

 private:
  void NumberKey(btrieve::legacy::OldFile& old, int slot);
  void NumberGroup(const std::vector<uint32_t>& ranks, std::vector<uint64_t>& numbers);

  uint32_t total_;
  uint32_t moved_ = 0;
  std::vector<std::vector<uint64_t>> numbers_;  // by key, then by rank; 0 where none is needed
};

}  // namespace qrndata
