// Reading the kept replies of extended operations.
#pragma once

#include <cstdint>

#include "core/DbEngine.h"
#include "core/DbTypes.h"

namespace qrn {

// The text of a field in record `location` (from 0) of a result, code page 932, valid until the
// next call of the same function. Null, which means no text, for an id that is no result's, a
// location past the end, and a field that was not fetched.
const char* DbExReadField(DbEngine& engine, int16_t resultId, int32_t fieldPosition,
                          int32_t location) noexcept;
const char* DbExReadFieldByName(DbEngine& engine, int16_t resultId, const char* fieldName,
                                int32_t location) noexcept;

// The record's position in the file, -1 if there is none.
int32_t DbExPositionOf(int16_t resultId, int32_t location) noexcept;

// Forgets a result: 0, or -1 when there is nothing to free.
Status DbExFreeResult(int16_t resultId) noexcept;

}  // namespace qrn
