// Schema files: the tables of a database in TOML, by docs/schema.md.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "tools/qrndata/TableModel.h"

namespace qrndata {

struct Schema {
  std::vector<Table> tables;          // by table id; field ids are given in this order
  std::vector<std::string> warnings;  // what is taken but will not work everywhere
};

// `fileName` stands in messages; collating sequences are files beside `directory`. Throws Failure
// (kBadInput) at the first entry that is wrong. Everything a record manager would refuse at
// creation is refused here.
Schema ParseSchema(std::string_view text, std::string_view fileName,
                   const std::filesystem::path& directory);

Schema ReadSchemaFile(const std::filesystem::path& path);

}  // namespace qrndata
