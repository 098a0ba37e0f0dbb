// The flat functions by way of which the tests call them: linked in, or found in the built module.
#pragma once

#include <string>

#include "design/FlatExports.h"

namespace qrn::test {

// How texts leave the module.
struct TextSettings {
  int fixedArea = 0;  // fix_str_addr
  int unicode = 1;    // v1fx_unicode
};

struct FlatApi {
  decltype(&::DbInitialize) Initialize;
  decltype(&::DbTerminate) Terminate;
  decltype(&::DbSetOpenMode) SetOpenMode;
  decltype(&::DbSetOwnerName) SetOwnerName;
  decltype(&::DbGetNumOfTable) GetNumOfTable;
  decltype(&::DbGetNumOfField) GetNumOfField;
  decltype(&::DbGetDataSize) GetDataSize;
  decltype(&::DbGetDataType) GetDataType;
  decltype(&::DbGetVersion) GetVersion;
  decltype(&::DbOpen) Open;
  decltype(&::DbClose) Close;
  decltype(&::DbCreate) Create;
  decltype(&::DbGetNumOfRecords) GetNumOfRecords;
  decltype(&::DbAccess) Access;
  decltype(&::DbGetPosition) GetPosition;
  decltype(&::DbGetDirect) GetDirect;
  decltype(&::DbGetByPercentage) GetByPercentage;
  decltype(&::DbFindPercentage) FindPercentage;
  decltype(&::DbUnlock) Unlock;
  decltype(&::DbClearFieldBuffer) ClearFieldBuffer;
  decltype(&::DbSetFieldData) SetFieldData;
  decltype(&::DbBeginTransaction) BeginTransaction;
  decltype(&::DbBeginConCurTransaction) BeginConCurTransaction;
  decltype(&::DbEndTransaction) EndTransaction;
  decltype(&::DbAbortTransaction) AbortTransaction;
  decltype(&::DbGetFieldData) GetFieldData;
  decltype(&::DbGetFieldName) GetFieldName;
  decltype(&::DbGetTableName) GetTableName;
  decltype(&::DbSetFormattedString) SetFormattedString;
};

// The interface as a new process finds it, under those settings. What the former call gave is
// closed.
const FlatApi& FreshFlatApi(const TextSettings& settings);

// A string of automation, its length prefix believed: `units` as UTF-16 turned into UTF-8,
// `bytes` as they stand. Both free it.
std::string TakeUnits(void* text);
std::string TakeBytes(void* text);

}  // namespace qrn::test
