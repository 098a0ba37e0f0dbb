#include "extended/ExMemoryFailure.h"

#include "fields/Messages.h"

namespace qrn {

void ReportExMemoryFailure(std::source_location where) noexcept {
  ShowMessage(kVE001, "qrnDbEx", static_cast<int>(where.line()));
}

}  // namespace qrn
