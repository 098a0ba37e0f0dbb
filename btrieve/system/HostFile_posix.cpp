#include <fcntl.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "btrieve/system/HostFile.h"
#include "btrieve/system/HostPath.h"

namespace btrieve {
namespace {

Status StatusOfErrno(int error) noexcept {
  switch (error) {
    case ENOENT:
      return kFileNotFound;
    case ENOTDIR:
      return kDirectoryError;
    case EACCES:
    case EPERM:
    case EROFS:
      return kPermissionError;
    case ENAMETOOLONG:
    case EINVAL:
    case ELOOP:
      return kInvalidFileName;
    default:
      return kIoError;
  }
}

// File systems that are another machine's, by the number that statfs gives them.
constexpr uint32_t kRemoteSystems[] = {
    0x00006969,  // NFS
    0x0000517B,  // SMB
    0xFF534D42,  // CIFS
    0xFE534D42,  // SMB2
    0x5346414F,  // AFS
    0x73757245,  // Coda
    0x0000564C,  // NCP
};

bool IsUnsupported(int error) noexcept { return error == ENOSYS || error == EINVAL; }

// A second name for the file, then without the first one: for systems that cannot rename so.
int LinkAsNew(const char* from, const char* to) noexcept {
  if (link(from, to) != 0) return -1;
  unlink(from);
  return 0;
}

bool SyncPath(const char* path, int flags) noexcept {
  const int file = open(path, flags | O_CLOEXEC);
  if (file < 0) return errno == ENOENT;
  const bool done = fsync(file) == 0;
  close(file);
  return done;
}

std::string Absolute(const std::string& path) {
  if (path.front() == '/') return path;
  char* here = getcwd(nullptr, 0);
  if (!here) return path;
  std::string absolute = std::string(here) + "/" + path;
  std::free(here);
  return absolute;
}

}  // namespace

Status PathFromCaller(const void* key, std::string& path) {
  if (!key) return kInvalidFileName;
  const auto* text = static_cast<const char*>(key);
  size_t length = strnlen(text, kMaxPathLength + 1);
  if (length > kMaxPathLength) return kInvalidFileName;
  while (length > 0 && text[length - 1] == ' ') --length;
  if (length == 0 || std::string_view(text, length).starts_with("btrv://")) return kInvalidFileName;
  path = Absolute(std::string(text, length));
  return kOk;
}

Status Identify(const std::string& path, FileIdentity& identity) {
  if (path.empty()) return kDirectoryError;
  struct stat found;
  if (stat(path.c_str(), &found) != 0) return StatusOfErrno(errno);
  if (S_ISDIR(found.st_mode)) return kInvalidFileName;
  identity = {static_cast<uint64_t>(found.st_dev), static_cast<uint64_t>(found.st_ino)};
  return kOk;
}

size_t DirectoryLength(const std::string& path) { return path.find_last_of('/') + 1; }

bool DirectoryExists(const std::string& path) {
  struct stat found;
  return stat(path.c_str(), &found) == 0 && S_ISDIR(found.st_mode);
}

bool FileExists(const std::string& path) { return access(path.c_str(), F_OK) == 0; }

uint64_t SizeOfFile(const std::string& path) {
  struct stat found;
  return stat(path.c_str(), &found) == 0 ? static_cast<uint64_t>(found.st_size) : 0;
}

std::string SqliteName(const std::string& path) { return path; }

bool PutInPlace(const std::string& from, const std::string& to) {
  return rename(from.c_str(), to.c_str()) == 0 &&
         SyncPath(DirectoryOf(to).c_str(), O_RDONLY | O_DIRECTORY);
}

Status PutAsNew(const std::string& from, const std::string& to) {
  int result = renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE);
  if (result != 0 && IsUnsupported(errno)) result = LinkAsNew(from.c_str(), to.c_str());
  if (result == 0) return kOk;
  return errno == EEXIST ? kFileExists : kCreateError;
}

// Two slashes at the beginning are another machine's name to some systems.
bool IsDrivePath(const std::string& path) {
  return path.starts_with('/') && !path.starts_with("//");
}

bool IsDevice(const std::string& path) {
  struct stat found;
  return stat(path.c_str(), &found) == 0 && !S_ISREG(found.st_mode);
}

bool SystemSaysRemote(const std::string& path) {
  struct statfs found;
  if (statfs(DirectoryOf(path).c_str(), &found) != 0) return false;
  const auto type = static_cast<uint32_t>(found.f_type);
  return std::find(std::begin(kRemoteSystems), std::end(kRemoteSystems), type) !=
         std::end(kRemoteSystems);
}

void RemoveFile(const std::string& path) noexcept { unlink(path.c_str()); }

bool SyncFolderBySystem(const std::string& path) noexcept {
  return SyncPath(DirectoryOf(path).c_str(), O_RDONLY | O_DIRECTORY);
}

bool SyncBySystem(const std::string& path, bool entryToo) noexcept {
  return SyncPath(path.c_str(), O_RDONLY) && (!entryToo || SyncFolderBySystem(path));
}

}  // namespace btrieve
