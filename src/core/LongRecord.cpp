#include "core/LongRecord.h"

#include <algorithm>

#include "core/DictionaryLookup.h"
#include "core/Gateway.h"
#include "core/MemoryFailure.h"
#include "core/RecordBuffer.h"
#include "core/ReturnCodes.h"
#include "fields/LittleEndian.h"
#include "platform/BtrCall.h"

namespace qrn {

bool GrowRecordBuffer(DbTableInfo& table, int32_t size) noexcept {
  if (size <= table.BufferSize) return true;
  const auto allocated = static_cast<int32_t>(table.BufferAllocated);
  if (!AllocateRecordBuffer(table, std::max(size, allocated))) {
    ReportMemoryFailure();
    return false;
  }
  table.BufferSize = size;
  return true;
}

Status DbReadLongRecord(DbEngine&, DbTableInfo& table, uint32_t& dataLength, KeyBuffer& key,
                        int32_t indexPosition) noexcept {
  const int32_t wanted = table.RecordLength + kLongRecordSize;
  if (!GrowRecordBuffer(table, wanted)) return kFailure;
  int32_t position = 0;
  uint32_t length = sizeof position;
  // Without a position the read by it answers with the status.
  BtrCall(BtrOpGetPosition, table.PosBlock, &position, &length, nullptr, 0, 0);
  StoreLittle(RecordBytes(table), position);
  dataLength = BoundedLength(table, wanted);
  return BtrCall(BtrOpGetDirect, table.PosBlock, table.RecordBuffer, &dataLength, key.Bytes(),
                 key.Length(), static_cast<int8_t>(DbSegmentToKey(table, indexPosition)));
}

}  // namespace qrn
