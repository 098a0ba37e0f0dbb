#pragma once

namespace qrn {

// Shows VE001 with the grid's source name and the caller's line.
void ReportGridMemoryFailure(int line = __builtin_LINE()) noexcept;

}  // namespace qrn
