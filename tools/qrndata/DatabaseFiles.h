// The files on disk that belong to a dictionary.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/Messages.h"

namespace qrndata {

// The dictionary's own files, then the tables' data files, each once: two tables may have one file.
// Names as seen from the directory. Throws Failure (kBadInput), worded by `outside` with the table
// and the path, where a data file stands outside the directory.
std::vector<std::filesystem::path> DatabaseFiles(const Dictionary& dictionary, Message outside);

// As the record manager's own opening of it gives it.
std::string WholePath(const std::filesystem::path& path);

}  // namespace qrndata
