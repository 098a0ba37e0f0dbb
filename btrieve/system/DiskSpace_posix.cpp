#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "btrieve/system/DiskSpace.h"

namespace btrieve {

void ForgetLastError() noexcept { errno = 0; }
bool LastErrorIsDiskFull() noexcept { return errno == ENOSPC || errno == EDQUOT; }

// Only where there is none: closing a file that SQLite has open would take its locks along.
bool DiskIsTooFullFor(const char* path) noexcept {
  const int file = open(path, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (file < 0) return LastErrorIsDiskFull();
  close(file);
  unlink(path);
  return false;
}

}  // namespace btrieve
