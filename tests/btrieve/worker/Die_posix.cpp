#include <signal.h>
#include <unistd.h>

#include "Die.h"

namespace btrieve::test {

void Die() noexcept {
  kill(getpid(), SIGKILL);
  while (true) pause();
}

void Halt() noexcept { raise(SIGSTOP); }

}  // namespace btrieve::test
