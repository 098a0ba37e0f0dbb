#include <winsock2.h>
// After it: it must not be met first.
#include <windows.h>

#include <string>

#include "btrieve/system/ClientLibrary.h"

namespace btrieve {
namespace {

constexpr wchar_t kName[] = L"libpq.dll";
constexpr wchar_t kFolder[] = L"server-client\\";  // where it comes with this library

// Where this library stands, with the last backslash.
std::wstring OwnFolder() {
  HMODULE self = nullptr;
  GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<LPCWSTR>(&LoadClientLibrary), &self);
  std::wstring path(MAX_PATH, L'\0');
  DWORD length = 0;
  while ((length = GetModuleFileNameW(self, path.data(), static_cast<DWORD>(path.size()))) ==
         path.size()) {
    path.resize(path.size() * 2);
  }
  path.resize(length);
  path.resize(path.find_last_of(L'\\') + 1);
  return path;
}

// Its companions stand beside it.
void* LoadFrom(const std::wstring& folder) {
  return LoadLibraryExW((folder + kName).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

}  // namespace

void* LoadClientLibrary() noexcept {
  try {
    const std::wstring folder = OwnFolder();
    if (void* library = LoadFrom(folder)) return library;
    if (void* library = LoadFrom(folder + kFolder)) return library;
  } catch (...) {  // no memory for a path
  }
  return LoadLibraryExW(kName, nullptr, LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
}

AnyFunction FindInLibrary(void* library, const char* name) noexcept {
  return reinterpret_cast<AnyFunction>(
      reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name)));
}

bool WaitForSocket(int64_t socket, SocketEvent event, std::chrono::milliseconds limit) noexcept {
  fd_set waited;
  FD_ZERO(&waited);
  FD_SET(static_cast<SOCKET>(socket), &waited);
  fd_set failed = waited;
  const auto count = limit.count() > 0 ? limit.count() : 0;
  timeval wait{static_cast<long>(count / 1000), static_cast<long>(count % 1000 * 1000)};
  const bool reads = event == SocketEvent::Readable;
  return select(0, reads ? &waited : nullptr, reads ? nullptr : &waited, &failed, &wait) > 0;
}

size_t BytesAtSocket(int64_t socket) noexcept {
  u_long bytes = 0;
  if (ioctlsocket(static_cast<SOCKET>(socket), FIONREAD, &bytes) != 0) return 0;
  return bytes;
}

}  // namespace btrieve
