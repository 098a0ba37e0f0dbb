#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

#include "platform/Files.h"

namespace qrn {

bool GetShortPath(const char* directory, std::span<char> out) noexcept {
  if (out.empty()) return false;
  out[0] = '\0';
  struct stat state {};
  const std::string_view text = directory;
  if (text.size() >= out.size() || stat(directory, &state) != 0 || !S_ISDIR(state.st_mode)) {
    return false;
  }
  *std::copy(text.begin(), text.end(), out.data()) = '\0';
  return true;
}

bool IsMissingFile(const char* path) noexcept {
  struct stat state {};
  return stat(path, &state) != 0 && (errno == ENOENT || errno == ENOTDIR);
}

}  // namespace qrn
