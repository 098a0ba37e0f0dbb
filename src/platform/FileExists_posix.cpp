#include <sys/stat.h>

#include "platform/FileExists.h"

namespace qrn {

bool FileExists(const char* path) noexcept {
  struct stat state {};
  return stat(path, &state) == 0 && !S_ISDIR(state.st_mode);
}

}  // namespace qrn
