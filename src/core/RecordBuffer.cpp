#include "core/RecordBuffer.h"

#include <algorithm>
#include <utility>

#include "platform/Memory.h"

namespace qrn {
namespace {

// A position or a percentage is handed over in the buffer's first bytes, however short the record.
constexpr int32_t kSmallestBuffer = 8;

}  // namespace

bool AllocateRecordBuffer(DbTableInfo& table, int32_t size) noexcept {
  const auto bytes = static_cast<size_t>(std::max(size, kSmallestBuffer));
  auto* buffer = static_cast<uint8_t*>(AllocateZeroed(bytes));
  if (buffer == nullptr) return false;
  FreeMemory(std::exchange(table.RecordBuffer, buffer));
  table.BufferAllocated = bytes;
  return true;
}

void FreeRecordBuffer(DbTableInfo& table) noexcept {
  FreeMemory(std::exchange(table.RecordBuffer, nullptr));
  table.BufferAllocated = 0;
}

uint32_t BoundedLength(const DbTableInfo& table, int64_t length) noexcept {
  const auto room = static_cast<int64_t>(RecordBytes(table).size());
  return static_cast<uint32_t>(std::clamp(length, int64_t{0}, room));
}

}  // namespace qrn
