// Big-endian numbers, as SQLite's pages and log hold them.
#pragma once

#include <cstdint>
#include <cstring>

namespace btrieve {

inline uint32_t Big16(const uint8_t* at) noexcept {
  return static_cast<uint32_t>(at[0] << 8 | at[1]);
}

inline uint32_t Big32(const uint8_t* at) noexcept {
  uint32_t value;
  std::memcpy(&value, at, sizeof value);
  return __builtin_bswap32(value);
}

inline uint64_t Big64(const uint8_t* at) noexcept {
  uint64_t value;
  std::memcpy(&value, at, sizeof value);
  return __builtin_bswap64(value);
}

}  // namespace btrieve
