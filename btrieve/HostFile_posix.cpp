#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "btrieve/HostFile.h"

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

void RemoveFile(const std::string& path) noexcept { unlink(path.c_str()); }

bool SyncBySystem(const std::string& path, bool entryToo) noexcept {
  return SyncPath(path.c_str(), O_RDONLY) &&
         (!entryToo || SyncPath(DirectoryOf(path).c_str(), O_RDONLY | O_DIRECTORY));
}

uint64_t ProcessNumber() noexcept { return static_cast<uint64_t>(getpid()); }

}  // namespace btrieve
