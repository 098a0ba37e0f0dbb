// The dictionary's own three tables, described like any other: X$File, X$Field, X$Index.
#pragma once

#include <vector>

#include "tools/qrndata/TableModel.h"

namespace qrndata {

// In the order of their ids 1 to 3. Field ids run from 1 without a gap.
const std::vector<Table>& DictionaryTables();

}  // namespace qrndata
