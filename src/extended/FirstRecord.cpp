#include "extended/FirstRecord.h"

#include "core/LongRecord.h"
#include "core/RecordBuffer.h"
#include "core/ReturnCodes.h"
#include "platform/BtrCall.h"

namespace qrn {
namespace {

Status ReadFirst(const ExOperation& operation, DbTableInfo& table, const ExKey& key) {
  const int32_t usable = table.IsVariable != 0 ? table.BufferSize : table.RecordLength;
  uint32_t length = BoundedLength(table, int64_t{usable} + (operation.alongKey ? 1 : 0));
  return BtrCall(operation.first, table.PosBlock, table.RecordBuffer, &length, key.bytes,
                 key.length, key.number);
}

}  // namespace

Status GoToFirstRecord(const ExOperation& operation, DbTableInfo& table, const ExKey& key) {
  const Status status = ReadFirst(operation, table, key);
  if (status != BtrStatusDataBufferLength || table.IsVariable == 0) return status;
  if (!GrowRecordBuffer(table, table.RecordLength + kLongRecordSize)) return kFailure;
  return ReadFirst(operation, table, key);
}

}  // namespace qrn
