// 16-bit words of requests, as they stand in the bytes.
#pragma once

#include <cstdint>
#include <vector>

namespace qrn {

// Little-endian.
inline void AppendWord(std::vector<uint8_t>& bytes, uint16_t word) {
  bytes.push_back(static_cast<uint8_t>(word));
  bytes.push_back(static_cast<uint8_t>(word >> 8));
}

}  // namespace qrn
