// What the system says to the record manager: lock biases, versions, statuses as text.
#pragma once

#include <cstdint>

#include "btrieve.h"
#include "core/DbEngine.h"
#include "core/DbTypes.h"

namespace qrn {

// Key number that stands for no key, and for no currency change on Insert and Update.
inline constexpr int32_t kNoKey = static_cast<uint8_t>(BtrNoKey);

// How a single record operation locks what it reads.
enum LockKind : int32_t {
  kLockNone = 0,
  kLockSingleWait = 1,
  kLockSingleNoWait = 2,
  kLockMultiWait = 3,
  kLockMultiNoWait = 4,
};

// The operation plus 100 to 400 for the four kinds of lock; unchanged for any other kind.
uint16_t DbAddLock(uint16_t operation, int32_t lockKind) noexcept;

// What a Btrieve status means, for the user to read: code page 932, valid until the next call.
const char* DbStatusText(int32_t status) noexcept;

// Fills the caller's 5 bytes: version and revision (16 bits each), then the engine's letter.
[[nodiscard]] Status DbGetVersion(DbEngine& engine, void* version) noexcept;

// Stores the path of the named client library if this process has it loaded. -1, and nothing
// stored, otherwise. `outPath` takes 256 bytes.
[[nodiscard]] Status DbGetModulePath(char* outPath) noexcept;

}  // namespace qrn
