#include "core/MemoryFailure.h"

#include "fields/Messages.h"

namespace qrn {

void ReportMemoryFailure(std::source_location where) noexcept {
  ShowMessage(kVE001, "Qrndb", static_cast<int>(where.line()));
}

}  // namespace qrn
