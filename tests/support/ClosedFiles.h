// The record manager's files of this process, closed at the end of a scope. For tests that have
// VE806 shown: a file whose records do not fit the dictionary stays open though no table has it,
// and an open file keeps its folder.
#pragma once

#include "platform/BtrCall.h"

namespace qrn::test {

class ClosedFiles {
 public:
  ClosedFiles() = default;
  ~ClosedFiles() {
    uint32_t length = 0;
    BtrCall(BtrOpReset, nullptr, nullptr, &length, nullptr, 0, 0);
  }
  ClosedFiles(const ClosedFiles&) = delete;
  ClosedFiles& operator=(const ClosedFiles&) = delete;
};

}  // namespace qrn::test
