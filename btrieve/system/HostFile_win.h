// Windows only: what the halves of the seams share.
#pragma once

#include <windows.h>

#include <string>

#include "btrieve/system/HostFile.h"

namespace btrieve {

// Callers' paths are bytes of the process's code page.
std::wstring WidePath(const std::string& path);
Status StatusOfWindowsError(DWORD error) noexcept;
FileIdentity IdentityOfHandle(HANDLE file) noexcept;

// To be called for each handle that takes byte locks, before it takes any. Where Windows programs
// run under Wine, whose server holds their locks in the host system, the only lock of a handle
// stays there if it is one byte long, the handle's process dies and another one locks the file. Two
// bytes beside it, locked and shared for good at the end of what can be locked, keep it from that.
// Nothing is done on Windows.
void GuardLocks(HANDLE file) noexcept;

}  // namespace btrieve
