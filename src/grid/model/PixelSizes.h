// Widths of columns or heights of rows, in pixels. All begin at one size, which is also that of an
// index beyond them and of every one where there was no memory: a caller always finds a size.
#pragma once

#include <cstdint>
#include <memory>

#include "platform/Memory.h"

namespace qrn {

class PixelSizes {
 public:
  explicit PixelSizes(int32_t startPx) noexcept : startPx_(startPx) {}

  // Makes room for `count` sizes of their own. False without memory.
  [[nodiscard]] bool Make(int32_t count) noexcept {
    const size_t entries = count > 0 ? static_cast<size_t>(count) : 0;
    sizes_.reset(static_cast<int32_t*>(AllocateZeroed(entries * sizeof(int32_t))));
    count_ = sizes_ ? static_cast<int32_t>(entries) : 0;
    return sizes_ != nullptr;
  }

  int32_t Get(int32_t index) const noexcept {
    return Has(index) ? sizes_.get()[index] ^ startPx_ : startPx_;
  }
  // Does nothing for an index that has no size of its own.
  void Set(int32_t index, int32_t px) noexcept {
    if (Has(index)) sizes_.get()[index] = px ^ startPx_;
  }

  // The sizes from `first` up to `end`, which is not one of them. 64 bits: sizes are not checked.
  int64_t Sum(int32_t first, int32_t end) const noexcept {
    int64_t sum = 0;
    for (int32_t index = first; index < end; ++index) sum += Get(index);
    return sum;
  }

 private:
  bool Has(int32_t index) const noexcept { return index >= 0 && index < count_; }

  // Each differs from the start by these bits, so that zeroed memory, never touched, is the start.
  std::unique_ptr<int32_t, MemoryDeleter> sizes_;
  int32_t startPx_;
  int32_t count_ = 0;
};

}  // namespace qrn
