// Records longer than the buffer, on tables of variable-length records.
#pragma once

#include <cstdint>

#include "core/DbEngine.h"
#include "core/KeyBuffer.h"

namespace qrn {

// Makes the buffer hold at least `size` bytes, zeroed anew when it grows, and records the new
// `BufferSize`. False without memory, after VE001, the buffer unchanged.
[[nodiscard]] bool GrowRecordBuffer(DbTableInfo& table, int32_t size) noexcept;

// Gives the record that a read has just found too long for the buffer: grows the buffer to the
// fixed part and 64,512 bytes more, asks for the position and reads by it, both without a lock.
// `dataLength` is the length returned. -1 without memory.
[[nodiscard]] Status DbReadLongRecord(DbEngine& engine, DbTableInfo& table, uint32_t& dataLength,
                                      KeyBuffer& key, int32_t indexPosition) noexcept;

}  // namespace qrn
