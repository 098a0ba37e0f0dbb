// The record manager's files of this process, closed at the end of a scope. For tests that have
// VE806 shown: a file whose records do not fit the dictionary stays open though no table has it,
// and an open file keeps its folder.
#pragma once

#include "platform/BtrCall.h"
#include "tests/support/Pinned.h"

namespace qrn::test {

class ClosedFiles : Pinned {
 public:
  ClosedFiles() = default;
  ~ClosedFiles() {
    uint32_t length = 0;
    BtrCall(BtrOpReset, nullptr, nullptr, &length, nullptr, 0, 0);
  }
};

}  // namespace qrn::test
