#include "extended/ExResults.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "core/ReturnCodes.h"
#include "extended/ExFieldText.h"
#include "extended/ExResultStore.h"
#include "extended/FieldReference.h"

namespace qrn {
namespace {

char textByNumber[kExFieldTextSize];
char textByName[kExFieldTextSize];

// The first item of the list that `matches`, its place in the records' data, and its text.
template <class Matches>
const char* ReadItem(const DbEngine& engine, int16_t resultId, int32_t location, Matches matches,
                     std::span<char> outText) {
  const ExResultSlot* slot = TheExResults().Find(resultId);
  if (slot == nullptr) return nullptr;
  const auto record = slot->Record(location);
  if (!record) return nullptr;
  size_t offset = 0;
  for (const ExField& field : slot->Plan) {
    if (matches(field)) {
      ExFieldText(engine.Settings, slot->Table, field.Info, record->Data, offset, outText);
      return outText.data();
    }
    offset += FieldWidth(field.Info);
  }
  return nullptr;
}

}  // namespace

const char* DbExReadField(DbEngine& engine, int16_t resultId, int32_t fieldPosition,
                          int32_t location) noexcept {
  const auto matches = [&](const ExField& field) { return field.Number == fieldPosition; };
  return ReadItem(engine, resultId, location, matches, textByNumber);
}

const char* DbExReadFieldByName(DbEngine& engine, int16_t resultId, const char* fieldName,
                                int32_t location) noexcept {
  if (fieldName == nullptr) return nullptr;
  const std::string_view name = fieldName;
  const auto matches = [&](const ExField& field) {
    return field.AnswersToItsName && name == field.Info.Name;
  };
  return ReadItem(engine, resultId, location, matches, textByName);
}

int32_t DbExPositionOf(int16_t resultId, int32_t location) noexcept {
  const ExResultSlot* slot = TheExResults().Find(resultId);
  const auto record = slot != nullptr ? slot->Record(location) : std::nullopt;
  return record ? static_cast<int32_t>(record->Position) : -1;
}

Status DbExFreeResult(int16_t resultId) noexcept {
  return TheExResults().Free(resultId) ? kSuccess : kFailure;
}

}  // namespace qrn
