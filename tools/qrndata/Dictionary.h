// A dictionary directory: written from tables, read back into tables.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "tools/qrndata/TableModel.h"

namespace qrndata {

// What a dictionary says that cannot be: fields of unknown tables, gaps in the key numbers. Reading
// goes on over these, as forms do; `check` lists them.
struct Dictionary {
  std::filesystem::path directory;
  std::vector<Table> tables;          // user tables by id
  std::vector<std::string> oddities;  // UTF-8, one sentence each

  // Throws Failure (kBadInput) that lists the tables there are. `name` is UTF-8.
  const Table& Find(std::string_view name) const;
};

// Creates file.ddf, field.ddf and index.ddf with the dictionary's own rows and the tables' rows.
// Throws Failure; existing files are only replaced with `replace`.
void WriteDictionary(const std::filesystem::path& directory, const std::vector<Table>& tables,
                     bool replace);

// Throws Failure (kSystem) when the directory holds no readable dictionary.
Dictionary ReadDictionary(const std::filesystem::path& directory);

}  // namespace qrndata
