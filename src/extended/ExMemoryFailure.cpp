#include "extended/ExMemoryFailure.h"

#include "fields/Messages.h"

namespace qrn {

void ReportExMemoryFailure(int line) noexcept { ShowMessage(kVE001, "qrnDbEx", line); }

}  // namespace qrn
