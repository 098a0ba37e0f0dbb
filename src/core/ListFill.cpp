#include "core/ListFill.h"

#include <algorithm>
#include <string>

#include "core/DictionaryLookup.h"
#include "core/Gateway.h"
#include "core/KeyBuffer.h"
#include "core/LongRecord.h"
#include "core/MemoryFailure.h"
#include "core/Record.h"
#include "core/RecordBuffer.h"
#include "core/RecordPlace.h"
#include "core/ReturnCodes.h"
#include "core/RowHook.h"
#include "platform/BtrCall.h"

namespace qrn {
namespace {

constexpr size_t kLineSize = 1024;  // bytes of a row's text with its NUL

// One fill under way. The table is asked for anew after each event.
class Fill {
 public:
  Fill(DbEngine& engine, RowSink& sink, int32_t field, int32_t indexPosition)
      : engine_(engine),
        sink_(sink),
        hook_(sink, kLineSize),
        field_(field),
        indexPosition_(indexPosition) {}

  Status Run(DbTableInfo& table, KeyBuffer& key);

 private:
  Status Read(DbTableInfo& table, KeyBuffer& key, uint16_t operation, int64_t length);
  Status ReadFirst(DbTableInfo& table, KeyBuffer& key);
  Status ReadNext(DbTableInfo& table, KeyBuffer& key);
  bool AddRow(const DbTableInfo& table);

  DbEngine& engine_;
  RowSink& sink_;
  RowHook hook_;
  int32_t field_;
  int32_t indexPosition_;
};

Status Fill::Read(DbTableInfo& table, KeyBuffer& key, uint16_t operation, int64_t length) {
  uint32_t dataLength = BoundedLength(table, length);
  return BtrCall(operation, table.PosBlock, table.RecordBuffer, &dataLength, key.Bytes(),
                 key.Length(), static_cast<int8_t>(DbSegmentToKey(table, indexPosition_)));
}

Status Fill::ReadFirst(DbTableInfo& table, KeyBuffer& key) {
  const bool variable = table.IsVariable != 0;
  const int64_t length = variable ? kLongRecordSize : int64_t{table.RecordLength} + 1;
  const Status status = Read(table, key, BtrOpGetFirst, length);
  if (status != BtrStatusDataBufferLength || !variable) return status;
  const int32_t wanted = table.RecordLength + kLongRecordSize;
  if (!GrowRecordBuffer(table, wanted)) return kFailure;
  return Read(table, key, BtrOpGetFirst, wanted);
}

Status Fill::ReadNext(DbTableInfo& table, KeyBuffer& key) {
  const Status status = Read(table, key, BtrOpGetNext, int64_t{table.RecordLength} + 1);
  if (status != BtrStatusDataBufferLength || table.IsVariable == 0) return status;
  uint32_t length = 0;
  return DbReadLongRecord(engine_, table, length, key, indexPosition_);
}

// False when the fill is to end.
bool Fill::AddRow(const DbTableInfo& table) {
  char line[kLineSize] = {};
  DbReadFieldInto(engine_, table, field_, line);
  FormattedTarget = engine_.FormattedText;
  const char* row = hook_.Format(engine_.FormattedText, line);
  if (row == nullptr) return false;
  return *row == '\0' || sink_.AddRow(row);
}

Status Fill::Run(DbTableInfo& first, KeyBuffer& key) {
  Status status = ReadFirst(first, key);
  if (status != 0) return status;
  sink_.Empty(1);
  for (DbTableInfo* table = sink_.Table(); status == 0 && table != nullptr;) {
    if (!AddRow(*table)) break;
    table = sink_.Table();
    if (table != nullptr) status = ReadNext(*table, key);
  }
  return 0;
}

}  // namespace

Status DbFillList(DbEngine& engine, RowSink& sink, const char* fieldName, int32_t indexPosition) {
  DbTableInfo* table = sink.Table();
  if (table == nullptr || table->IsOpen == 0) return kSuccess;
  const RecordPlace place(engine, *table);
  const int32_t field = DbFindField(*table, fieldName);
  if (field < 0) return kSuccess;
  const auto record = RecordBytes(*table);
  std::fill(record.begin(), record.end(), uint8_t{0});
  KeyBuffer key;
  if (!DbBuildKey(*table, indexPosition, key)) return kFailure;
  const bool fixed = table->IsVariable == 0;
  Fill fill(engine, sink, field, indexPosition);
  const Status status = OrNoMemory([&] { return fill.Run(*table, key); });
  if (status == BtrStatusDataBufferLength && fixed) return kSuccess;
  table = sink.Table();
  if (table != nullptr && table->IsOpen != 0) place.GoBack(*table, indexPosition);
  return status == kFailure ? kFailure : kSuccess;
}

}  // namespace qrn
