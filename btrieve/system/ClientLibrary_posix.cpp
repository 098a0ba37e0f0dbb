#include <dlfcn.h>
#include <poll.h>
#include <sys/ioctl.h>

#include <cerrno>

#include "btrieve/system/ClientLibrary.h"

namespace btrieve {

void* LoadClientLibrary() noexcept { return dlopen("libpq.so.5", RTLD_NOW | RTLD_LOCAL); }

AnyFunction FindInLibrary(void* library, const char* name) noexcept {
  return reinterpret_cast<AnyFunction>(dlsym(library, name));
}

bool WaitForSocket(int64_t socket, SocketEvent event, std::chrono::milliseconds limit) noexcept {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + limit;
  const short events = event == SocketEvent::Readable ? POLLIN : POLLOUT;
  pollfd waited{static_cast<int>(socket), events, 0};
  while (true) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
    const int wait = left.count() > 0 ? static_cast<int>(left.count()) : 0;
    const int ready = poll(&waited, 1, wait);
    if (ready > 0) return true;
    if (ready == 0 || errno != EINTR) return false;
  }
}

size_t BytesAtSocket(int64_t socket) noexcept {
  int bytes = 0;
  if (ioctl(static_cast<int>(socket), FIONREAD, &bytes) != 0) return 0;
  return static_cast<size_t>(bytes);
}

}  // namespace btrieve
