#include <windows.h>

#include "platform/ShortPath.h"

namespace qrn {

bool GetShortPath(const char* directory, std::span<char> out) noexcept {
  if (out.empty()) return false;
  const DWORD length = GetShortPathNameA(directory, out.data(), static_cast<DWORD>(out.size()));
  if (length != 0 && length < out.size()) return true;
  out[0] = '\0';
  return false;
}

}  // namespace qrn
