// What `check` looks at: a table's description, and a data file's records against its keys.
#pragma once

#include <string>
#include <vector>

#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/Progress.h"
#include "tools/qrndata/TableModel.h"

namespace qrndata {

// Faults, one UTF-8 sentence each.
using Faults = std::vector<std::string>;

// The dictionary's own sense: fields inside the record, no overlaps, sizes that the types take,
// keys over types that can be one, and that forms find a field at the same place by offset and by
// walk.
Faults CheckDescription(const Table& table);

// Every record against every key: the counts agree, each record that a key does not leave out for
// null is in it once, in the key's order, twice the same value only where duplicates are allowed.
Faults CheckRecords(BtrFile& file, const FileStat& stat, Progress& progress);

}  // namespace qrndata
