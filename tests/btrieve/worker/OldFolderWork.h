// A folder of the nineties, for scripts that bring one into today's format.
#pragma once

#include <string>
#include <vector>

namespace btrieve::test {

// Makes the folder that is named: a dictionary of two tables, with a few records. The exit code.
int MakeOldFolder(const std::vector<std::string>& arguments);

}  // namespace btrieve::test
