// Names that files and folders get on a server: lower-case letters, digits and _, from what they
// are called on disk.
#pragma once

#include <filesystem>
#include <set>
#include <string>

namespace qrndata {

// Of a folder: the schema's where the user names none.
std::string SchemaNameOf(const std::filesystem::path& directory);

// Gives each file of one schema a name of its own.
class TableNames {
 public:
  // For the same file another one each time.
  std::string Take(const std::filesystem::path& file);

 private:
  std::set<std::string> taken_;
};

}  // namespace qrndata
