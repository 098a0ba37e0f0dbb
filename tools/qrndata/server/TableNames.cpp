#include "tools/qrndata/server/TableNames.h"

#include <algorithm>

#include "btrieve/server/LinkedFolder.h"
#include "tools/qrndata/Paths.h"

namespace qrndata {

namespace fs = std::filesystem;

std::string SchemaNameOf(const fs::path& directory) {
  std::error_code ignored;
  fs::path whole = fs::weakly_canonical(fs::absolute(directory, ignored), ignored);
  if (!whole.has_filename()) whole = whole.parent_path();
  const std::string name = btrieve::server::ServerNameOf(PathToUtf8(whole.filename()));
  const bool tellsNothing = std::ranges::all_of(name, [](char c) { return c == '_'; });
  return tellsNothing ? "data" : name;
}

std::string TableNames::Take(const fs::path& file) {
  const std::string wanted = btrieve::server::TableNameOf(BtrievePath(file));
  std::string given = wanted;
  for (int number = 2; !taken_.insert(given).second; ++number) {
    given = wanted + "_" + std::to_string(number);
  }
  return given;
}

}  // namespace qrndata
