#include "btrieve/HostFile.h"

#include <atomic>

namespace btrieve {
namespace {
std::atomic<SyncHook> syncHook{nullptr};
}

std::string DirectoryOf(const std::string& path) { return path.substr(0, DirectoryLength(path)); }

std::string RelativeTo(const std::string& base, const std::string& path) {
  const std::string directory = DirectoryOf(base);
  return DirectoryOf(path) == directory ? path.substr(directory.size()) : path;
}

std::string ResolvedFrom(const std::string& base, const std::string& path) {
  return DirectoryLength(path) == 0 ? DirectoryOf(base) + path : path;
}

void SetSyncHook(SyncHook hook) noexcept { syncHook = hook; }

bool SyncFile(const std::string& path, bool entryToo) noexcept {
  const SyncHook hook = syncHook;
  return (!hook || hook(path)) && SyncBySystem(path, entryToo);
}

}  // namespace btrieve
