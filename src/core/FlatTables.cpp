// The flat functions that work on tables and records: a check, then the engine.
#include "core/Dictionary.h"
#include "core/DictionaryLookup.h"
#include "core/FlatGuard.h"
#include "core/Record.h"
#include "core/RecordPosition.h"
#include "core/Table.h"
#include "core/Transactions.h"
#include "qrnbt350.h"

namespace qrn::flat {
namespace {

// Where a table is opened or created from.
struct Origin {
  const char* directory;
  const char* ownerName;
  int32_t mode;
};

Origin OwnOrigin(const DbFlatState& state) {
  return {state.DdfDir, state.OwnerName, state.OpenMode};
}

Origin AttachedOrigin(const AttachedDatabase& control) {
  return {control.DdfDirText(), control.OwnerNameText(), control.OpenModeValue()};
}

// An attach by window handle leaves the form's window unset: opens then do not ask the control.
Origin OpenOrigin(const DbFlatState& state) {
  const bool asksControl = state.FormWindow != nullptr && state.AttachedControl != nullptr;
  return asksControl ? AttachedOrigin(*state.AttachedControl) : OwnOrigin(state);
}

Origin CreateOrigin(const DbFlatState& state) {
  return state.AttachedControl != nullptr ? AttachedOrigin(*state.AttachedControl)
                                          : OwnOrigin(state);
}

}  // namespace

extern "C" {

int32_t DbOpen(int16_t tableId) noexcept {
  return OnTable(tableId, [](DbTableInfo& table) -> int32_t {
    if (table.IsOpen != 0) return kAlreadyOpen;
    const Origin origin = OpenOrigin(TheFlatState());
    return DbTableOpen(TheEngine(), table, origin.directory, origin.ownerName, origin.mode);
  });
}

int32_t DbClose(int16_t tableId) noexcept {
  return OnOpenTable(tableId, [](DbTableInfo& table) { return DbTableClose(TheEngine(), table); });
}

int32_t DbCreate(int16_t tableId) noexcept {
  return OnTable(tableId, [](DbTableInfo& table) -> int32_t {
    if (table.IsOpen != 0) return kAlreadyOpen;
    return DbTableCreateIn(TheEngine(), table, CreateOrigin(TheFlatState()).directory);
  });
}

int32_t DbGetNumOfRecords(int16_t tableId, int32_t* count) noexcept {
  return OnOpenTable(tableId,
                     [=](DbTableInfo& table) { return DbCountRecords(TheEngine(), table, count); });
}

int32_t DbAccess(int16_t operation, int16_t tableId, int16_t indexPosition) noexcept {
  return OnOpenTable(tableId, [=](DbTableInfo& table) {
    return DbRecordCall(TheEngine(), table, operation, indexPosition);
  });
}

int32_t DbGetPosition(int16_t tableId) noexcept {
  return OnOpenTable(tableId,
                     [](DbTableInfo& table) { return DbGetPositionOf(TheEngine(), table); });
}

int32_t DbGetDirect(int16_t tableId, int32_t position, int16_t indexPosition) noexcept {
  return OnOpenTable(tableId, [=](DbTableInfo& table) {
    return DbGetDirectAt(TheEngine(), table, position, indexPosition);
  });
}

int32_t DbGetByPercentage(int16_t tableId, int16_t indexPosition, int16_t percentage) noexcept {
  return OnOpenTable(tableId, [=](DbTableInfo& table) {
    return DbGetByPercentageAt(TheEngine(), table, indexPosition,
                               static_cast<uint16_t>(percentage));
  });
}

int32_t DbFindPercentage(int16_t tableId, int16_t indexPosition, int32_t position,
                         uint16_t* percentage) noexcept {
  return OnOpenTable(tableId, [=](DbTableInfo& table) {
    return DbFindPercentageAt(TheEngine(), table, indexPosition, position, percentage);
  });
}

int32_t DbUnlock(int16_t tableId, int16_t unlockType) noexcept {
  return OnOpenTable(
      tableId, [=](DbTableInfo& table) { return DbUnlockRecord(TheEngine(), table, unlockType); });
}

int32_t DbClearFieldBuffer(int16_t tableId) noexcept {
  return OnOpenTable(tableId, [](DbTableInfo& table) { return DbClearRecord(TheEngine(), table); });
}

// The field is found by its name, so that of two fields of one name the first is written.
int32_t DbSetFieldData(int16_t tableId, int16_t fieldPosition, const char* text) noexcept {
  return OnOpenTable(tableId, [=](DbTableInfo& table) -> int32_t {
    const DbFieldInfo* field = DbFieldAt(table, fieldPosition);
    if (field == nullptr) return kNoField;
    return DbWriteFieldByName(TheEngine(), table, field->Name, text != nullptr ? text : "");
  });
}

int32_t DbBeginTransaction(int16_t lockBias) noexcept { return qrn::DbBeginTransaction(lockBias); }
int32_t DbBeginConCurTransaction(int16_t lockBias) noexcept {
  return qrn::DbBeginConCurTransaction(lockBias);
}
int32_t DbEndTransaction() noexcept { return qrn::DbEndTransaction(); }
int32_t DbAbortTransaction() noexcept { return qrn::DbAbortTransaction(); }

}  // extern "C"

}  // namespace qrn::flat
