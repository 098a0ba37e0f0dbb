#pragma once

#include <cstdint>
#include <cstdio>
#include <span>
#include <string>

namespace qrn::test {

// " 01 FF"
inline std::string Hex(std::span<const uint8_t> bytes) {
  std::string text;
  for (const uint8_t byte : bytes) {
    char digits[4];
    std::snprintf(digits, sizeof digits, " %02X", byte);
    text += digits;
  }
  return text;
}

}  // namespace qrn::test
