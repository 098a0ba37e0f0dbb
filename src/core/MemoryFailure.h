#pragma once

namespace qrn {

// Shows VE001 with this folder's source name and the caller's line.
void ReportMemoryFailure(int line = __builtin_LINE()) noexcept;

}  // namespace qrn
