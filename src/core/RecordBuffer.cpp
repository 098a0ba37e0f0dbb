#include "core/RecordBuffer.h"

#include <algorithm>
#include <utility>

#include "platform/Memory.h"

namespace qrn {
namespace {

// A position or a percentage is handed over in the buffer's first bytes, however short the record.
constexpr int32_t kSmallestBuffer = 8;

template <class Byte>
std::span<Byte> From(std::span<Byte> bytes, int32_t offset) {
  if (offset < 0 || static_cast<size_t>(offset) > bytes.size()) return {};
  return bytes.subspan(static_cast<size_t>(offset));
}

}  // namespace

bool AllocateRecordBuffer(DbTableInfo& table, int32_t size) noexcept {
  FreeRecordBuffer(table);
  const auto bytes = static_cast<size_t>(std::max(size, kSmallestBuffer));
  table.RecordBuffer = static_cast<uint8_t*>(AllocateZeroed(bytes));
  if (table.RecordBuffer == nullptr) return false;
  table.BufferAllocated = bytes;
  return true;
}

void FreeRecordBuffer(DbTableInfo& table) noexcept {
  FreeMemory(std::exchange(table.RecordBuffer, nullptr));
  table.BufferAllocated = 0;
}

std::span<uint8_t> RecordBytes(DbTableInfo& table) noexcept {
  return {table.RecordBuffer, table.RecordBuffer != nullptr ? table.BufferAllocated : 0};
}

std::span<const uint8_t> RecordBytes(const DbTableInfo& table) noexcept {
  return {table.RecordBuffer, table.RecordBuffer != nullptr ? table.BufferAllocated : 0};
}

std::span<uint8_t> RecordBytesFrom(DbTableInfo& table, int32_t offset) noexcept {
  return From(RecordBytes(table), offset);
}

std::span<const uint8_t> RecordBytesFrom(const DbTableInfo& table, int32_t offset) noexcept {
  return From(RecordBytes(table), offset);
}

uint32_t BoundedLength(const DbTableInfo& table, int64_t length) noexcept {
  const auto room = static_cast<int64_t>(RecordBytes(table).size());
  return static_cast<uint32_t>(std::clamp(length, int64_t{0}, room));
}

}  // namespace qrn
