// What only a file on a server has beside its records.
#pragma once

#include <filesystem>

#include "tools/qrndata/TableChecks.h"

namespace qrndata {

// The server's counts of ranges, which percentages are found by, against the table. None for a file
// that is no link.
Faults CheckRanges(const std::filesystem::path& path);

}  // namespace qrndata
