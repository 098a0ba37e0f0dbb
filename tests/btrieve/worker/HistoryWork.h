// Random calls on registers, each told when it is made and when it has been answered.
#pragma once

#include <string>
#include <vector>

namespace btrieve::test {

// Arguments: the first value to write, which no other process writes, and the paths of the files.
// Reads "go SEED STEPS", and when that has been done tells "d". A status that has no cause is told
// as "x TEXT", which ends it.
int HistoryWork(const std::vector<std::string>& arguments);

}  // namespace btrieve::test
