// Between the record buffer and the screen: collecting what the controls hold, showing what the
// buffer holds.
#pragma once

#include <cstdint>

#include "core/DbEngine.h"
#include "core/FieldControls.h"

namespace qrn {

// Stores the text of every field that has a control at its place in the walked record; a field
// without one keeps what the buffer has. The sum of what was walked, null-indicator bytes included.
int32_t CollectFromControls(DbEngine& engine, DbTableInfo& table, FieldControls& controls);

// Stores the text of every field that has a control at its offset: the values of a key to look for.
void CollectByOffset(DbEngine& engine, DbTableInfo& table, FieldControls& controls);

// Writes every field's text to its controls, in the dictionary's order. Ends early when a handler
// on the way makes the table go.
void ShowOnControls(DbEngine& engine, BoundCaller& caller);

}  // namespace qrn
