#include <unistd.h>

#include <array>

#include "btrieve/system/StationName.h"

namespace btrieve {

std::string MachineName() {
  std::array<char, 256> name{};
  return gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

std::string ProgramName() {
  std::array<char, 4096> path{};
  const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
  const std::string whole(path.data(), length > 0 ? static_cast<size_t>(length) : 0);
  return whole.substr(whole.rfind('/') + 1);
}

unsigned long ProcessNumber() noexcept { return static_cast<unsigned long>(getpid()); }

}  // namespace btrieve
