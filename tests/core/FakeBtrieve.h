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

inline std::string Hex(const void* bytes, size_t count) {
  static const char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (size_t i = 0; i < count; ++i) {
    const uint8_t byte = static_cast<const uint8_t*>(bytes)[i];
    text += {kDigits[byte >> 4], kDigits[byte & 15]};
  }
  return text;
}

// Stands in BTRCALL's place while it lives; there is one at a time.
class FakeBtrieve : Pinned {
 public:
  FakeBtrieve() {
    present_ = this;
    ReplaceBtrCall([](uint16_t operation, void* posBlock, void* data, uint32_t* dataLength,
                      void* key, uint8_t keyLength, int8_t keyNumber) {
      return present_->Call({operation, posBlock, static_cast<uint8_t*>(data), dataLength,
                             static_cast<uint8_t*>(key), keyLength, keyNumber});
    });
  }
  ~FakeBtrieve() {
    ReplaceBtrCall(nullptr);
    present_ = nullptr;
  }

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
  int16_t Call(const BtrieveCall& call) {
    log_ +=
        std::to_string(call.operation) + (call.posBlock != nullptr ? "" : " noblock") +
        (call.data != nullptr ? "" : " nodata") +
        " len=" + (call.dataLength != nullptr ? std::to_string(*call.dataLength) : "-") + " key=" +
        (call.key != nullptr ? std::to_string(call.keyLength) + ":" + Hex(call.key, call.keyLength)
                             : "-") +
        " kn=" + std::to_string(call.keyNumber) + "; ";
    const auto answer = answers_.find(call.operation);
    return answer != answers_.end() ? answer->second(call) : int16_t{0};
  }

  static inline FakeBtrieve* present_ = nullptr;
  std::map<uint16_t, std::function<int16_t(const BtrieveCall&)>> answers_;
  std::string log_;
};

}  // namespace qrn::test
