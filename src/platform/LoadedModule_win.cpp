#include <windows.h>

#include "platform/LoadedModule.h"

namespace qrn {

bool LoadedModulePath(const char* name, std::span<char> out) noexcept {
  const HMODULE module = GetModuleHandleA(name);
  if (module == nullptr || out.empty()) return false;
  return GetModuleFileNameA(module, out.data(), static_cast<DWORD>(out.size())) != 0;
}

}  // namespace qrn
