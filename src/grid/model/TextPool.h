// Memory for many short texts, taken and given back in any order and, as a grid is filled anew, all
// at once. Short ones lie in slabs, by size and each size with the places given back; long ones are
// allocated one by one. Not for threads; nothing throws.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace qrn {

class TextPool {
 public:
  TextPool() = default;
  TextPool(const TextPool&) = delete;
  TextPool& operator=(const TextPool&) = delete;
  // Texts that were not given back go with their slab; long ones are to be given back before.
  ~TextPool() { ReleaseSlabs(); }

  // A copy of the text with a NUL behind it; null without memory.
  [[nodiscard]] char* Take(std::string_view text) noexcept;

  // Null is allowed.
  void GiveBack(char* text) noexcept;

  // True when some text has memory of its own, which ReleaseSlabs leaves alone.
  bool HasLong() const noexcept { return long_ > 0; }
  void ReleaseSlabs() noexcept;

 private:
  static constexpr size_t kStep = 16;   // bytes between two sizes of places
  static constexpr size_t kSizes = 16;  // so that places are up to 256 bytes
  static constexpr size_t kFirstSlab = size_t{1} << 12;
  static constexpr size_t kLastSlab = size_t{1} << 18;

  struct Slab {
    Slab* next;
  };
  struct Place {
    Place* next;
  };

  uint8_t* TakePlace(size_t size) noexcept;
  bool AddSlab() noexcept;

  Slab* slabs_ = nullptr;    // the last one first
  uint8_t* free_ = nullptr;  // the rest of the last slab
  size_t freeBytes_ = 0;
  size_t slabBytes_ = kFirstSlab;  // of the next one
  Place* given_[kSizes] = {};      // places given back, by size
  int64_t long_ = 0;
};

}  // namespace qrn
