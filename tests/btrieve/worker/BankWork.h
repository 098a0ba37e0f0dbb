// Work for the bank, batch by batch, to be killed in.
#pragma once

#include <string>
#include <vector>

namespace btrieve::test {

// Arguments: the first id of records to make, paths of the four files. Reads commands:
//   go SEED STEPS KIND N MOMENTS   steps by chance or of a kind; dies at the N-th moment of the
//                                  batch (0: lives): MOMENTS 0 writes, 1 all, 2 all from End on
//   view                           the state as this process sees it
//   reopen                         closes the files and opens them again
// An empty input ends it, in order. It tells, a line each:
//   p FILE POSITION ID   a record has been put there
//   e EFFECTS            the effects of the step, now to be decided
//   a EFFECTS            it was acknowledged
//   r                    it was refused and has done nothing
//   s STATE              the view
//   d                    the command has been carried out
//   x TEXT               what ought not to be
int BankWork(const std::vector<std::string>& arguments);

}  // namespace btrieve::test
