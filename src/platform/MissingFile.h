#pragma once

namespace qrn {

// True when the system says that nothing of that name is there, neither a file nor its directory.
// False for what is there and for what the system does not tell (no access, a drive that does not
// answer): a file must not be replaced because it could not be looked at. `path` is a
// NUL-terminated text of code page 932 bytes.
bool IsMissingFile(const char* path) noexcept;

}  // namespace qrn
