#include "tests/extended/ScriptedManager.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/BtrCall.h"

namespace qrn::test {
namespace {

ScriptedManager* current = nullptr;
std::string calls;

template <class Answer>
Answer TakeFirst(std::vector<Answer>& answers, Answer otherwise) {
  if (answers.empty()) return otherwise;
  Answer answer = answers.front();
  answers.erase(answers.begin());
  return answer;
}

bool IsExtended(uint16_t operation) { return operation % 100 >= 36 && operation % 100 <= 39; }

void Note(uint16_t operation, const void* data, const void* key, int8_t keyNumber) {
  if (!calls.empty()) calls += ' ';
  calls += std::to_string(operation);
  if (IsExtended(operation)) calls.append(static_cast<const char*>(data) + 2, 2);
  if (operation == 23) {
    int32_t position = 0;
    std::memcpy(&position, data, sizeof position);
    calls += '@';
    calls += std::to_string(position);
  }
  if (key == nullptr) return;
  calls += ":k";
  calls += std::to_string(static_cast<uint8_t>(keyNumber));
}

Status AnswerBatch(void* data, uint32_t* length) {
  const auto* bytes = static_cast<const uint8_t*>(data);
  current->request.assign(bytes, bytes + *length);
  const Batch batch = TakeFirst<Batch>(current->batches, {9, {0, 0}});
  if (batch.reply.empty()) return batch.status;
  const size_t size = std::min<size_t>(batch.reply.size(), *length);
  std::memcpy(data, batch.reply.data(), size);
  *length = static_cast<uint32_t>(batch.reply.size());
  return batch.status;
}

int16_t BTR_CALL Answer(uint16_t operation, void*, void* data, uint32_t* length, void* key, uint8_t,
                        int8_t keyNumber) {
  Note(operation, data, key, keyNumber);
  if (length != nullptr) current->length = *length;
  if (IsExtended(operation)) return AnswerBatch(data, length);
  if (operation == 23) return TakeFirst<Status>(current->directStatuses, 0);
  if (operation != 22) return TakeFirst<Status>(current->firstStatuses, 0);
  if (current->position == -1) return 8;
  std::memcpy(data, &current->position, sizeof current->position);
  return 0;
}

}  // namespace

ScriptedManager::ScriptedManager() {
  current = this;
  calls.clear();
  ReplaceBtrCall(Answer);
}

ScriptedManager::~ScriptedManager() { ReplaceBtrCall(nullptr); }

std::string ScriptedManager::TakeLog() { return std::exchange(calls, {}); }

}  // namespace qrn::test
