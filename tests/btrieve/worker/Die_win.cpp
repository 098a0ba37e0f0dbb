#include <windows.h>

#include "Die.h"

namespace btrieve::test {

void Die() noexcept {
  TerminateProcess(GetCurrentProcess(), 9);
  while (true) Sleep(INFINITE);
}

}  // namespace btrieve::test
