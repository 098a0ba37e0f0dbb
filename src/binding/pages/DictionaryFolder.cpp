#include "binding/pages/DictionaryFolder.h"

#include <algorithm>

#include "platform/CodePage.h"

namespace qrn {
namespace {

constexpr std::string_view kDictionaryFiles[] = {"file.ddf", "index.ddf", "field.ddf"};

// A second byte of a character may look like a backslash.
size_t LastBackslash(std::string_view path) {
  size_t last = std::string_view::npos;
  for (size_t i = 0; i < path.size(); ++i) {
    if (path[i] == '\\') last = i;
    if (IsLeadByte(static_cast<uint8_t>(path[i]))) ++i;
  }
  return last;
}

}  // namespace

std::string DictionaryFolder(std::string_view path) {
  const size_t slash = LastBackslash(path);
  if (slash == std::string_view::npos) return std::string(path);
  const auto isFile = [name = path.substr(slash + 1)](std::string_view file) {
    return EqualIgnoringCase(name, file);
  };
  return std::string(std::ranges::any_of(kDictionaryFiles, isFile) ? path.substr(0, slash) : path);
}

}  // namespace qrn
