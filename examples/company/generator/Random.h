// Numbers that look random and are the same on every system for the same seed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace company {

class Random {
 public:
  explicit Random(uint64_t seed) : state_(seed) {}

  // 0 to count - 1; `count` is above 0.
  uint32_t Below(uint32_t count) noexcept {
    return static_cast<uint32_t>((Next() >> 32) * count >> 32);
  }

  // Both inclusive.
  int64_t Between(int64_t least, int64_t most) noexcept {
    return least + Below(static_cast<uint32_t>(most - least + 1));
  }

  bool OneIn(uint32_t count) noexcept { return Below(count) == 0; }

  template <class Items>
  const auto& Pick(const Items& items) noexcept {
    return items[Below(static_cast<uint32_t>(std::size(items)))];
  }

  // Small numbers come up more often: orders go to few customers, sales are of few products.
  uint32_t Favoured(uint32_t count) noexcept { return Below(Below(count) + 1); }

 private:
  uint64_t Next() noexcept {
    state_ += 0x9E3779B97F4A7C15;
    uint64_t z = state_;
    z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9;
    z = (z ^ z >> 27) * 0x94D049BB133111EB;
    return z ^ z >> 31;
  }

  uint64_t state_;
};

}  // namespace company
