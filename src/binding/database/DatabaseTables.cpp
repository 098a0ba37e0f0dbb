// A database control's tables: opening and closing, and what the dictionary knows of them.
#include "binding/database/Database.h"
#include "core/DictionaryLookup.h"
#include "core/ReturnCodes.h"
#include "fields/Messages.h"

namespace qrn {

DbTableInfo* Database::Find(const char* tableName) const noexcept {
  return Dictionary ? DbFindTable(*Dictionary, tableName) : nullptr;
}

Status Database::WithTable(const char* tableName, const std::function<Status(DbTableInfo&)>& body) {
  if (!Dictionary) return kControlHasNoDictionary;
  DbTableInfo* table = Find(tableName);
  return table != nullptr ? body(*table) : Status{kNoTable};
}

Status Database::WithOpenTable(const char* tableName,
                               const std::function<Status(DbTableInfo&)>& body) {
  return WithTable(tableName, [&](DbTableInfo& table) -> Status {
    return table.IsOpen != 0 ? body(table) : Status{kNotOpen};
  });
}

bool Database::ErrorStands(const std::string& tableName, Status status) {
  FireBtrieveError(tableName.c_str(), status);
  return status != 0;
}

// The table may be gone when the handler is done.
Status Database::OpenTable(DbTableInfo& table) {
  const std::string name = table.Name;
  const Status status =
      DbTableOpen(TheEngine(), table, DDFDir.c_str(), OwnerName.c_str(), DbMapOpenMode(OpenMode));
  if (status != 0 && ErrorStands(name, status)) {
    ShowMessage(kVE803, name.c_str(), static_cast<int>(status));
  }
  return status;
}

// Kept so: a failed close is told with the text of a failed open.
Status Database::CloseTable(DbTableInfo& table) {
  const std::string name = table.Name;
  const Status status = DbTableClose(TheEngine(), table);
  if (status != 0 && ErrorStands(name, status)) {
    ShowMessage(kVE803, name.c_str(), static_cast<int>(status));
  }
  return status;
}

Status Database::DbOpen(const char* tableName) {
  return WithTable(tableName, [&](DbTableInfo& table) -> Status {
    return table.IsOpen != 0 ? Status{kAlreadyOpen} : OpenTable(table);
  });
}

Status Database::DbClose(const char* tableName) {
  return WithOpenTable(tableName,
                       [](DbTableInfo& table) { return DbTableClose(TheEngine(), table); });
}

Status Database::DbOpenAll() {
  if (!Dictionary) return kControlHasNoDictionary;
  Status status = 0;
  for (int32_t i = 0; status == 0 && Dictionary && i < Dictionary->TableCount; ++i) {
    if (Dictionary->Tables[i].IsOpen == 0) status = OpenTable(Dictionary->Tables[i]);
  }
  return status;
}

Status Database::DbCloseAll() {
  if (!Dictionary) return kControlHasNoDictionary;
  Status status = 0;
  for (int32_t i = 0; status == 0 && Dictionary && i < Dictionary->TableCount; ++i) {
    if (Dictionary->Tables[i].IsOpen != 0) status = CloseTable(Dictionary->Tables[i]);
  }
  return status;
}

Status Database::DbCreate(const char* tableName) {
  return WithTable(tableName, [&](DbTableInfo& table) -> Status {
    if (table.IsOpen != 0) return kAlreadyOpen;
    const std::string name = table.Name;
    const Status status = DbTableCreateIn(TheEngine(), table, DDFDir.c_str());
    if (status != 0) ErrorStands(name, status);
    return status;
  });
}

Status Database::DbSetFileName(const char* tableName, const char* fileName) {
  return WithTable(tableName,
                   [&](DbTableInfo& table) { return qrn::DbSetFileName(table, fileName); });
}

Status Database::DbIsOpen(const char* tableName) {
  if (!Dictionary) return 0;
  const DbTableInfo* table = Find(tableName);
  return table != nullptr ? static_cast<Status>(table->IsOpen) : Status{kNoTable};
}

Status Database::DbGetNumOfTable(int32_t& count) {
  if (!Dictionary) return kControlHasNoDictionary;
  count = Dictionary->TableCount;
  return kSuccess;
}

Status Database::DbGetNumOfField(const char* tableName, int32_t& count) {
  return WithTable(tableName, [&](DbTableInfo& table) -> Status {
    count = table.FieldCount;
    return kSuccess;
  });
}

Status Database::DbGetNumOfIndex(const char* tableName, int32_t& count) {
  return WithTable(tableName, [&](DbTableInfo& table) -> Status {
    count = table.SegmentCount;
    return kSuccess;
  });
}

Status Database::DbGetTableName(int32_t id, std::string& name) {
  if (!Dictionary) return kControlHasNoDictionary;
  if (id < 0 || id > Dictionary->TableCount) return kNoTable;
  name = Dictionary->Tables[id].Name;
  return kSuccess;
}

Status Database::DbGetFieldName(const char* tableName, int32_t fieldId, std::string& name) {
  return WithTable(tableName, [&](DbTableInfo& table) -> Status {
    if (fieldId < 0 || fieldId > table.FieldCount) return kBadFieldId;
    const DbFieldInfo* field = DbFieldAt(table, fieldId);
    name = field != nullptr ? field->Name : "";
    return kSuccess;
  });
}

Status Database::DbGetIndexName(const char* tableName, int32_t id, std::string& name) {
  return WithTable(tableName, [&](DbTableInfo& table) -> Status {
    if (id < 0 || id > table.SegmentCount) return kBadIndexId;
    if (id == table.SegmentCount) return kNoTable;
    const DbFieldInfo* field = DbFindFieldById(table, table.Segments[id].FieldId);
    if (field == nullptr) return kNoTable;
    name = field->Name;
    return kSuccess;
  });
}

Status Database::DbGetRecordLength(const char* tableName, int32_t& length) {
  return WithTable(tableName, [&](DbTableInfo& table) -> Status {
    length = table.RecordLength;
    return kSuccess;
  });
}

namespace {

Status OfField(const DbTableInfo& table, const char* fieldName, int32_t DbFieldInfo::*member) {
  const DbFieldInfo* field = DbFieldAt(table, DbFindField(table, fieldName));
  return field != nullptr ? static_cast<Status>(field->*member) : Status{kNoField};
}

}  // namespace

Status Database::DbGetDataSize(const char* tableName, const char* fieldName) {
  return WithOpenTable(
      tableName, [&](DbTableInfo& table) { return OfField(table, fieldName, &DbFieldInfo::Size); });
}

Status Database::DbGetDataType(const char* tableName, const char* fieldName) {
  return WithOpenTable(
      tableName, [&](DbTableInfo& table) { return OfField(table, fieldName, &DbFieldInfo::Type); });
}

}  // namespace qrn
