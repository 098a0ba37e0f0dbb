// A dictionary written back as a schema file.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "tools/qrndata/TableModel.h"

namespace qrndata {

// The text of a schema of which `build` makes these tables, as far as a schema can say what they
// are. `collations` has for each table (by id) with a collating sequence the name of its file.
std::string SchemaText(const std::vector<Table>& tables,
                       const std::map<int, std::string>& collations);

}  // namespace qrndata
