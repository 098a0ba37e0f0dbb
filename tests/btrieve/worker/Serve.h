// Calls that another process makes here.
#pragma once

#include <string>
#include <vector>

namespace btrieve::test {

// Serves calls over the standard input and output until the input ends. Takes no arguments.
int ServeCalls(const std::vector<std::string>& arguments);
// The same as a user without rights.
int ServeUnprivileged(const std::vector<std::string>& arguments);

}  // namespace btrieve::test
