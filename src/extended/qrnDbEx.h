// The flat interface's part in extended operations. The module exports these functions under their
// own names; ids, results and texts as in core/FlatInterface.h.
#pragma once

#include <cstdint>

#include "extended/ExRowText.h"

namespace qrn::flat {

// One extended operation on a table (extended/ExecuteExtended.h), after the checks of -12, -15 and
// -3. `indexPosition` is the key's, -1 for none. Both out values are stored when a result is kept,
// and only then.
int32_t DbExAccess(int16_t operation, int16_t tableId, const char* searchCond, const char* fields,
                   int16_t indexPosition, int16_t skipRecords, int16_t maxRecords,
                   int16_t ignoreCase, int16_t* exResultId, int16_t* numOfResults) noexcept;

// The text of a field, by its position in the table, in a record of a result (from 0). Bytes, also
// where DbGetFieldData gives UTF-16. Null for an id that is no result's; an empty text where the
// result has no such record or did not fetch the field.
void* DbExGetFieldData(int16_t exResultId, int16_t fieldPosition, int16_t location) noexcept;

// The record's position in the file; -1 if there is none.
int32_t DbExGetPosition(int16_t exResultId, int16_t location) noexcept;

// 0, or -1 when there is nothing to free.
int32_t DbExFree(int16_t exResultId) noexcept;

}  // namespace qrn::flat
