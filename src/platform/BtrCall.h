// The record manager's one entry, BTRCALL, found at run time: an installed client first, the local
// record manager beside this module otherwise. Nothing is ever loaded from the current directory.
#pragma once

#include <cstdint>

#include "btrieve.h"

namespace qrn {

using BtrCallFunction = BTRCALL_FUNCTION;

// Calls the record manager; without one every operation gives status 20. The library is looked
// for at the first call and held until the process ends.
int16_t BtrCall(uint16_t operation, void* posBlock, void* data, uint32_t* dataLength, void* key,
                uint8_t keyLength, int8_t keyNumber) noexcept;

// Puts another function in BTRCALL's place, to provoke in tests what the real one never does;
// null brings the real one back. Returns what stood there (null for the real one).
BtrCallFunction ReplaceBtrCall(BtrCallFunction function) noexcept;

}  // namespace qrn
