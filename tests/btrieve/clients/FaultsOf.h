// The data tool's opinion of a file.
#pragma once

#include <string>

namespace btrieve::test {

// What its check has to say about the file's keys and records; empty when all is well.
std::string FaultsOf(const std::string& path);

}  // namespace btrieve::test
