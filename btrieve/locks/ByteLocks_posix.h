// Open file description locks on bytes: unlike the older kind they belong to their
// descriptor alone, and SQLite's opening and closing of the same file does not touch them.
#pragma once

#include <fcntl.h>

#include <cerrno>
#include <cstdint>

namespace btrieve {

inline struct flock ByteLock(short kind, uint64_t byte, uint64_t count = 1) noexcept {
  struct flock lock {};
  lock.l_type = kind;
  lock.l_whence = SEEK_SET;
  lock.l_start = static_cast<off_t>(byte);
  lock.l_len = static_cast<off_t>(count);
  return lock;
}

// F_RDLCK, F_WRLCK or F_UNLCK, without waiting. False also when the system fails.
inline bool SetByteLock(int descriptor, short kind, uint64_t byte, uint64_t count = 1) noexcept {
  struct flock lock = ByteLock(kind, byte, count);
  int result;
  do {
    result = fcntl(descriptor, F_OFD_SETLK, &lock);
  } while (result != 0 && errno == EINTR);
  return result == 0;
}

// By another descriptor.
inline bool IsByteLocked(int descriptor, uint64_t byte) noexcept {
  struct flock lock = ByteLock(F_WRLCK, byte);
  return fcntl(descriptor, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

}  // namespace btrieve
