#include <windows.h>

#include <algorithm>
#include <iterator>

#include "btrieve/system/DiskSpace.h"

namespace btrieve {

void ForgetLastError() noexcept { SetLastError(ERROR_SUCCESS); }

bool LastErrorIsDiskFull() noexcept {
  constexpr DWORD kQuotaExceeded = 1295;  // not in every set of headers
  constexpr DWORD kFull[] = {ERROR_DISK_FULL, ERROR_HANDLE_DISK_FULL, kQuotaExceeded};
  return std::find(std::begin(kFull), std::end(kFull), GetLastError()) != std::end(kFull);
}

bool DiskIsTooFullFor(const char*) noexcept { return LastErrorIsDiskFull(); }

}  // namespace btrieve
