#include <windows.h>

#include "platform/Files.h"

namespace qrn {

bool GetShortPath(const char* directory, std::span<char> out) noexcept {
  if (out.empty()) return false;
  const DWORD length = GetShortPathNameA(directory, out.data(), static_cast<DWORD>(out.size()));
  if (length != 0 && length < out.size()) return true;
  out[0] = '\0';
  return false;
}

bool IsMissingFile(const char* path) noexcept {
  if (GetFileAttributesA(path) != INVALID_FILE_ATTRIBUTES) return false;
  const DWORD error = GetLastError();
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

}  // namespace qrn
