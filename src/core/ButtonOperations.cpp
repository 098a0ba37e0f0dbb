#include "core/ButtonOperations.h"

#include <algorithm>

#include "core/BoundWalk.h"
#include "core/DictionaryLookup.h"
#include "core/Gateway.h"
#include "core/KeyBuffer.h"
#include "core/LongRecord.h"
#include "core/MemoryFailure.h"
#include "core/Record.h"
#include "core/RecordBuffer.h"
#include "core/RecordWalk.h"
#include "core/ReturnCodes.h"
#include "fields/FieldText.h"
#include "fields/LittleEndian.h"
#include "platform/BtrCall.h"

namespace qrn {
namespace {

struct OperationPair {
  int32_t dbOperation;
  int32_t btrieve;
};

constexpr OperationPair kReads[] = {
    {DbGetEqual, BtrOpGetEqual},
    {DbGetFirst, BtrOpGetFirst},
    {DbGetLast, BtrOpGetLast},
    {DbGetNext, BtrOpGetNext},
    {DbGetPrevious, BtrOpGetPrevious},
    {DbGetGreater, BtrOpGetGreater},
    {DbGetLessThan, BtrOpGetLess},
    {DbGetGreaterOrEqual, BtrOpGetGreaterOrEqual},
    {DbGetLessThanOrEuqal, BtrOpGetLessOrEqual},
    {DbStepFirst, BtrOpStepFirst},
    {DbStepLast, BtrOpStepLast},
    {DbStepNext, BtrOpStepNext},
    {DbStepPrevious, BtrOpStepPrevious},
};

void ZeroRecord(DbTableInfo& table, int64_t size) {
  const auto record = RecordBytes(table);
  std::fill_n(record.begin(), BoundedLength(table, size), uint8_t{0});
}

int8_t KeyNumber(const DbTableInfo& table, const BoundCaller& caller) {
  return static_cast<int8_t>(DbSegmentToKey(table, caller.IndexID()));
}

int8_t WritingKeyNumber(const DbTableInfo& table, const BoundCaller& caller,
                        bool noCurrencyChange) {
  return noCurrencyChange ? static_cast<int8_t>(kNoKey) : KeyNumber(table, caller);
}

Status CallWithKey(uint16_t operation, DbTableInfo& table, uint32_t length, KeyBuffer& key,
                   int8_t keyNumber) {
  return BtrCall(operation, table.PosBlock, table.RecordBuffer, &length, key.Bytes(), key.Length(),
                 keyNumber);
}

// The table of a button after its `SetData`; otherwise why there is none.
struct Admission {
  DbTableInfo* table;
  Status refusal;
};

Admission AfterSetData(BoundButton& button) {
  if (button.RefusedBySetData()) return {nullptr, kRefused};
  DbTableInfo* table = button.Table();
  return {table, table != nullptr ? kSuccess : kNotOpen};
}

// The fixing of the data length comes between the event and the look at `Abort`; with nothing in
// between that could tell, the two are one step here.
Admission AfterSetData(DbEngine& engine, BoundButton& button, uint32_t& length) {
  const Admission admission = AfterSetData(button);
  if (admission.table != nullptr) DbRecordDataLength(engine, *admission.table, length);
  return admission;
}

bool ContinuesAlongKey(int32_t operation) {
  return operation == BtrOpGetNext || operation == BtrOpGetPrevious;
}

// Reads the whole of a record that the key has led to, whatever its length.
Status ReadWholeByPosition(DbTableInfo& table, BoundButton& button, KeyBuffer& key) {
  if (!GrowRecordBuffer(table, kLongRecordSize)) return kFailure;
  int32_t position = 0;
  uint32_t length = sizeof position;
  BtrCall(DbAddLock(BtrOpGetPosition, button.DbLocks()), table.PosBlock, &position, &length,
          nullptr, 0, 0);
  StoreLittle(RecordBytes(table), position);
  return CallWithKey(DbAddLock(BtrOpGetDirect, button.DbLocks()), table,
                     BoundedLength(table, table.BufferSize), key, KeyNumber(table, button));
}

// Stores the blobs that have controls; the sum of their lengths, -1 without memory.
int64_t StoreBlobs(DbEngine& engine, DbTableInfo& table, FieldControls& controls) {
  int64_t sum = 0;
  int32_t endOffset = table.RecordLength;
  RecordWalk walk(engine.Settings, table);
  while (walk.Next()) {
    std::string text;
    if (controls.ReadControlField(table, walk.Field(), text) > 0) {
      const int32_t stored = SetBlobField(engine.Settings, table, text.c_str(), walk.Field(),
                                          walk.Offset(), &endOffset);
      if (stored < 0) return -1;
      sum += stored;
      walk.StepAsText(text.c_str());
    } else {
      walk.Step();
    }
  }
  return sum;
}

Status Read(DbEngine& engine, int32_t operation, BoundButton& button) {
  const auto [table, refusal] = AfterSetData(button);
  if (table == nullptr) return refusal;
  const bool variable = table->IsVariable != 0;
  const int64_t length = variable ? kLongRecordSize : int64_t{table->RecordLength} + 1;
  if (!ContinuesAlongKey(operation)) {
    ZeroRecord(*table, length);
    CollectByOffset(engine, *table, button.Controls());
  }
  KeyBuffer key;
  if (!DbBuildKey(*table, button.IndexID(), key)) return kFailure;
  Status status = CallWithKey(DbAddLock(static_cast<uint16_t>(operation), button.DbLocks()), *table,
                              BoundedLength(*table, length), key, KeyNumber(*table, button));
  if (status != 0 && !(variable && status == BtrStatusDataBufferLength)) return status;
  if (variable) status = ReadWholeByPosition(*table, button, key);
  if (status == kFailure) return status;
  ShowOnControls(engine, button);
  return status;
}

Status Insert(DbEngine& engine, BoundButton& button, bool noCurrencyChange) {
  DbTableInfo* before = button.Table();
  if (before == nullptr) return kNotOpen;
  DbClearRecord(engine, *before);
  int64_t wanted = CollectFromControls(engine, *before, button.Controls());
  if (before->IsVariable != 0) {
    const int64_t blobs = StoreBlobs(engine, *before, button.Controls());
    if (blobs < 0) return kFailure;
    wanted = before->RecordLength + blobs;
  }
  uint32_t length = BoundedLength(*before, wanted);
  const auto [table, refusal] = AfterSetData(engine, button, length);
  if (table == nullptr) return refusal;
  KeyBuffer key;
  if (!DbBuildKey(*table, button.IndexID(), key)) return kFailure;
  return CallWithKey(DbAddLock(BtrOpInsert, button.DbLocks()), *table,
                     BoundedLength(*table, length), key,
                     WritingKeyNumber(*table, button, noCurrencyChange));
}

Status Update(DbEngine& engine, BoundButton& button, bool noCurrencyChange) {
  DbTableInfo* before = button.Table();
  if (before == nullptr) return kNotOpen;
  const int64_t walked = CollectFromControls(engine, *before, button.Controls());
  uint32_t length = BoundedLength(*before, walked);
  const auto [table, refusal] = AfterSetData(engine, button, length);
  if (table == nullptr) return refusal;
  KeyBuffer key;
  if (!DbBuildKey(*table, button.IndexID(), key)) return kFailure;
  if (table->IsVariable != 0) {
    // The blobs of the screen come after the length was fixed, so it is fixed again.
    if (StoreBlobs(engine, *table, button.Controls()) < 0) return kFailure;
    DbRecordDataLength(engine, *table, length);
  }
  return CallWithKey(DbAddLock(BtrOpUpdate, button.DbLocks()), *table,
                     BoundedLength(*table, length), key,
                     WritingKeyNumber(*table, button, noCurrencyChange));
}

Status Delete(BoundButton& button) {
  const auto [table, refusal] = AfterSetData(button);
  if (table == nullptr) return refusal;
  return BtrCall(DbAddLock(BtrOpDelete, button.DbLocks()), table->PosBlock, nullptr, nullptr,
                 nullptr, 0, 0);
}

Status Step(DbEngine& engine, int32_t operation, BoundButton& button) {
  DbTableInfo* table = button.Table();
  if (table == nullptr) return kNotOpen;
  uint32_t length = BoundedLength(*table, table->RecordLength);
  const Status status = BtrCall(DbAddLock(static_cast<uint16_t>(operation), button.DbLocks()),
                                table->PosBlock, table->RecordBuffer, &length, nullptr, 0, 0);
  if (status == 0) ShowOnControls(engine, button);
  return status;
}

Status Scroll(DbEngine& engine, int32_t operation, BoundCaller& caller) {
  DbTableInfo* table = caller.Table();
  if (table == nullptr) return kNotOpen;
  const int64_t length = int64_t{table->RecordLength} + 1;
  ZeroRecord(*table, length);
  CollectFromControls(engine, *table, caller.Controls());
  KeyBuffer key;
  if (!DbBuildKey(*table, caller.IndexID(), key)) return kFailure;
  const Status status = CallWithKey(static_cast<uint16_t>(operation), *table,
                                    BoundedLength(*table, length), key, KeyNumber(*table, caller));
  if (status == 0) ShowOnControls(engine, caller);
  return status;
}

}  // namespace

int32_t DbOpToBtrieve(int32_t dbOperation) noexcept {
  const auto* row = std::find_if(std::begin(kReads), std::end(kReads),
                                 [&](const auto& pair) { return pair.dbOperation == dbOperation; });
  return row != std::end(kReads) ? row->btrieve : -1;
}

Status DbButtonRead(DbEngine& engine, int32_t operation, BoundButton& button) {
  return OrNoMemory([&] { return Read(engine, operation, button); });
}

Status DbButtonInsert(DbEngine& engine, BoundButton& button, bool noCurrencyChange) {
  return OrNoMemory([&] { return Insert(engine, button, noCurrencyChange); });
}

Status DbButtonUpdate(DbEngine& engine, BoundButton& button, bool noCurrencyChange) {
  return OrNoMemory([&] { return Update(engine, button, noCurrencyChange); });
}

Status DbButtonDelete(DbEngine&, BoundButton& button) {
  return OrNoMemory([&] { return Delete(button); });
}

Status DbButtonStep(DbEngine& engine, int32_t operation, BoundButton& button) {
  return OrNoMemory([&] { return Step(engine, operation, button); });
}

Status DbScrollCall(DbEngine& engine, int32_t operation, BoundCaller& caller) {
  return OrNoMemory([&] { return Scroll(engine, operation, caller); });
}

}  // namespace qrn
