// Directories, the paths of files in them, and whether a file is there. Paths are code page 932
// bytes.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace qrn {

inline constexpr size_t kPathSize = 260;  // bytes of a path with its NUL

// Stores the short (8.3) form of an existing directory; on systems without short names the
// directory itself. False, with an empty text stored, for an empty or missing directory and for a
// path that does not fit.
[[nodiscard]] bool GetShortPath(const char* directory, std::span<char> out) noexcept;

// Stores `directory`, the system's separator, `location` and `extension`. Natively a backslash in
// `location` counts as a separator, so that dictionaries made for Windows serve. False, with an
// empty text stored, when the path does not fit.
[[nodiscard]] bool JoinPath(std::string_view directory, std::string_view location,
                            std::string_view extension, std::span<char> out) noexcept;

// True when the location needs no directory: a drive letter, a UNC name, natively also a leading
// slash.
bool IsWholePath(const char* location) noexcept;

// True when the system says that nothing of that name is there, neither a file nor its directory.
// False for what is there and for what the system does not tell (no access, a drive that does not
// answer): a file must not be replaced because it could not be looked at.
bool IsMissingFile(const char* path) noexcept;

}  // namespace qrn
