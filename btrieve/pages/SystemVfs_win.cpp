#include <sqlite3.h>
#include <windows.h>

#include <string_view>

#include "btrieve/pages/SystemVfs.h"
#include "btrieve/system/HostFile_win.h"

namespace btrieve {
namespace {

// A connection to the log's index has a handle of its own, which mostly holds one lock of one byte.
HANDLE WINAPI OpenGuarded(const wchar_t* path, DWORD access, DWORD sharing,
                          SECURITY_ATTRIBUTES* security, DWORD disposition, DWORD attributes,
                          HANDLE pattern) noexcept {
  const HANDLE file =
      CreateFileW(path, access, sharing, security, disposition, attributes, pattern);
  const DWORD error = GetLastError();
  if (file != INVALID_HANDLE_VALUE && std::wstring_view(path).ends_with(L"-shm")) GuardLocks(file);
  SetLastError(error);
  return file;
}

}  // namespace

bool SetUpSystemVfs() noexcept {
  sqlite3_vfs* system = sqlite3_vfs_find("win32");
  const auto open = reinterpret_cast<sqlite3_syscall_ptr>(reinterpret_cast<void*>(OpenGuarded));
  return system && system->xSetSystemCall(system, "CreateFileW", open) == SQLITE_OK;
}

}  // namespace btrieve
