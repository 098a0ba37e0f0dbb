// A whole record between a table's buffer and the controls of a form, field by field in the
// dictionary's order.
#pragma once

#include <functional>

#include "binding/CQuorin.h"
#include "core/DbTypes.h"

namespace qrn {

// Where the table is, asked before every field: what a handler did to its dictionary meanwhile
// shows there. Null ends the transfer.
using TableFinder = std::function<DbTableInfo*()>;

// All take the form of `caller`, which is asked for it once, and give 0.
// TransferFromControls leaves fields without a control as they are in the buffer.
int32_t TransferToControls(CQuorin& caller, TableFinder table);
int32_t TransferFromControls(CQuorin& caller, TableFinder table);
int32_t ClearControls(CQuorin& caller, TableFinder table);

}  // namespace qrn
