#pragma once

namespace qrn {

// Shows VE001 with this folder's source name and the caller's line.
void ReportExMemoryFailure(int line = __builtin_LINE()) noexcept;

}  // namespace qrn
