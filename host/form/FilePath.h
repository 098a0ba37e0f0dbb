// Paths of files between UTF-8, as texts are, and the system's own form.
#pragma once

#include <filesystem>
#include <string>

#include "platform/CodePage.h"

namespace qrn::form {

inline std::filesystem::path PathOf(const std::string& utf8) {
  return {std::u8string(utf8.begin(), utf8.end())};
}

inline std::string Utf8Of(const std::filesystem::path& path) {
  const std::u8string utf8 = path.u8string();
  return {utf8.begin(), utf8.end()};
}

// As the record manager takes it in a path.
inline std::string EngineBytes(const std::string& utf8) {
#ifdef _WIN32
  return Utf8ToCodePage(utf8);
#else
  return utf8;
#endif
}

}  // namespace qrn::form
