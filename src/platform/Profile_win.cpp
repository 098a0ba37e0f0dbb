#include <windows.h>

#include "platform/Profile.h"

namespace qrn {

size_t ReadProfileText(const char* section, const char* key, const char* fallback,
                       std::span<char> out, const char* file) noexcept {
  if (out.empty()) return 0;
  return GetPrivateProfileStringA(section, key, fallback, out.data(),
                                  static_cast<DWORD>(out.size()), file);
}

int ReadProfileInt(const char* section, const char* key, int fallback, const char* file) noexcept {
  return static_cast<int>(GetPrivateProfileIntA(section, key, fallback, file));
}

}  // namespace qrn
