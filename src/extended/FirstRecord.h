// Going to the record that a fill begins with.
#pragma once

#include "core/DbTypes.h"
#include "extended/ExExchange.h"
#include "extended/ExOperation.h"

namespace qrn {

// Reads the first or last record into the table's buffer, without a lock. On a table of
// variable-length records the buffer grows where the record needs it. The record manager's status,
// or -1 (after VE001) without memory for a longer buffer.
[[nodiscard]] Status GoToFirstRecord(const ExOperation& operation, DbTableInfo& table,
                                     const ExKey& key);

}  // namespace qrn
