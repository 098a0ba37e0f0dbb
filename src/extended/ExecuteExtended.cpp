#include "extended/ExecuteExtended.h"

#include <cstring>
#include <new>
#include <optional>

#include "core/DictionaryLookup.h"
#include "core/KeyBuffer.h"
#include "core/ReturnCodes.h"
#include "extended/ExExchange.h"
#include "extended/ExMemoryFailure.h"
#include "extended/ExOperation.h"
#include "extended/ExReply.h"
#include "extended/ExResultStore.h"
#include "extended/SearchCond.h"
#include "fields/Messages.h"

namespace qrn {
namespace {

// Leaves `result` alone when all slots are taken.
void KeepReply(const DbTableInfo& table, const ExAccess& access, const FieldList& fields,
               std::span<const uint8_t> reply, ExAccessResult& result) {
  const int16_t id = TheExResults().Keep(table, access.Fields, fields, reply);
  if (id == kNoResult) return;
  result.ResultId = id;
  result.NumOfResults = static_cast<uint16_t>(TheExResults().Find(id)->Records.size());
}

// `findKey` gives the index position when its turn comes; nothing for a name that is no key's.
template <class FindKey>
Status Execute(DbEngine& engine, DbTableInfo& table, const ExAccess& access, FindKey findKey,
               ExAccessResult& result) {
  const auto condition = ParseSearchCond(engine, table, access.SearchCond, access.IgnoreCase);
  if (!condition) return kBadCondition;
  const auto fields = ParseFieldList(engine, table, access.Fields);
  if (!fields) return kBadFieldList;
  auto exchange = ExExchange::Make(
      ExRequest(engine.ExMode, access.SkipRecords, *condition, access.MaxRecords, *fields));
  if (!exchange) return kExNoMemory;
  KeyBuffer key;
  const std::optional<int32_t> position = findKey();
  if (!position || !DbBuildKey(table, *position, key)) return kNoIndex;
  const Status status = exchange->Call(
      static_cast<uint16_t>(access.Operation), table,
      {key.Bytes(), key.Length(), static_cast<int8_t>(DbSegmentToKey(table, *position))});
  if (BringsRecords(status)) KeepReply(table, access, *fields, exchange->Reply(), result);
  return status;
}

template <class FindKey>
Status ExecuteChecked(DbEngine& engine, DbTableInfo& table, const ExAccess& access, FindKey findKey,
                      ExAccessResult& result) noexcept {
  if (table.IsOpen == 0) return kNotOpen;
  if (!IsExtendedOperation(access.Operation)) {
    ShowMessage(kVE044, static_cast<int>(access.Operation));
    return kBadExOperation;
  }
  try {
    return Execute(engine, table, access, findKey, result);
  } catch (const std::bad_alloc&) {
    ReportExMemoryFailure();
    return kExNoMemory;
  }
}

}  // namespace

Status ExecuteExtended(DbEngine& engine, DbTableInfo& table, const ExAccess& access,
                       ExAccessResult& result) noexcept {
  const auto given = [&] { return std::optional(access.Key); };
  return ExecuteChecked(engine, table, access, given, result);
}

Status ExecuteExtendedByName(DbEngine& engine, DbTableInfo& table, const ExAccess& access,
                             const char* keyName, ExAccessResult& result) noexcept {
  const auto named = [&]() -> std::optional<int32_t> {
    const int32_t position = DbFindIndex(table, keyName);
    const bool mayMiss = (keyName == nullptr || *keyName == '\0') && !NeedsKey(access.Operation);
    if (position == kNoIndexPosition && !mayMiss) return std::nullopt;
    return position;
  };
  return ExecuteChecked(engine, table, access, named, result);
}

Status DbExSetMode(DbEngine& engine, const char* mode) noexcept {
  if (mode == nullptr || std::strlen(mode) != 2) return kFailure;
  std::memcpy(engine.ExMode, mode, 3);
  return kSuccess;
}

}  // namespace qrn
