// The bytes an index is ordered by: a record's ordered key value, and in a key with duplicates the
// number that orders records of one value, big-endian. Also the bounds that searches begin at.
//
// Entries of one key all have one length, so a shorter or longer row of bytes falls between them:
// a bare value stands before all entries of that value, a value with kBehindAll bytes of 0xFF
// appended behind them.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>

#include "btrieve/keys/KeyOrder.h"

namespace btrieve {

using ByteView = std::span<const uint8_t>;

inline constexpr size_t kOrderNumberSize = 8;
inline constexpr size_t kBehindAll = kOrderNumberSize + 1;

inline bool BytesLess(ByteView a, ByteView b) noexcept {
  const int order =
      a.empty() || b.empty() ? 0 : std::memcmp(a.data(), b.data(), std::min(a.size(), b.size()));
  return order < 0 || (order == 0 && a.size() < b.size());
}
inline bool BytesEqual(ByteView a, ByteView b) noexcept {
  return a.size() == b.size() && (a.empty() || std::memcmp(a.data(), b.data(), a.size()) == 0);
}

inline ByteView ViewOf(const std::string& bytes) noexcept {
  return {reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()};
}
inline std::string TextOf(ByteView bytes) { return {bytes.begin(), bytes.end()}; }

class Entry {
 public:
  Entry() = default;
  explicit Entry(ByteView bytes) noexcept { Assign(bytes); }

  ByteView View() const noexcept { return {bytes_.data(), size_}; }
  size_t Size() const noexcept { return size_; }
  uint8_t* Data() noexcept { return bytes_.data(); }

  // The caller has written `size` bytes at Data().
  void SetSize(size_t size) noexcept { size_ = size; }
  void Assign(ByteView bytes) noexcept {
    size_ = bytes.size();
    if (size_ != 0) std::memcpy(bytes_.data(), bytes.data(), size_);
  }
  void Fill(uint8_t value, size_t count) noexcept {
    std::memset(bytes_.data() + size_, value, count);
    size_ += count;
  }
  void AppendNumber(uint64_t number) noexcept {
    number = __builtin_bswap64(number);
    std::memcpy(bytes_.data() + size_, &number, sizeof number);
    size_ += sizeof number;
  }
  // The nearest place behind this entry.
  void MoveBehind() noexcept { Fill(0, 1); }

  bool operator==(const Entry& other) const noexcept { return BytesEqual(View(), other.View()); }

 private:
  size_t size_ = 0;
  std::array<uint8_t, kMaxOrderedSize + kOrderNumberSize + kBehindAll + 1> bytes_;
};

inline constexpr size_t kPositionEntrySize = 4;

// A position as the entry of the physical order.
inline Entry PositionEntry(uint32_t position) noexcept {
  Entry entry;
  const uint32_t bytes = __builtin_bswap32(position);
  std::memcpy(entry.Data(), &bytes, sizeof bytes);
  entry.SetSize(sizeof bytes);
  return entry;
}

// Where a bound made from positions lies: at or above the result. More bytes than a position's are
// the place behind it.
inline int64_t BoundPosition(ByteView bound) noexcept {
  int64_t position = 0;
  for (const uint8_t byte : bound.first(std::min<size_t>(bound.size(), 4))) {
    position = position << 8 | byte;
  }
  return position + (bound.size() > 4 ? 1 : 0);
}

}  // namespace btrieve
