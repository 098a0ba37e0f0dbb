// What a process has of the drawing system's objects.
#pragma once

#include <windows.h>

#include <cstdint>

namespace qrn::test {

// Where the system does not count them they are counted in the process's own table: 65,536 entries
// of 24 bytes, the type in the 16 bits at 14.
inline long long DrawingObjects() {
  if (const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS)) return counted;
  const auto* environment = reinterpret_cast<const uint8_t*>(__readgsqword(0x60));
  const auto* table = *reinterpret_cast<const uint8_t* const*>(environment + 0xF8);
  long long used = 0;
  for (int i = 0; table && i < 65536; ++i) {
    used += *reinterpret_cast<const uint16_t*>(table + i * 24 + 14) != 0;
  }
  return used;
}

}  // namespace qrn::test
