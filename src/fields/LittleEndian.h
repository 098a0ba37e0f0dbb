// Numbers as records hold them: little-endian, at any address. What lies outside the given span is
// neither read nor written.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <span>

namespace qrn {

static_assert(std::endian::native == std::endian::little);

// Bytes that `bytes` does not have count as zero.
template <class Number>
Number LoadLittle(std::span<const uint8_t> bytes) noexcept {
  Number number{};
  if (bytes.size() >= sizeof number) {  // one load, no call
    std::memcpy(&number, bytes.data(), sizeof number);
    return number;
  }
  if (!bytes.empty()) std::memcpy(&number, bytes.data(), bytes.size());
  return number;
}

// Stores the low `width` bytes, fewer where `out` is shorter.
template <class Number>
void StoreLittle(std::span<uint8_t> out, Number number, size_t width = sizeof(Number)) noexcept {
  if (!out.empty()) std::memcpy(out.data(), &number, std::min({out.size(), width, sizeof number}));
}

}  // namespace qrn
