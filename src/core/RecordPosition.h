// Records by their physical position and by their place in percent, and unlocking. Positions are
// Btrieve's 4-byte addresses, percentages hundredths of a percent, neither checked here.
#pragma once

#include <cstdint>

#include "core/DbEngine.h"
#include "core/DbTypes.h"

namespace qrn {

// The position of the current record; -1 for any failure.
int32_t DbGetPositionOf(DbEngine& engine, DbTableInfo& table) noexcept;

// Reads the record at a position and goes on along the key at an index position: with the lock bias
// of the engine, or, for -1, with neither key nor bias. The key is built from the buffer as it then
// stands, zero but for the position. -6 without a key buffer.
[[nodiscard]] Status DbGetDirectAt(DbEngine& engine, DbTableInfo& table, int32_t position,
                                   int32_t indexPosition) noexcept;

// The same by the key's name; -6 for a null, empty or unknown one.
[[nodiscard]] Status DbGetDirectByName(DbEngine& engine, DbTableInfo& table, int32_t position,
                                       const char* indexName) noexcept;

// Reads the record that lies at that percentage of a key, or of the file for index position -1. -1
// without a key buffer.
[[nodiscard]] Status DbGetByPercentageAt(DbEngine& engine, DbTableInfo& table,
                                         int32_t indexPosition, uint16_t percentage) noexcept;

// The percentage of the key's value in the buffer, or, for index position -1, of the position.
// Stored on 0 only. -1 without a key buffer.
[[nodiscard]] Status DbFindPercentageAt(DbEngine& engine, DbTableInfo& table, int32_t indexPosition,
                                        int32_t position, uint16_t* percentage) noexcept;

// Unlock type -1 releases the lock on the current record, 0 the single lock, -2 all of the table's.
[[nodiscard]] Status DbUnlockRecord(DbEngine& engine, DbTableInfo& table,
                                    int32_t unlockType) noexcept;

}  // namespace qrn
