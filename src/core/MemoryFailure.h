#pragma once

#include <source_location>

namespace qrn {

// Shows VE001 with this folder's source name and the caller's line.
void ReportMemoryFailure(std::source_location where = std::source_location::current()) noexcept;

}  // namespace qrn
