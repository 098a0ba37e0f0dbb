// A table's record buffer, and what may be touched in it: `BufferAllocated` is always the truth.
#pragma once

#include <cstdint>
#include <span>

#include "core/DbTypes.h"

namespace qrn {

// Bytes of the buffer of a variable-length table: the longest record read in one operation.
inline constexpr int32_t kLongRecordSize = 64512;

// Replaces the buffer by a zeroed one of at least `size` bytes. False without memory, the buffer
// and its record unchanged. `BufferSize` is the caller's to set.
[[nodiscard]] bool AllocateRecordBuffer(DbTableInfo& table, int32_t size) noexcept;

void FreeRecordBuffer(DbTableInfo& table) noexcept;

// The whole buffer; empty without one.
inline std::span<uint8_t> RecordBytes(DbTableInfo& table) noexcept {
  return {table.RecordBuffer, table.RecordBuffer != nullptr ? table.BufferAllocated : 0};
}
inline std::span<const uint8_t> RecordBytes(const DbTableInfo& table) noexcept {
  return {table.RecordBuffer, table.RecordBuffer != nullptr ? table.BufferAllocated : 0};
}

// Bytes from `offset` on; none for an offset outside them.
template <class Byte>
std::span<Byte> BytesFrom(std::span<Byte> bytes, int32_t offset) noexcept {
  if (offset < 0 || static_cast<size_t>(offset) > bytes.size()) return {};
  return bytes.subspan(static_cast<size_t>(offset));
}
inline std::span<uint8_t> RecordBytesFrom(DbTableInfo& table, int32_t offset) noexcept {
  return BytesFrom(RecordBytes(table), offset);
}
inline std::span<const uint8_t> RecordBytesFrom(const DbTableInfo& table, int32_t offset) noexcept {
  return BytesFrom(RecordBytes(table), offset);
}

// `length` as a data length for Btrieve, at most what the buffer holds.
uint32_t BoundedLength(const DbTableInfo& table, int64_t length) noexcept;

}  // namespace qrn
