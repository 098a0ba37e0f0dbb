// The records and keys that a file of today gets in place of an old one.
#pragma once

#include <string>
#include <vector>

#include "btrieve/keys/KeySpec.h"

namespace qrndata {

// The same records in the same orders. Where today's rules refuse what the old ones took, the
// nearest that they take; each such change is told in `notes`. Throws Failure (kSystem) where there
// is none.
btrieve::FileSpec TodaysSpec(const btrieve::FileSpec& old, std::vector<std::string>& notes);

}  // namespace qrndata
