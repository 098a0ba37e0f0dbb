// Files that no text may be written over.
#pragma once

#include <filesystem>

#include "tools/qrndata/Dictionary.h"

namespace qrndata {

// Throws Failure (kUsage) when `output`, by its name or as the same file under another, is a data
// file of the dictionary's tables, a record manager's log of one, or a dictionary file.
void RefuseDatabaseFile(const std::filesystem::path& output, const Dictionary& dictionary);

// Whether both name one file: the same file on disk, or one place where none is yet.
bool IsSameFile(const std::filesystem::path& left, const std::filesystem::path& right);

}  // namespace qrndata
