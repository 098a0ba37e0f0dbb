#include <sys/stat.h>

#include <cerrno>

#include "platform/MissingFile.h"

namespace qrn {

bool IsMissingFile(const char* path) noexcept {
  struct stat state {};
  return stat(path, &state) != 0 && (errno == ENOENT || errno == ENOTDIR);
}

}  // namespace qrn
