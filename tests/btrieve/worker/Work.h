// Work to be killed in.
#pragma once

#include <string>
#include <vector>

namespace btrieve::test {

// Arguments: seed, number of the first step, number of steps (0: until killed), write at which the
// process kills itself (0: none), paths of two files.
// Does the steps of Plan.h; after each one that was acknowledged a "." goes to the output, at the
// end a "!" once all files are closed, or an "E" where a status was not 0.
int Work(const std::vector<std::string>& arguments);

}  // namespace btrieve::test
