// Arrays of small numbers that grow where they are written: per-column settings, record positions.
// An element never set reads 0, so that a caller need not know how far the array reaches. Nothing
// throws: a set that finds no memory says so and leaves the array as it was.
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

namespace qrn {

template <class Value>
class GrowingArray {
 public:
  // Capacity grows by at least `growStep` elements at a time, so that many small sets stay cheap.
  explicit GrowingArray(size_t growStep = 16) : growStep_(growStep) {}

  // Elements from 0 to the last one set; `Data` is valid until the next set or clear.
  size_t Size() const noexcept { return values_.size(); }
  const Value* Data() const noexcept { return values_.data(); }

  // The element; 0 for one that was never set.
  Value Get(size_t index) const noexcept { return index < values_.size() ? values_[index] : 0; }

  // A set past the end grows the array to the index plus one, new elements zero. False, and nothing
  // changed, when there is no memory for it.
  [[nodiscard]] bool Set(size_t index, Value value) noexcept {
    if (index >= values_.size() && !GrowTo(index + 1)) return false;
    values_[index] = value;
    return true;
  }

  // Takes an element out; those behind it move down. An index past the end does nothing.
  void Remove(size_t index) noexcept {
    if (index < values_.size()) values_.erase(values_.begin() + static_cast<ptrdiff_t>(index));
  }

  // Keeps the memory.
  void Clear() noexcept { values_.clear(); }

 private:
  bool GrowTo(size_t size) noexcept {
    try {
      if (size > values_.capacity()) values_.reserve(Roomy(size));
      values_.resize(size);
      return true;
    } catch (const std::exception&) {  // no memory, or more elements than there can be
      return false;
    }
  }

  size_t Roomy(size_t size) const {
    const size_t half = values_.capacity() / 2;
    const size_t grown = values_.capacity() + (half > growStep_ ? half : growStep_);
    return size > grown ? size : grown;
  }

  size_t growStep_;
  std::vector<Value> values_;
};

using ShortArray = GrowingArray<int16_t>;
using LongArray = GrowingArray<int32_t>;

}  // namespace qrn
