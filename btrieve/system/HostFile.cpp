#include "btrieve/system/HostFile.h"

#include <atomic>
#include <cstdio>

#include "btrieve/system/HostPath.h"

namespace btrieve {
namespace {
std::atomic<SyncHook> syncHook{nullptr};
bool (*isRemote)(const std::string& path) = SystemSaysRemote;

bool MaySync(const std::string& path) noexcept {
  const SyncHook hook = syncHook;
  return !hook || hook(path);
}
}  // namespace

std::string DirectoryOf(const std::string& path) { return path.substr(0, DirectoryLength(path)); }

std::string RelativeTo(const std::string& base, const std::string& path) {
  const std::string directory = DirectoryOf(base);
  return DirectoryOf(path) == directory ? path.substr(directory.size()) : path;
}

std::string ResolvedFrom(const std::string& base, const std::string& path) {
  if (path.find('\0') != std::string::npos || path.empty()) return {};
  const bool isBeside = DirectoryLength(path) == 0;
  if (!isBeside && (!IsDrivePath(path) || IsRemote(path))) return {};
  std::string resolved = isBeside ? DirectoryOf(base) + path : path;
  return IsDevice(resolved) ? std::string() : resolved;
}

bool IsRemote(const std::string& path) { return isRemote(path); }

void ReplaceIsRemote(bool (*replacement)(const std::string& path)) noexcept {
  isRemote = replacement ? replacement : SystemSaysRemote;
}

void SetSyncHook(SyncHook hook) noexcept { syncHook = hook; }

bool SyncFile(const std::string& path, bool entryToo) noexcept {
  return MaySync(path) && SyncBySystem(path, entryToo);
}

bool SyncFolderOf(const std::string& path) noexcept {
  return MaySync(path) && SyncFolderBySystem(path);
}

bool WriteNewFile(const std::string& path, std::string_view bytes) noexcept {
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (!file) return false;
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
  return std::fclose(file) == 0 && written && SyncFile(path, false);
}

}  // namespace btrieve
