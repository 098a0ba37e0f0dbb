#include "core/RecordPlace.h"

#include <algorithm>

#include "core/DictionaryLookup.h"
#include "core/Gateway.h"
#include "core/KeyBuffer.h"
#include "core/LongRecord.h"
#include "core/RecordBuffer.h"
#include "core/RecordPosition.h"
#include "core/ReturnCodes.h"
#include "fields/LittleEndian.h"
#include "platform/BtrCall.h"

namespace qrn {
namespace {

constexpr Status kNotInKey = 44;
constexpr int32_t kNoPosition = -1;

// All that the buffer holds where records differ in length: a shorter read would leave the end of
// another record behind.
std::span<uint8_t> RoomForRecord(DbTableInfo& table) {
  const auto room = RecordBytes(table);
  if (table.IsVariable != 0) return room;
  return room.first(BoundedLength(table, int64_t{table.RecordLength} + 1));
}

Status Read(DbTableInfo& table, int32_t position, int32_t indexPosition) noexcept {
  const auto record = RoomForRecord(table);
  std::fill(record.begin(), record.end(), uint8_t{0});
  StoreLittle(record, position);
  KeyBuffer key;
  if (!DbBuildKey(table, indexPosition, key)) return kNoIndex;
  auto length = static_cast<uint32_t>(record.size());
  return BtrCall(BtrOpGetDirect, table.PosBlock, record.data(), &length, key.Bytes(), key.Length(),
                 static_cast<int8_t>(DbSegmentToKey(table, indexPosition)));
}

}  // namespace

Status DbReadWholeAt(DbTableInfo& table, int32_t position, int32_t indexPosition) noexcept {
  const Status status = Read(table, position, indexPosition);
  if (status != BtrStatusDataBufferLength || table.IsVariable == 0) return status;
  if (!GrowRecordBuffer(table, table.RecordLength + kLongRecordSize)) return kFailure;
  return Read(table, position, indexPosition);
}

RecordPlace::RecordPlace(DbEngine& engine, DbTableInfo& table) noexcept
    : position_(DbGetPositionOf(engine, table)) {}

Status RecordPlace::GoBack(DbTableInfo& table, int32_t indexPosition) const noexcept {
  if (position_ == kNoPosition) return kSuccess;
  const Status status = DbReadWholeAt(table, position_, indexPosition);
  if (status != kNotInKey || indexPosition == kNoIndexPosition) return status;
  return DbReadWholeAt(table, position_, kNoIndexPosition);
}

}  // namespace qrn
