// How much a test does, and with which random choices, told from outside.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <random>

namespace qrn::test {

// What the environment says, or what the test does by itself.
inline uint32_t Setting(const char* name, uint32_t usual) {
  const char* text = std::getenv(name);
  return text ? static_cast<uint32_t>(std::strtoul(text, nullptr, 10)) : usual;
}

// QRN_SEED for every test with random choices; another one each time without it. A test that fails
// tells its seed.
inline uint32_t Seed() { return Setting("QRN_SEED", std::random_device{}()); }

}  // namespace qrn::test
