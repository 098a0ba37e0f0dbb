#include <thread>

#include "btrieve/system/Background.h"

namespace btrieve {

// The library is linked to stay loaded, so nothing is to be pinned.
bool StartThread(void (*body)()) noexcept {
  try {
    std::thread(body).detach();
    return true;
  } catch (...) {  // no thread, or no memory for one
    return false;
  }
}

bool ProcessIsEnding() noexcept { return false; }

}  // namespace btrieve
