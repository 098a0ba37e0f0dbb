#include <windows.h>

#include "Die.h"

namespace btrieve::test {

void Die() noexcept {
  TerminateProcess(GetCurrentProcess(), 9);
  while (true) Sleep(INFINITE);
}

// Nobody lets a Windows process go on here.
void Halt() noexcept { Die(); }

}  // namespace btrieve::test
