// The module's functions on forms under their exported names; what each does stands in
// binding/registry/Attachment.h.
#include "binding/registry/Attachment.h"
#include "design/FlatExports.h"

namespace flat = qrn::flat;

extern "C" {

int32_t DbAttachControl(const char* name, const char* formName) {
  return flat::DbAttachControl(name, formName);
}

int32_t DbAttachControlByHwnd(const char* name, void* window) {
  return flat::DbAttachControlByHwnd(name, window);
}

int32_t DbTransferToControl(int16_t tableId) { return flat::DbTransferToControl(tableId); }
int32_t DbTransferFromControl(int16_t tableId) { return flat::DbTransferFromControl(tableId); }
int32_t DbClearControlData(int16_t tableId) { return flat::DbClearControlData(tableId); }

}  // extern "C"
