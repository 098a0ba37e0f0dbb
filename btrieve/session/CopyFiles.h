// Copies of data files as a backup takes them, while other processes work on the files.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

#include "btrieve/system/Status.h"

namespace btrieve {

struct FileCopy {
  std::string from, to;  // absolute; nothing stands at `to`
};

// Copies every file in the state that all of them had at one moment, so that of no transaction a
// half is there; nobody is kept from working meanwhile. The copies are whole files without a log,
// on stable storage. `patience` is how long such a moment is looked for: with others writing
// without a pause it may take some hundred looks. 0, or the status of file number `at`: as Open
// gives it; 85 when no moment was found; 30 for a file of another make, 12 for a link to a server;
// 18, 2 of a copy, which may then be there by half, and others with it. For a process that has no
// file open here: afterwards it has none.
[[nodiscard]] Status CopyFiles(const std::vector<FileCopy>& copies,
                               std::chrono::milliseconds patience, size_t& at);

}  // namespace btrieve
