// Methods of the database control that are more than one function of the engine.
#include "binding/QRNBtr.h"
#include "binding/RecordArrays.h"
#include "core/Record.h"
#include "core/ReturnCodes.h"
#include "extended/ExResults.h"
#include "platform/SystemLibrary.h"

namespace qrn {

using com::Bstr;

namespace {

constexpr size_t kModulePathSize = 257;

}  // namespace

// There is no use count; the caller's variable stays as it is.
HRESULT CQRNBtr::GetUseCount(int16_t&) { return S_FALSE; }

void CQRNBtr::DbExFree(int16_t resultId) { DbExFreeResult(resultId); }

void CQRNBtr::DbExAccess(int16_t operation, const Bstr& tableName, const Bstr& searchCond,
                         const Bstr& fields, const Bstr& keyName, int16_t skipRecords,
                         int16_t maxRecords, int16_t ignoreCase, int16_t& resultId,
                         int16_t& numOfResults, int16_t& rc) {
  const std::string condition = NarrowText(searchCond);
  const std::string list = NarrowText(fields);
  const ExAccess access{.Operation = operation,
                        .SearchCond = condition.c_str(),
                        .Fields = list.c_str(),
                        .SkipRecords = static_cast<uint16_t>(skipRecords),
                        .MaxRecords = static_cast<uint16_t>(maxRecords),
                        .IgnoreCase = ignoreCase != 0};
  ExAccessResult result{resultId, static_cast<uint16_t>(numOfResults)};
  rc = Database::DbExAccess(NarrowText(tableName).c_str(), access, NarrowText(keyName).c_str(),
                            result);
  resultId = result.ResultId;
  numOfResults = static_cast<int16_t>(result.NumOfResults);
}

// Two characters, whatever bytes they take; only bytes can be a signature.
void CQRNBtr::DbExSetMode(const Bstr& mode, int16_t& rc) {
  rc = mode.view().size() == 2 ? Database::DbExSetMode(NarrowText(mode).c_str()) : Status{kFailure};
}

// The name is looked for whatever the client library is called.
void CQRNBtr::DbGetModulePath(Bstr& path, int16_t& rc) {
  char found[kModulePathSize];
  rc = kFailure;
  if (!LoadedModulePath("WBTRV32.DLL", found)) return;
  path = WidenToBstr(found);
  rc = kSuccess;
}

void CQRNBtr::DbGetRecord(const Bstr& tableName, VARIANT& array, int16_t& rc) {
  const Status status = WithOpenTable(NarrowText(tableName).c_str(), [&](DbTableInfo& table) {
    return FieldsToArray(TheEngine(), table, array);
  });
  if (status != 0) rc = status;
}

void CQRNBtr::DbSetRecord(const Bstr& tableName, VARIANT& array, int16_t& rc) {
  const Status status = WithOpenTable(NarrowText(tableName).c_str(), [&](DbTableInfo& table) {
    return FieldsFromArray(TheEngine(), table, array);
  });
  if (status != 0) rc = status;
}

// The array is looked at before the table.
template <class Body>
Status CQRNBtr::WithBytes(const Bstr& tableName, VARIANT& array, Body body) {
  if (GetDictionary() == nullptr) return kControlHasNoDictionary;
  const ByteArray opened(array);
  if (opened.failure() != 0) return opened.failure();
  return WithTable(NarrowText(tableName).c_str(), [&](DbTableInfo& table) -> Status {
    body(table, opened.bytes());
    return kSuccess;
  });
}

void CQRNBtr::DbGetRecordImage(const Bstr& tableName, VARIANT& array, int16_t& rc) {
  rc = WithBytes(tableName, array, DbReadRecordImage);
}

void CQRNBtr::DbSetRecordImage(const Bstr& tableName, VARIANT& array, int16_t& rc) {
  rc = WithBytes(tableName, array, DbWriteRecordImage);
}

void CQRNBtr::DbGetPosBlock(const Bstr& tableName, VARIANT& array, int16_t& rc) {
  rc = WithBytes(tableName, array, [](const DbTableInfo& table, std::span<uint8_t> bytes) {
    const size_t count = std::min(bytes.size(), sizeof table.PosBlock);
    std::copy_n(table.PosBlock, count, bytes.begin());
  });
}

}  // namespace qrn
