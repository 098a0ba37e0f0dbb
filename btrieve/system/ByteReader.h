// Reads little-endian values off a span from front to back. Past the end every read gives 0 and the
// reader stays failed: callers read a whole structure and ask once.
#pragma once

#include <cstdint>
#include <cstring>
#include <span>

namespace btrieve {

class ByteReader {
 public:
  explicit ByteReader(std::span<const uint8_t> bytes) noexcept : rest_(bytes) {}

  template <class Value>
  Value Take() noexcept {
    Value value{};
    const auto bytes = TakeBytes(sizeof value);
    if (!bytes.empty()) std::memcpy(&value, bytes.data(), sizeof value);
    return value;
  }

  // `count` bytes, or none of them when fewer are left.
  std::span<const uint8_t> TakeBytes(size_t count) noexcept {
    if (failed_ || count > rest_.size()) {
      failed_ = true;
      return {};
    }
    const auto taken = rest_.first(count);
    rest_ = rest_.subspan(count);
    return taken;
  }

  void Skip(size_t count) noexcept { TakeBytes(count); }
  bool Failed() const noexcept { return failed_; }
  std::span<const uint8_t> Rest() const noexcept { return rest_; }

 private:
  std::span<const uint8_t> rest_;
  bool failed_ = false;
};

}  // namespace btrieve
