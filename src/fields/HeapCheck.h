// A diagnostic aid that no ordinary path calls.
#pragma once

#include "fields/QuorinSettings.h"

namespace qrn {

// -2 when the process heap is whole. Otherwise shows a system modal box that names `file` and
// `line` and returns its answer.
int CheckHeap(const QuorinSettings& settings, const char* file, int line) noexcept;

}  // namespace qrn
