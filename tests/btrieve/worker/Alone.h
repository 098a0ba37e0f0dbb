// Work on one file that its parent watches from outside.
#pragma once

#include <string>
#include <vector>

namespace btrieve::test {

// Argument: path. Reads along key 0 without a pause, from the start again at the end, until killed;
// a "." goes to the output once it reads, an "E" where a status was neither 0 nor 9.
int ReadForEver(const std::vector<std::string>& arguments);

// Arguments: path, a record in hex. Inserts it, without closing anything, and ends as a program
// does: a "." goes to the output after the call, an "S" for each sync of a log.
int InsertAndEnd(const std::vector<std::string>& arguments);

// Arguments: path, a moment, a record in hex. Inserts it and stands still at the moment; a "." goes
// to the output after the call, or an "E" where its status was not 0.
int InsertAndHalt(const std::vector<std::string>& arguments);

}  // namespace btrieve::test
