#include "core/KeyBuffer.h"

#include <algorithm>
#include <cstring>
#include <span>

#include "core/RecordBuffer.h"
#include "fields/Messages.h"

namespace qrn {
namespace {

size_t SizeOf(const DbSegmentInfo& segment) {
  return static_cast<size_t>(std::max(segment.Size, 0));
}

// The segments from a position to the end of its key.
std::span<const DbSegmentInfo> KeyFrom(const DbTableInfo& table, int32_t position) {
  int32_t end = position + 1;
  while (end < table.SegmentCount && (table.Segments[end - 1].Flags & kSegmentContinues) != 0) {
    ++end;
  }
  return {table.Segments + position, static_cast<size_t>(end - position)};
}

size_t LengthOf(std::span<const DbSegmentInfo> segments) {
  size_t length = 0;
  for (const DbSegmentInfo& segment : segments) {
    length += SizeOf(segment) + ((segment.Flags & kSegmentLeavesNullOut) == 0 ? 1 : 0);
  }
  return length;
}

// Bytes outside the record buffer count as zero.
void CopySegments(const DbTableInfo& table, std::span<const DbSegmentInfo> segments, uint8_t* out) {
  for (const DbSegmentInfo& segment : segments) {
    const auto bytes = RecordBytesFrom(table, segment.Offset);
    const size_t copied = std::min(SizeOf(segment), bytes.size());
    if (copied != 0) std::memcpy(out, bytes.data(), copied);
    out += SizeOf(segment);
  }
}

}  // namespace

bool KeyBuffer::Reserve(size_t length) noexcept {
  length_ = length;
  if (length < kInlineSize) {
    heap_.reset();
    std::memset(inline_, 0, length + 1);
    return true;
  }
  heap_.reset(static_cast<uint8_t*>(AllocateZeroed(length + 1)));
  return heap_ != nullptr;
}

bool DbBuildKey(const DbTableInfo& table, int32_t indexPosition, KeyBuffer& key) noexcept {
  if (indexPosition == -1) return key.Reserve(0);
  if (indexPosition < 0 || indexPosition >= table.SegmentCount) {
    ShowMessage(kVE804);
    return false;
  }
  const auto segments = KeyFrom(table, indexPosition);
  if (!key.Reserve(LengthOf(segments))) return false;
  CopySegments(table, segments, key.Bytes());
  return true;
}

}  // namespace qrn
