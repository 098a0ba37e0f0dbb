#include "design/FlatExports.h"

#include <cstdarg>

#include "core/FlatInterface.h"
#include "fields/Messages.h"

namespace flat = qrn::flat;

extern "C" {

int32_t DbInitialize(const char* directory) {
  return static_cast<uint16_t>(flat::DbInitialize(directory));
}

int32_t DbTerminate() { return flat::DbTerminate(); }

int32_t DbSetOpenMode(int16_t, int16_t mode) { return flat::DbSetOpenMode(mode); }
int32_t DbSetOwnerName(int16_t, const char* ownerName, int16_t mode) {
  return flat::DbSetOwnerName(ownerName, mode);
}

int32_t DbGetNumOfTable() { return flat::DbGetNumOfTable(); }
int32_t DbGetNumOfField(int16_t tableId) { return flat::DbGetNumOfField(tableId); }
int32_t DbGetDataSize(int16_t tableId, int16_t fieldPosition) {
  return flat::DbGetDataSize(tableId, fieldPosition);
}
int32_t DbGetDataType(int16_t tableId, int16_t fieldPosition) {
  return flat::DbGetDataType(tableId, fieldPosition);
}
int32_t DbGetVersion(void* version) { return flat::DbGetVersion(version); }

int32_t DbOpen(int16_t tableId) { return flat::DbOpen(tableId); }
int32_t DbClose(int16_t tableId) { return flat::DbClose(tableId); }
int32_t DbCreate(int16_t tableId) { return flat::DbCreate(tableId); }
int32_t DbGetNumOfRecords(int16_t tableId, int32_t* count) {
  return flat::DbGetNumOfRecords(tableId, count);
}

int32_t DbAccess(int16_t operation, int16_t tableId, int16_t indexPosition) {
  return flat::DbAccess(operation, tableId, indexPosition);
}
int32_t DbGetPosition(int16_t tableId) { return flat::DbGetPosition(tableId); }
int32_t DbGetDirect(int16_t tableId, int32_t position, int16_t indexPosition) {
  return flat::DbGetDirect(tableId, position, indexPosition);
}
int32_t DbGetByPercentage(int16_t tableId, int16_t indexPosition, int16_t percentage) {
  return flat::DbGetByPercentage(tableId, indexPosition, percentage);
}
int32_t DbFindPercentage(int16_t tableId, int16_t indexPosition, int32_t position,
                         uint16_t* percentage) {
  return flat::DbFindPercentage(tableId, indexPosition, position, percentage);
}
int32_t DbUnlock(int16_t tableId, int16_t unlockType) {
  return flat::DbUnlock(tableId, unlockType);
}
int32_t DbClearFieldBuffer(int16_t tableId) { return flat::DbClearFieldBuffer(tableId); }
int32_t DbSetFieldData(int16_t tableId, int16_t fieldPosition, const char* text) {
  return flat::DbSetFieldData(tableId, fieldPosition, text);
}

int32_t DbBeginTransaction(int16_t lockBias) { return flat::DbBeginTransaction(lockBias); }
int32_t DbBeginConCurTransaction(int16_t lockBias) {
  return flat::DbBeginConCurTransaction(lockBias);
}
int32_t DbEndTransaction() { return flat::DbEndTransaction(); }
int32_t DbAbortTransaction() { return flat::DbAbortTransaction(); }

void* DbGetFieldData(int16_t tableId, int16_t fieldPosition) {
  return flat::DbGetFieldData(tableId, fieldPosition);
}
void* DbGetFieldName(int16_t tableId, int16_t fieldPosition) {
  return flat::DbGetFieldName(tableId, fieldPosition);
}
void* DbGetTableName(int16_t tableId) { return flat::DbGetTableName(tableId); }

int32_t DbSetFormattedString(const char* text) { return flat::DbSetFormattedString(text); }

void QuorinFatalAppExit(int id, ...) {
  va_list arguments;
  va_start(arguments, id);
  qrn::ExitWithMessage(id, arguments);
  va_end(arguments);
}

}  // extern "C"
