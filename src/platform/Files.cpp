#include "platform/Files.h"

#include <algorithm>

#include "platform/CodePage.h"

namespace qrn {
namespace {

#ifdef _WIN32
constexpr char kSeparator = '\\';
#else
constexpr char kSeparator = '/';
#endif

// The second byte of a two-byte character may look like a backslash and is none.
void UseOwnSeparators(std::span<char> path) {
  for (size_t i = 0; i < path.size(); ++i) {
    if (IsLeadByte(static_cast<uint8_t>(path[i]))) {
      ++i;
    } else if (path[i] == '\\') {
      path[i] = kSeparator;
    }
  }
}

}  // namespace

bool JoinPath(std::string_view directory, std::string_view location, std::string_view extension,
              std::span<char> out) noexcept {
  const size_t length = directory.size() + 1 + location.size() + extension.size();
  if (length >= out.size()) {
    if (!out.empty()) out[0] = '\0';
    return false;
  }
  char* at = std::copy(directory.begin(), directory.end(), out.data());
  *at++ = kSeparator;
  char* const locationStart = at;
  at = std::copy(location.begin(), location.end(), at);
  UseOwnSeparators({locationStart, at});
  *std::copy(extension.begin(), extension.end(), at) = '\0';
  return true;
}

bool IsWholePath(const char* location) noexcept {
  const std::string_view text = location;
  if (text.size() > 1 && text[1] == ':') return true;
  return text.starts_with("\\\\") || (kSeparator == '/' && text.starts_with('/'));
}

}  // namespace qrn
