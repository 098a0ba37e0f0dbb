// The entry: one call at a time, and whatever fails inside comes out as a status.
#include <new>

#include "btrieve.h"
#include "btrieve/operations/Operations.h"
#include "btrieve/session/Maintenance.h"
#include "btrieve/system/Background.h"

namespace {

using namespace btrieve;

// At the end of a process the thread that was inside may be gone for ever.
bool Enter(std::unique_lock<std::mutex>& lock) {
  if (ProcessIsEnding()) return lock.try_lock();
  lock.lock();
  return true;
}

Status Guarded(Call& call, uint16_t operation) noexcept {
  try {
    return RunCall(call, operation);
  } catch (...) {
    return CaughtStatus();
  }
}

}  // namespace

// The first call makes the session, for which there may be no memory.
extern "C" int16_t BTR_CALL BTRCALL(uint16_t operation, void* posBlock, void* data,
                                    uint32_t* dataLength, void* key, uint8_t keyLength,
                                    int8_t keyNumber) try {
  Session& session = Session::Get();
  std::unique_lock lock(session.Mutex(), std::defer_lock);
  if (!Enter(lock)) return kNotActive;
  if (!RegisterCheckedVfs()) return kNoCacheBuffer;
  Call call(session);
  call.block = posBlock;
  call.data = static_cast<uint8_t*>(data);
  call.room = data && dataLength ? *dataLength : 0;
  call.length = dataLength;
  call.key = static_cast<uint8_t*>(key);
  call.keyLength = keyLength;
  call.keyNumber = keyNumber;
  const Status status = Guarded(call, operation);
  if (call.cursor) call.File().LetGoOfLongLog();
  WakeMaintenance();
  return status;
} catch (...) {
  return CaughtStatus();
}
