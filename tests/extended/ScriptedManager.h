// A record manager that says what a test tells it, and writes down what it was asked. It stands in
// BTRCALL's place to provoke what the real one does rarely or never.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/DbTypes.h"
#include "tests/support/Pinned.h"

namespace qrn::test {

struct Batch {
  Status status;
  std::vector<uint8_t> reply;  // empty: the buffer is left as it was
};

class ScriptedManager : Pinned {
 public:
  ScriptedManager();
  ~ScriptedManager();

  // Answers of the extended operations, one after another; 9 without records when they are used
  // up.
  std::vector<Batch> batches;
  std::vector<Status> firstStatuses;   // of operations 12, 13, 33, 34; 0 when used up
  std::vector<Status> directStatuses;  // of operation 23; 0 when used up
  int32_t position = 77;               // operation 22; -1: it fails with 8

  // The calls since the last one, "22 12:k0 36UC:k0 9:..": operation, signature of a request, key
  // number where a key goes along, and of operation 23 the position.
  std::string TakeLog();

  // The request of the last extended operation, and the data length of the last call.
  std::vector<uint8_t> request;
  uint32_t length = 0;
};

}  // namespace qrn::test
