// What a view selects: a typed, named column for each field of a table.
#pragma once

#include <set>
#include <string>

#include "tools/qrndata/TableModel.h"

namespace qrndata {

// Names in quotes, each once and no longer than the server takes; other characters stay.
class ViewNames {
 public:
  std::string Take(const std::string& name);

 private:
  std::set<std::string> taken_;
};

// The select list over a file's rows, by the functions in `schema`. A field of a type or size that
// forms do not read is its bytes.
std::string ViewColumns(const Table& table, const std::string& schema);

}  // namespace qrndata
