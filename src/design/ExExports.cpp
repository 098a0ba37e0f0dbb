// The module's functions of extended operations under their exported names; what each does stands
// in extended/qrnDbEx.h.
#include <cstdint>

#include "extended/qrnDbEx.h"

namespace flat = qrn::flat;

extern "C" {

int32_t DbExAccess(int16_t operation, int16_t tableId, const char* searchCond, const char* fields,
                   int16_t indexPosition, int16_t skipRecords, int16_t maxRecords,
                   int16_t ignoreCase, int16_t* exResultId, int16_t* numOfResults) {
  return flat::DbExAccess(operation, tableId, searchCond, fields, indexPosition, skipRecords,
                          maxRecords, ignoreCase, exResultId, numOfResults);
}

void* DbExGetFieldData(int16_t exResultId, int16_t fieldPosition, int16_t location) {
  return flat::DbExGetFieldData(exResultId, fieldPosition, location);
}

int32_t DbExGetPosition(int16_t exResultId, int16_t location) {
  return flat::DbExGetPosition(exResultId, location);
}

int32_t DbExFree(int16_t exResultId) { return flat::DbExFree(exResultId); }

int32_t DbExSetFormattedString(const char* text) { return flat::DbExSetFormattedString(text); }

}  // extern "C"
