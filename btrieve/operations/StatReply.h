// The reply of Stat: a file's specification with its counts, in the layout of the Create block.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "btrieve/keys/KeySpec.h"
#include "btrieve/system/Status.h"

namespace btrieve {

struct StatCounts {
  uint32_t records = 0;
  std::vector<uint32_t> uniqueValues;  // one a key, in the order of FileSpec::keys
};

// Writes into `room` and gives the bytes written in `length`. `keyNumber` -1 also tells the file
// version and the unused duplicate pointers, which are 0 otherwise.
// 0 when the head and all segments fit (collating sequences follow as far as whole ones fit), else
// 22 with as many whole 16-byte specifications as fit.
[[nodiscard]] Status WriteStat(const FileSpec& file, const StatCounts& counts, int8_t keyNumber,
                               std::span<uint8_t> room, uint32_t& length) noexcept;

}  // namespace btrieve
