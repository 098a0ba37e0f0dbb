#include "core/RecordPosition.h"

#include <algorithm>

#include "core/DictionaryLookup.h"
#include "core/Gateway.h"
#include "core/KeyBuffer.h"
#include "core/RecordBuffer.h"
#include "core/ReturnCodes.h"
#include "fields/LittleEndian.h"
#include "platform/BtrCall.h"

namespace qrn {
namespace {

constexpr int32_t kUnlockCurrent = -1;

uint32_t WholeRecord(const DbTableInfo& table) {
  return BoundedLength(table, int64_t{table.RecordLength} + 1);
}

// Puts the request into the first bytes of an otherwise empty record.
void PutPosition(DbTableInfo& table, int32_t position) {
  const auto record = RecordBytes(table);
  std::fill_n(record.begin(), WholeRecord(table), uint8_t{0});
  StoreLittle(record, position);
}

int8_t KeyNumber(const DbTableInfo& table, int32_t indexPosition) {
  return static_cast<int8_t>(DbSegmentToKey(table, indexPosition));
}

}  // namespace

int32_t DbGetPositionOf(DbEngine&, DbTableInfo& table) noexcept {
  int32_t position = 0;
  uint32_t length = sizeof position;
  const Status status =
      BtrCall(BtrOpGetPosition, table.PosBlock, &position, &length, nullptr, 0, 0);
  return status == 0 ? position : -1;
}

Status DbGetDirectAt(DbEngine& engine, DbTableInfo& table, int32_t position,
                     int32_t indexPosition) noexcept {
  PutPosition(table, position);
  KeyBuffer key;
  if (!DbBuildKey(table, indexPosition, key)) return kNoIndex;
  const int32_t bias = indexPosition == kNoIndexPosition ? 0 : engine.LockBias;
  uint32_t length = WholeRecord(table);
  return BtrCall(static_cast<uint16_t>(BtrOpGetDirect + bias), table.PosBlock, table.RecordBuffer,
                 &length, key.Bytes(), key.Length(), KeyNumber(table, indexPosition));
}

Status DbGetDirectByName(DbEngine& engine, DbTableInfo& table, int32_t position,
                         const char* indexName) noexcept {
  const int32_t index = DbFindIndex(table, indexName);
  return index == -1 ? Status{kNoIndex} : DbGetDirectAt(engine, table, position, index);
}

Status DbGetByPercentageAt(DbEngine&, DbTableInfo& table, int32_t indexPosition,
                           uint16_t percentage) noexcept {
  KeyBuffer key;
  if (!DbBuildKey(table, indexPosition, key)) return kFailure;
  StoreLittle(RecordBytes(table), percentage);
  uint32_t length = WholeRecord(table);
  return BtrCall(BtrOpGetByPercentage, table.PosBlock, table.RecordBuffer, &length, key.Bytes(),
                 key.Length(), KeyNumber(table, indexPosition));
}

Status DbFindPercentageAt(DbEngine&, DbTableInfo& table, int32_t indexPosition, int32_t position,
                          uint16_t* percentage) noexcept {
  KeyBuffer key;
  if (!DbBuildKey(table, indexPosition, key)) return kFailure;
  int32_t value = position;
  uint32_t length = sizeof value;
  uint8_t* keyBytes = indexPosition == kNoIndexPosition ? nullptr : key.Bytes();
  const Status status = BtrCall(BtrOpFindPercentage, table.PosBlock, &value, &length, keyBytes,
                                key.Length(), KeyNumber(table, indexPosition));
  if (status == 0 && percentage != nullptr) *percentage = static_cast<uint16_t>(value);
  return status;
}

Status DbUnlockRecord(DbEngine& engine, DbTableInfo& table, int32_t unlockType) noexcept {
  const bool current = unlockType == kUnlockCurrent;
  int32_t position = current ? DbGetPositionOf(engine, table) : 0;
  uint32_t length = current ? sizeof position : 0;
  return BtrCall(BtrOpUnlock, table.PosBlock, &position, &length, nullptr, 0,
                 static_cast<int8_t>(unlockType));
}

}  // namespace qrn
