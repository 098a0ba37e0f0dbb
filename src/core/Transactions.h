// Transactions of the client: over every file, and past the life of any table.
#pragma once

#include <cstdint>

#include "core/DbEngine.h"
#include "core/DbTypes.h"

namespace qrn {

// Lock bias 0, 100, 200, 300 or 400, the concurrent form 500 too; -10 for another. Otherwise
// Btrieve's status.
[[nodiscard]] Status DbBeginTransaction(int32_t lockBias) noexcept;
[[nodiscard]] Status DbBeginConCurTransaction(int32_t lockBias) noexcept;
[[nodiscard]] Status DbEndTransaction() noexcept;
[[nodiscard]] Status DbAbortTransaction() noexcept;

// Sets the bias that plain record calls carry from now on, for every control and caller. -10, and
// the old one kept, for anything but 0, 100, 200, 300 and 400.
[[nodiscard]] Status DbSetLockBias(DbEngine& engine, int32_t lockBias) noexcept;

}  // namespace qrn
