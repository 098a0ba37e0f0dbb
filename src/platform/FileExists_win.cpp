#include <windows.h>

#include "platform/FileExists.h"

namespace qrn {

bool FileExists(const char* path) noexcept {
  const DWORD attributes = GetFileAttributesA(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

}  // namespace qrn
