// A stretch of an order, read for an extended read: the records that its condition lets through,
// and of the others those that it may have to stand on.
#pragma once

#include <cstdint>
#include <string>

#include "btrieve/server/ScanFilter.h"

namespace btrieve::server {

struct StretchLimits {
  // Whichever is met first ends the stretch.
  int64_t examined = 0;   // records
  int64_t sent = 0;       // records
  int64_t sentBytes = 0;  // of their data, but for the last one's
  // Which of those that the condition does not let through are sent: number `rejects`, and each
  // `period`-th from there on.
  int64_t rejects = 0;
  int64_t period = 0;
};

// Parameters before those of the condition: the order's bounds, of which $1 is where the stretch
// begins, and StretchLimits.
inline constexpr int kFirstOfCondition = 8;

// Selects `columns` of records in the order of `by`. Behind them a row has its number in the
// stretch, from 1 on, whether it is the last examined, and of the record examined before it the
// position and what orders it; null for the first.
std::string ScanStatement(const std::string& columns, const std::string& table,
                          const std::string& by, bool forward, const std::string& condition);

}  // namespace btrieve::server
