// A database control's records and fields.
#include <cstring>

#include "binding/database/Database.h"
#include "core/DictionaryLookup.h"
#include "core/Record.h"
#include "core/RecordPosition.h"
#include "core/ReturnCodes.h"
#include "extended/ExResults.h"
#include "fields/FieldText.h"

namespace qrn {
namespace {

NullableText OrNothing(const char* text) {
  if (text == nullptr) return std::nullopt;
  return text;
}

}  // namespace

NullableText Database::DbGetFieldData(const char* tableName, const char* fieldName) {
  const DbTableInfo* table = Find(tableName);
  return OrNothing(table != nullptr ? DbReadFieldByName(TheEngine(), *table, fieldName) : nullptr);
}

Status Database::DbSetFieldData(const char* tableName, const char* fieldName, const char* text) {
  return WithTable(tableName, [&](DbTableInfo& table) {
    return DbWriteFieldByName(TheEngine(), table, fieldName, text);
  });
}

NullableText Database::DbGetFieldDataByID(int32_t tableId, int32_t fieldId) {
  if (!Dictionary || tableId < 0 || tableId >= Dictionary->TableCount) return std::nullopt;
  return OrNothing(DbReadField(TheEngine(), Dictionary->Tables[tableId], fieldId));
}

Status Database::DbSetFieldDataByID(int32_t tableId, int32_t fieldId, const char* text) {
  if (!Dictionary) return kControlHasNoDictionary;
  if (tableId < 0 || tableId >= Dictionary->TableCount) return kNoTable;
  DbTableInfo& table = Dictionary->Tables[tableId];
  if (table.IsOpen == 0) return kNotOpen;
  return DbWriteField(TheEngine(), table, fieldId, text);
}

bool Database::DbIsNull(const char* tableName, const char* fieldName) {
  const DbTableInfo* table = Find(tableName);
  return table != nullptr && IsFieldNull(TheEngine().Settings, *table, fieldName) != 0;
}

Status Database::DbClearFieldBuffer(const char* tableName) {
  return WithOpenTable(tableName,
                       [](DbTableInfo& table) { return DbClearRecord(TheEngine(), table); });
}

Status Database::DbAccess(int32_t operation, const char* tableName, const char* index) {
  return WithOpenTable(tableName, [&](DbTableInfo& table) {
    return DbRecordCallByName(TheEngine(), table, operation, index);
  });
}

Status Database::DbAccessByID(int32_t operation, int32_t tableId, int32_t indexId) {
  if (!Dictionary) return kControlHasNoDictionary;
  if (tableId < 0 || tableId > Dictionary->TableCount) return kBadTableId;
  DbTableInfo& table = Dictionary->Tables[tableId];
  return table.IsOpen != 0 ? DbRecordCall(TheEngine(), table, operation, indexId)
                           : Status{kNotOpen};
}

int32_t Database::DbGetPosition(const char* tableName) {
  DbTableInfo* table = Find(tableName);
  return table != nullptr && table->IsOpen != 0 ? DbGetPositionOf(TheEngine(), *table) : -1;
}

Status Database::DbGetDirect(const char* tableName, int32_t position, const char* index) {
  return WithOpenTable(tableName, [&](DbTableInfo& table) {
    return DbGetDirectByName(TheEngine(), table, position, index);
  });
}

Status Database::DbGetByPercentage(const char* tableName, const char* index, int32_t percentage) {
  return WithOpenTable(tableName, [&](DbTableInfo& table) -> Status {
    const int32_t position = DbFindIndex(table, index);
    if (position < 0) return kNoIndex;
    return DbGetByPercentageAt(TheEngine(), table, position, static_cast<uint16_t>(percentage));
  });
}

Status Database::DbFindPercentage(const char* tableName, const char* index, int32_t position,
                                  uint16_t& percentage) {
  return WithOpenTable(tableName, [&](DbTableInfo& table) -> Status {
    const int32_t key = DbFindIndex(table, index);
    const bool named = index != nullptr && *index != '\0';
    if (key < 0 && named) return kNoIndex;
    return DbFindPercentageAt(TheEngine(), table, key, position, &percentage);
  });
}

Status Database::DbUnlock(const char* tableName, int32_t unlockType) {
  return WithOpenTable(tableName, [&](DbTableInfo& table) {
    return DbUnlockRecord(TheEngine(), table, unlockType);
  });
}

Status Database::DbGetNumOfRecords(const char* tableName, int32_t& count) {
  return WithOpenTable(
      tableName, [&](DbTableInfo& table) { return DbCountRecords(TheEngine(), table, &count); });
}

Status Database::DbExAccess(const char* tableName, const ExAccess& access, const char* keyName,
                            ExAccessResult& result) {
  return WithOpenTable(tableName, [&](DbTableInfo& table) {
    return ExecuteExtendedByName(TheEngine(), table, access, keyName, result);
  });
}

NullableText Database::DbExGetFieldData(int16_t resultId, const char* fieldName, int32_t location) {
  return OrNothing(DbExReadFieldByName(TheEngine(), resultId, fieldName, location));
}

int32_t Database::DbExGetPosition(int16_t resultId, int32_t location) {
  return Dictionary ? DbExPositionOf(resultId, location) : -1;
}

Status Database::DbExSetMode(const char* mode) {
  const Status status = qrn::DbExSetMode(TheEngine(), mode);
  if (status == 0) ExModeText = mode;
  return status;
}

// By name at every field: a handler may load another dictionary.
TableFinder Database::FinderOf(const char* tableName) const {
  return [this, name = std::string(tableName)]() -> DbTableInfo* {
    DbTableInfo* table = Find(name.c_str());
    return table != nullptr && table->IsOpen != 0 ? table : nullptr;
  };
}

Status Database::Transfer(const char* tableName, int32_t (*transfer)(CQuorin&, TableFinder)) {
  return WithOpenTable(tableName, [&](DbTableInfo&) {
    return static_cast<Status>(transfer(*this, FinderOf(tableName)));
  });
}

Status Database::DbTransferToControl(const char* tableName) {
  return Transfer(tableName, TransferToControls);
}
Status Database::DbTransferFromControl(const char* tableName) {
  return Transfer(tableName, TransferFromControls);
}
Status Database::DbClearControlData(const char* tableName) {
  return Transfer(tableName, ClearControls);
}

}  // namespace qrn
