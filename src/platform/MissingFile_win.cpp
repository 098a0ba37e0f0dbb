#include <windows.h>

#include "platform/MissingFile.h"

namespace qrn {

bool IsMissingFile(const char* path) noexcept {
  if (GetFileAttributesA(path) != INVALID_FILE_ATTRIBUTES) return false;
  const DWORD error = GetLastError();
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

}  // namespace qrn
