// What the system says to the record manager: operation numbers, lock biases, statuses as text.
#pragma once

#include <cstdint>

#include "core/DbEngine.h"
#include "core/DbTypes.h"

namespace qrn {

enum BtrieveOperation : uint16_t {
  kOpOpen = 0,
  kOpClose = 1,
  kOpInsert = 2,
  kOpUpdate = 3,
  kOpDelete = 4,
  kOpGetEqual = 5,
  kOpGetNext = 6,
  kOpGetPrevious = 7,
  kOpGetGreater = 8,
  kOpGetGreaterOrEqual = 9,
  kOpGetLess = 10,
  kOpGetLessOrEqual = 11,
  kOpGetFirst = 12,
  kOpGetLast = 13,
  kOpCreate = 14,
  kOpStat = 15,
  kOpBeginTransaction = 19,
  kOpEndTransaction = 20,
  kOpAbortTransaction = 21,
  kOpGetPosition = 22,
  kOpGetDirect = 23,
  kOpStepNext = 24,
  kOpVersion = 26,
  kOpUnlock = 27,
  kOpReset = 28,
  kOpStepFirst = 33,
  kOpStepLast = 34,
  kOpStepPrevious = 35,
  kOpGetNextExtended = 36,
  kOpGetPreviousExtended = 37,
  kOpStepNextExtended = 38,
  kOpStepPreviousExtended = 39,
  kOpGetByPercentage = 44,
  kOpFindPercentage = 45,
  kOpLogin = 78,
  kOpBeginConcurrentTransaction = 1019,
};

// Key number that stands for no key, and for no currency change on Insert and Update.
inline constexpr int32_t kNoKey = 255;

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
