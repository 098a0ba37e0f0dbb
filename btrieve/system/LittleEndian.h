// Little-endian values of 2, 4 or 8 bytes at any address, as files, requests and answers hold them.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace btrieve {

static_assert(std::endian::native == std::endian::little);

template <class Value>
Value LoadValue(const uint8_t* at) noexcept {
  Value value;
  std::memcpy(&value, at, sizeof value);
  return value;
}

template <class Value>
void StoreValue(uint8_t* at, Value value) noexcept {
  std::memcpy(at, &value, sizeof value);
}

}  // namespace btrieve
