// A record manager that writes down what it is asked and answers as told, for the exact arguments
// of each call and for statuses that the real one does not give on demand.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>

#include "platform/BtrCall.h"
#include "tests/support/Pinned.h"

namespace qrn::test {

struct BtrieveCall {
  uint16_t operation;
  void* posBlock;
  uint8_t* data;
  uint32_t* dataLength;
  uint8_t* key;
  uint8_t keyLength;
  int8_t keyNumber;
};

std::string Hex(const void* bytes, size_t count);

// Stands in BTRCALL's place while it lives; there is one at a time.
class FakeBtrieve : Pinned {
 public:
  FakeBtrieve();
  ~FakeBtrieve();

  // Operations not told of give 0.
  void Answer(uint16_t operation, int16_t status) {
    answers_[operation] = [status](const BtrieveCall&) { return status; };
  }
  void Answer(uint16_t operation, std::function<int16_t(const BtrieveCall&)> answer) {
    answers_[operation] = std::move(answer);
  }

  // The calls since the last look: "6 len=11 key=2:4142 kn=0; " with "-" for null pointers.
  std::string TakeLog() { return std::exchange(log_, {}); }

 private:
  int16_t Call(const BtrieveCall& call);

  std::map<uint16_t, std::function<int16_t(const BtrieveCall&)>> answers_;
  std::string log_;
};

}  // namespace qrn::test
