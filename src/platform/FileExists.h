#pragma once

namespace qrn {

// True when a file (no directory) stands at `path`, a NUL-terminated text of code page 932 bytes.
bool FileExists(const char* path) noexcept;

}  // namespace qrn
