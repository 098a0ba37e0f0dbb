// A stream of choices: from the bytes of a fuzzer's input while they last, then from a seed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>

namespace btrieve::test {

class Choices {
 public:
  explicit Choices(uint32_t seed, std::span<const uint8_t> bytes = {})
      : random_(seed), bytes_(bytes) {}

  // 0..count-1
  uint32_t Pick(uint32_t count) { return Next() % count; }
  bool Chance(uint32_t oneIn) { return Pick(oneIn) == 0; }
  template <class Value>
  const Value& Of(std::span<const Value> values) {
    return values[Pick(static_cast<uint32_t>(values.size()))];
  }

 private:
  uint32_t Next() {
    if (used_ + 2 > bytes_.size()) return static_cast<uint32_t>(random_());
    used_ += 2;
    return bytes_[used_ - 2] | static_cast<uint32_t>(bytes_[used_ - 1]) << 8;
  }

  std::mt19937 random_;
  std::span<const uint8_t> bytes_;
  size_t used_ = 0;
};

}  // namespace btrieve::test
