// What the halves of HostFile tell its common part.
#pragma once

#include <string>

namespace btrieve {

// Absolute, and not by another machine's name. The file system is not asked.
bool IsDrivePath(const std::string& path);
// Whether an absolute path on this machine leads to a device, a pipe or the like.
bool IsDevice(const std::string& path);
bool SystemSaysRemote(const std::string& path);

}  // namespace btrieve
