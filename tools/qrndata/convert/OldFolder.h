// What is to be converted: the old files of a folder, with the names that its dictionary gives
// them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace qrndata {

struct OldFolderFile {
  std::string name;                // the table's, else the file's; UTF-8
  std::filesystem::path location;  // below the folder
  bool isTable = false;
};

struct OldFolder {
  std::vector<OldFolderFile> files;  // the dictionary's own first, then by name
  std::vector<std::string> missing;  // tables without a file that can be converted, and why; UTF-8
};

// Throws Failure (kSystem) when the folder cannot be read or has no old file.
OldFolder ReadOldFolder(const std::filesystem::path& directory);

}  // namespace qrndata
