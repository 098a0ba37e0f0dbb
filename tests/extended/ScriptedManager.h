// A record manager that says what a test tells it, and writes down what it was asked. It stands in
// BTRCALL's place to provoke what the real one does rarely or never.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "core/DbTypes.h"
#include "platform/BtrCall.h"
#include "tests/support/Pinned.h"

namespace qrn::test {

struct Batch {
  Status status;
  std::vector<uint8_t> reply;  // empty: the buffer is left as it was
};

class ScriptedManager : Pinned {
 public:
  ScriptedManager() {
    present_ = this;
    ReplaceBtrCall(
        [](uint16_t operation, void*, void* data, uint32_t* room, void* key, uint8_t,
           int8_t keyNumber) { return present_->Answer(operation, data, room, key, keyNumber); });
  }
  ~ScriptedManager() { ReplaceBtrCall(nullptr); }

  // Answers of the extended operations, one after another; 9 without records when they are used
  // up.
  std::vector<Batch> batches;
  std::vector<Status> firstStatuses;   // of operations 12, 13, 33, 34; 0 when used up
  std::vector<Status> directStatuses;  // of operation 23; 0 when used up
  int32_t position = 77;               // operation 22; -1: it fails with 8

  // The calls since the last one, "22 12:k0 36UC:k0 9:..": operation, signature of a request, key
  // number where a key goes along, and of operation 23 the position.
  std::string TakeLog() { return std::exchange(calls_, {}); }

  // The request of the last extended operation, and the data length of the last call.
  std::vector<uint8_t> request;
  uint32_t length = 0;

 private:
  template <class Value>
  static Value TakeFirst(std::vector<Value>& answers, Value otherwise) {
    if (answers.empty()) return otherwise;
    Value answer = answers.front();
    answers.erase(answers.begin());
    return answer;
  }
  static bool IsExtended(uint16_t operation) {
    return operation % 100 >= 36 && operation % 100 <= 39;
  }

  void Note(uint16_t operation, const void* data, const void* key, int8_t keyNumber) {
    calls_ += (calls_.empty() ? "" : " ") + std::to_string(operation);
    if (IsExtended(operation)) calls_.append(static_cast<const char*>(data) + 2, 2);
    if (operation == 23) {
      int32_t goal = 0;
      std::memcpy(&goal, data, sizeof goal);
      calls_ += "@" + std::to_string(goal);
    }
    if (key != nullptr) calls_ += ":k" + std::to_string(static_cast<uint8_t>(keyNumber));
  }
  Status AnswerBatch(void* data, uint32_t* room) {
    const auto* bytes = static_cast<const uint8_t*>(data);
    request.assign(bytes, bytes + *room);
    const Batch batch = TakeFirst<Batch>(batches, {9, {0, 0}});
    if (batch.reply.empty()) return batch.status;
    std::memcpy(data, batch.reply.data(), std::min<size_t>(batch.reply.size(), *room));
    *room = static_cast<uint32_t>(batch.reply.size());
    return batch.status;
  }
  int16_t Answer(uint16_t operation, void* data, uint32_t* room, void* key, int8_t keyNumber) {
    Note(operation, data, key, keyNumber);
    if (room != nullptr) length = *room;
    if (IsExtended(operation)) return AnswerBatch(data, room);
    if (operation == 23) return TakeFirst<Status>(directStatuses, 0);
    if (operation != 22) return TakeFirst<Status>(firstStatuses, 0);
    if (position == -1) return 8;
    std::memcpy(data, &position, sizeof position);
    return 0;
  }

  static inline ScriptedManager* present_ = nullptr;
  std::string calls_;
};

}  // namespace qrn::test
