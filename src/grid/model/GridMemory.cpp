#include "grid/model/GridMemory.h"

#include "fields/Messages.h"

namespace qrn {

void ReportGridMemoryFailure(int line) noexcept { ShowMessage(kVE001, "QRNGridUtil", line); }

}  // namespace qrn
