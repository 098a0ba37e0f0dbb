#include "core/DbEngine.h"
#include "core/FlatGuard.h"
#include "core/FlatText.h"
#include "extended/ExResultStore.h"
#include "extended/ExResults.h"
#include "extended/ExecuteExtended.h"
#include "qrnbt350.h"

namespace qrn::flat {

extern "C" {

int32_t DbExAccess(int16_t operation, int16_t tableId, const char* searchCond, const char* fields,
                   int16_t indexPosition, int16_t skipRecords, int16_t maxRecords,
                   int16_t ignoreCase, int16_t* exResultId, int16_t* numOfResults) noexcept {
  const ExAccess access{operation,
                        searchCond,
                        fields,
                        indexPosition,
                        static_cast<uint16_t>(skipRecords),
                        static_cast<uint16_t>(maxRecords),
                        ignoreCase != 0};
  return OnOpenTable(tableId, [&](DbTableInfo& table) -> int32_t {
    ExAccessResult result{kNoResult, 0};
    const Status status = ExecuteExtended(TheEngine(), table, access, result);
    if (result.ResultId == kNoResult) return status;
    if (exResultId != nullptr) *exResultId = result.ResultId;
    if (numOfResults != nullptr) *numOfResults = static_cast<int16_t>(result.NumOfResults);
    return status;
  });
}

void* DbExGetFieldData(int16_t exResultId, int16_t fieldPosition, int16_t location) noexcept {
  if (TheExResults().Find(exResultId) == nullptr) return nullptr;
  const char* text = DbExReadField(TheEngine(), exResultId, fieldPosition, location);
  return ReturnBytes(text != nullptr ? text : "");
}

int32_t DbExGetPosition(int16_t exResultId, int16_t location) noexcept {
  return DbExPositionOf(exResultId, location);
}

int32_t DbExFree(int16_t exResultId) noexcept { return DbExFreeResult(exResultId); }

}  // extern "C"

}  // namespace qrn::flat
