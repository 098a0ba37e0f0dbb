// The plain fill of a list or combo box: one field of all records in key order, one call of the
// record manager a record. extended/FillFromExtended.h is the batched way.
#pragma once

#include <cstdint>

#include "core/DbEngine.h"
#include "core/RowSink.h"

namespace qrn {

// Fills the sink with the field of that exact name along the key at an index position, without
// locks, and goes back to the record that was current. A row passes through the sink's `Format`
// event; an empty row is not added. The sink is emptied when the first record has been read, so a
// table without records leaves it as it was, and so does a field that the table does not have.
//
// Every status is swallowed: 0, or -1 for a key that is none (VE804) and without memory.
Status DbFillList(DbEngine& engine, RowSink& sink, const char* fieldName, int32_t indexPosition);

}  // namespace qrn
