// Data files that an older record manager wrote, as the tool meets them.
#pragma once

#include <filesystem>
#include <string>

#include "tools/qrndata/BtrFile.h"

namespace qrndata {

// Throws Failure (kSystem) when the file cannot be read.
Bytes ReadFileBytes(const std::filesystem::path& path);

// Whether a file is of version 5; false also when it cannot be read.
bool IsOldFile(const std::filesystem::path& path);

// What such a file says of its records and keys, which today's rules need not allow. False for
// another file.
[[nodiscard]] bool ReadOldSpec(const std::filesystem::path& path, btrieve::FileSpec& spec);

// Why an old file was not opened, and what helps: words to be put behind the status. Empty for a
// file that is none.
std::string WhyNotOpened(const std::filesystem::path& path, Status status);

}  // namespace qrndata
