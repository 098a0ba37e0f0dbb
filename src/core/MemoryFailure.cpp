#include "core/MemoryFailure.h"

#include "fields/Messages.h"

namespace qrn {

void ReportMemoryFailure(int line) noexcept { ShowMessage(kVE001, "Qrndb", line); }

}  // namespace qrn
