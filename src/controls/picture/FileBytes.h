// A picture's file as bytes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace qrn {

// A path of code page 932 as the system takes it.
std::wstring WidePath(const std::string& path);

// True for what is there, a directory too.
bool Exists(const std::wstring& path) noexcept;

// Nothing for a file that cannot be read, and for one too large to be a picture.
std::optional<std::vector<uint8_t>> ReadFileBytes(const std::wstring& path);

}  // namespace qrn
