// Storing Blobs: the values behind the fixed part of a record, and the buffer that grows for them.
#include <algorithm>
#include <cstring>
#include <limits>

#include "fields/BlobField.h"
#include "fields/FieldCodecs.h"
#include "fields/FieldText.h"
#include "fields/LittleEndian.h"
#include "fields/Messages.h"
#include "platform/Memory.h"

namespace qrn {
namespace {

constexpr size_t kSpareByte = 1;  // reads ask for one byte more than BufferSize
constexpr size_t kMaxBuffer = std::numeric_limits<int32_t>::max() - kSpareByte;

size_t EndOf(const BlobDescriptor& value) {
  return static_cast<size_t>(value.offset) + static_cast<size_t>(value.length);
}

// Bytes from one field to the next, without a message for an unknown type.
size_t QuietStep(const DbFieldInfo& field, std::span<const uint8_t> rest) {
  const FieldCodec* codec = FindFieldCodec(field.Type);
  if (codec == nullptr || codec->walkStep == kStepUnknown) return 0;
  return static_cast<size_t>(GetFieldStoredSize({}, field, rest.data(), rest.size()));
}

// One value of a table's record, about to change its length.
class StoredBlob {
 public:
  // The value is new when its descriptor is all zeros or points outside the buffer; `newOffset` is
  // its place then.
  StoredBlob(DbTableInfo& table, size_t descriptorAt, int32_t newOffset)
      : table_(table), at_(descriptorAt), limit_(table.BufferAllocated) {
    own_ = LoadBlobDescriptor(Buffer().subspan(at_));
    isNew_ = (own_.length == 0 && own_.offset == 0) || !LiesInside(own_);
    if (isNew_) own_ = {0, std::max(newOffset, 0)};
  }

  bool IsNew() const { return isNew_; }

  // False without memory, the record unchanged then.
  bool Store(std::string_view text) {
    const auto oldLength = static_cast<size_t>(own_.length);
    if (text.size() != oldLength && !Resize(text.size())) return false;
    std::copy(text.begin(), text.end(), table_.RecordBuffer + own_.offset);
    const auto length = static_cast<int32_t>(text.size());
    const bool staysUnset = isNew_ && length == 0;
    StoreLittle(Buffer().subspan(at_), BlobDescriptor{length, staysUnset ? 0 : own_.offset});
    return true;
  }

 private:
  // The bytes that all values behind this one take together.
  struct Extent {
    size_t first = std::numeric_limits<size_t>::max();
    size_t end = 0;
  };

  std::span<uint8_t> Buffer() const { return {table_.RecordBuffer, limit_}; }

  bool LiesInside(const BlobDescriptor& value) const {
    return value.offset >= 0 && value.length >= 0 && EndOf(value) <= limit_;
  }

  // One without length at the very place stays: it would end up inside this one.
  bool LiesBehind(const BlobDescriptor& value) const {
    return static_cast<size_t>(value.offset) >= EndOf(own_) &&
           (value.offset > own_.offset || value.length > 0);
  }

  // Calls `visit` with the descriptor's bytes and the descriptor of each value behind this one.
  template <class Visit>
  void ForEachBehind(Visit visit) const {
    const auto count = static_cast<size_t>(table_.FieldCount);
    size_t at = 0;
    for (const DbFieldInfo& field : std::span(table_.Fields, count)) {
      if ((field.Flags & kFieldNullable) != 0) ++at;
      if (at >= limit_) return;
      const std::span<uint8_t> bytes = Buffer().subspan(at);
      const bool isOther = field.Type == kBlob && at != at_ && bytes.size() >= kBlobDescriptorSize;
      at += QuietStep(field, bytes);
      if (!isOther) continue;
      const BlobDescriptor value = LoadBlobDescriptor(bytes);
      if (LiesInside(value) && LiesBehind(value)) visit(bytes, value);
    }
  }

  Extent Behind() const {
    Extent extent;
    ForEachBehind([&](std::span<uint8_t>, const BlobDescriptor& value) {
      extent.first = std::min(extent.first, static_cast<size_t>(value.offset));
      extent.end = std::max(extent.end, EndOf(value));
    });
    return extent;
  }

  // Makes the record buffer at least `size` bytes, the record kept.
  bool Grow(size_t size) {
    if (size + kSpareByte <= table_.BufferAllocated) return true;
    if (size > kMaxBuffer) return false;
    auto* grown = static_cast<uint8_t*>(AllocateZeroed(size + kSpareByte));
    if (grown == nullptr) return false;
    std::copy_n(table_.RecordBuffer, table_.BufferAllocated, grown);
    FreeMemory(table_.RecordBuffer);
    table_.RecordBuffer = grown;
    table_.BufferAllocated = size + kSpareByte;
    return true;
  }

  bool Resize(size_t length) {
    const auto oldLength = static_cast<size_t>(own_.length);
    const Extent behind = Behind();
    const auto usable = static_cast<size_t>(std::max(table_.BufferSize, 0));
    const size_t used = std::max(EndOf(own_), behind.end);
    // A new value takes room that is there: record after record needs no longer buffer.
    const size_t end = isNew_ ? used : std::max(usable, used);
    if (length > oldLength && !Grow(end + (length - oldLength))) return false;
    const auto difference = static_cast<int32_t>(length) - own_.length;
    Move(behind, difference);
    const int32_t needed = isNew_ ? static_cast<int32_t>(end + length) : 0;
    const int32_t followed = isNew_ ? table_.BufferSize : table_.BufferSize + difference;
    table_.BufferSize = std::max({followed, needed, table_.RecordLength});
    return true;
  }

  // All values behind move as one block, so that none is written over before its turn.
  void Move(const Extent& behind, int32_t difference) {
    ForEachBehind([&](std::span<uint8_t> bytes, BlobDescriptor value) {
      value.offset += difference;
      StoreLittle(bytes, value);
    });
    if (behind.end <= behind.first) return;
    uint8_t* const from = table_.RecordBuffer + behind.first;
    std::memmove(from + difference, from, behind.end - behind.first);
  }

  DbTableInfo& table_;
  size_t at_;
  size_t limit_;  // of the buffer before it grew
  BlobDescriptor own_;
  bool isNew_;
};

}  // namespace

int32_t SetBlobField(const QuorinSettings&, DbTableInfo& table, const char* text,
                     const DbFieldInfo& field, int32_t fieldOffset, int32_t* endOffset) {
  if (field.Type != kBlob || table.RecordBuffer == nullptr || fieldOffset < 0) return 0;
  const auto descriptorAt = static_cast<size_t>(fieldOffset);
  if (descriptorAt + kBlobDescriptorSize > table.BufferAllocated) return 0;
  const std::string_view value = text != nullptr ? text : "";
  StoredBlob blob(table, descriptorAt, *endOffset);
  if (value.size() > kMaxBuffer || !blob.Store(value)) {
    ShowMessage(kVE001, "Qrnutil2", __LINE__);
    return -1;
  }
  if (blob.IsNew()) *endOffset += static_cast<int32_t>(value.size());
  return static_cast<int32_t>(value.size());
}

}  // namespace qrn
