// The key handed to Btrieve with one call, put together from the record buffer.
#pragma once

#include <cstdint>
#include <memory>

#include "core/DbTypes.h"
#include "platform/Memory.h"

namespace qrn {

// Lives for one call. Keys of ordinary length need no allocation.
class KeyBuffer {
 public:
  KeyBuffer() = default;
  KeyBuffer(const KeyBuffer&) = delete;
  KeyBuffer& operator=(const KeyBuffer&) = delete;

  uint8_t* Bytes() noexcept { return heap_ != nullptr ? heap_.get() : inline_; }

  // The length for Btrieve. It may exceed what was copied, and a length beyond 255 wraps.
  uint8_t Length() const noexcept { return static_cast<uint8_t>(length_); }
  size_t FullLength() const noexcept { return length_; }

  // Sets the length and zeroes the buffer and one byte more. False without memory.
  [[nodiscard]] bool Reserve(size_t length) noexcept;

 private:
  // Never less than the longest key there can be, so that a key read back always fits.
  static constexpr size_t kInlineSize = 264;

  size_t length_ = 0;
  std::unique_ptr<uint8_t, MemoryDeleter> heap_;
  uint8_t inline_[kInlineSize];
};

// Builds the key at an index position from the values in the record buffer: each segment's bytes,
// one after another without a gap. Its length counts one byte more for each segment that does not
// leave nulls out; those stay zero at the end, and Btrieve is told the longer length.
//
// Position -1 gives an empty key. False without memory, and, after VE804, for a position that is no
// segment.
[[nodiscard]] bool DbBuildKey(const DbTableInfo& table, int32_t indexPosition,
                              KeyBuffer& key) noexcept;

}  // namespace qrn
