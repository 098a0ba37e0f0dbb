#include "core/DictionaryLookup.h"
#include "core/Gateway.h"
#include "core/KeyBuffer.h"
#include "core/Record.h"
#include "core/RecordBuffer.h"
#include "core/RecordWalk.h"
#include "core/ReturnCodes.h"
#include "fields/LittleEndian.h"
#include "platform/BtrCall.h"

namespace qrn {
namespace {

uint32_t PlainDataLength(const DbTableInfo& table) {
  const int32_t length = table.IsVariable != 0 ? table.BufferSize : table.RecordLength;
  return BoundedLength(table, int64_t{length} + 1);
}

int64_t LengthWithBlobs(DbEngine& engine, DbTableInfo& table) {
  int64_t length = table.RecordLength;
  RecordWalk walk(engine.Settings, table);
  while (walk.Next()) {
    if (walk.Field().Type == kBlob) length += LoadLittle<uint32_t>(walk.Place());
    walk.Step();
  }
  return length;
}

int64_t LengthByWalk(DbEngine& engine, DbTableInfo& table) {
  RecordWalk walk(engine.Settings, table);
  while (walk.Next()) walk.Step();
  return walk.Offset();
}

bool EndsInText(const DbTableInfo& table) {
  if (table.FieldCount == 0) return false;
  const int32_t last = table.Fields[table.FieldCount - 1].Type;
  return last == kNote || last == kLVar;
}

bool Writes(int32_t operation) { return operation == BtrOpInsert || operation == BtrOpUpdate; }

}  // namespace

void DbRecordDataLength(DbEngine& engine, DbTableInfo& table, uint32_t& length) noexcept {
  if (table.IsVariable == 0) return;
  const int64_t wanted =
      EndsInText(table) ? LengthByWalk(engine, table) : LengthWithBlobs(engine, table);
  length = BoundedLength(table, wanted);
}

Status DbRecordCall(DbEngine& engine, DbTableInfo& table, int32_t operation,
                    int32_t indexPosition) noexcept {
  uint32_t length = PlainDataLength(table);
  KeyBuffer key;
  if (!DbBuildKey(table, indexPosition, key)) return kNoIndex;
  if (Writes(operation)) DbRecordDataLength(engine, table, length);
  return BtrCall(static_cast<uint16_t>(operation + engine.LockBias), table.PosBlock,
                 table.RecordBuffer, &length, key.Bytes(), key.Length(),
                 static_cast<int8_t>(DbSegmentToKey(table, indexPosition)));
}

Status DbRecordCallByName(DbEngine& engine, DbTableInfo& table, int32_t operation,
                          const char* indexName) noexcept {
  const int32_t position = DbFindIndex(table, indexName);
  return position == -1 ? Status{kNoIndex} : DbRecordCall(engine, table, operation, position);
}

Status DbCountRecords(DbEngine&, DbTableInfo& table, int32_t* count) noexcept {
  uint8_t reply[4096] = {};
  uint8_t key[256] = {};
  uint32_t length = sizeof reply;
  const Status status = BtrCall(BtrOpStat, table.PosBlock, reply, &length, key, 0, 0);
  if (status == 0 && count != nullptr) {
    *count = static_cast<int32_t>(LoadLittle<BtrFileSpec>(reply).recordCount);
  }
  return status;
}

}  // namespace qrn
