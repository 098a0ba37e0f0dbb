// File names between the three worlds: the command line and messages (UTF-8), the file system, and
// the record manager (bytes in a path: code page 932 on Windows, the file system's own elsewhere).
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace qrndata {

std::filesystem::path PathFromUtf8(std::string_view utf8);
std::string PathToUtf8(const std::filesystem::path& path);

// The path as the record manager takes it.
std::string BtrievePath(const std::filesystem::path& path);

// Where a table's data file lies. `location` is the dictionary's entry (code page 932): taken as it
// stands when it begins with a drive letter or a double backslash, else joined to the directory,
// with ".btr" behind a name without any point.
std::filesystem::path DataFilePath(const std::filesystem::path& directory,
                                   std::string_view location);

// The whole contents of a file. Throws Failure (kSystem) when it cannot be read.
std::string ReadWholeFile(const std::filesystem::path& path);

}  // namespace qrndata
