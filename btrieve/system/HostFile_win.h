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

}  // namespace btrieve
