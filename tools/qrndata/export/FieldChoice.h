// The fields of a table that an export writes.
#pragma once

#include <string>

#include "tools/qrndata/TableModel.h"

namespace qrndata {

// The table with these fields alone, in this order, and with the keys that have all of theirs.
// `fields` is "Field,Field,..." in UTF-8 (Names.h), those with a comma in quotes; empty: all.
// Throws Failure for a field that there is not, or that stands there twice.
Table WithFields(const Table& table, const std::string& fields);

}  // namespace qrndata
