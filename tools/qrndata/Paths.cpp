#include "tools/qrndata/Paths.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <system_error>

#include "platform/CodePage.h"
#include "tools/qrndata/Failure.h"
#include "tools/qrndata/Messages.h"

namespace qrndata {

namespace fs = std::filesystem;

fs::path PathFromUtf8(std::string_view utf8) { return {std::u8string(utf8.begin(), utf8.end())}; }

std::string PathToUtf8(const fs::path& path) {
  const std::u8string utf8 = path.u8string();
  return {utf8.begin(), utf8.end()};
}

std::string BtrievePath(const fs::path& path) {
#ifdef _WIN32
  return qrn::Utf8ToCodePage(PathToUtf8(path));
#else
  return path.native();
#endif
}

fs::path DataFilePath(const fs::path& directory, std::string_view location) {
  std::string name = qrn::CodePageToUtf8(location);
  const bool isWhole = (location.size() > 1 && location[1] == ':') || location.starts_with("\\\\");
#ifndef _WIN32
  std::replace(name.begin(), name.end(), '\\', '/');
#endif
  if (isWhole) return PathFromUtf8(name);
  if (location.find('.') == std::string_view::npos) name += ".btr";
  return directory / PathFromUtf8(name);
}

std::string ReadWholeFile(const fs::path& path) {
  std::error_code ignored;
  if (fs::is_directory(path, ignored)) {
    throw Failure(kSystem,
                  Say(Message::CannotBeReadWhy, PathToUtf8(path), Say(Message::IsADirectory)));
  }
  std::ifstream file(path, std::ios::binary);
  std::string text;
  if (file) text.assign(std::istreambuf_iterator<char>(file), {});
  if (!file) {
    throw Failure(kSystem, Say(Message::CannotBeReadWhy, PathToUtf8(path), std::strerror(errno)));
  }
  return text;
}

}  // namespace qrndata
