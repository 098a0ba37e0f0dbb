#include <windows.h>

#include "platform/StringTable.h"

namespace qrn {
namespace {

// The module that this code was linked into: its own table, never the host program's.
HINSTANCE OwnModule() {
  HMODULE module = nullptr;
  GetModuleHandleExA(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<LPCSTR>(&OwnModule), &module);
  return module;
}

}  // namespace

size_t LoadText(int id, std::span<char> out) noexcept {
  if (out.empty()) return 0;
  out[0] = '\0';
  const int length =
      LoadStringA(OwnModule(), static_cast<UINT>(id), out.data(), static_cast<int>(out.size()));
  return length > 0 ? static_cast<size_t>(length) : 0;
}

}  // namespace qrn
