// The system's calls on files, defined here and so taken by everything in the program.
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <mutex>

#include "DiskTap.h"

namespace btrieve::test {
namespace {

std::recursive_mutex mutex;
std::string folder;
DiskListener* listener = nullptr;

bool IsTapped(const std::string& path) {
  return listener && path.compare(0, folder.size(), folder) == 0;
}

std::string PathOf(int file) {
  char path[4096];
  const std::string link = "/proc/self/fd/" + std::to_string(file);
  const ssize_t size = syscall(SYS_readlink, link.c_str(), path, sizeof path);
  return size > 0 ? std::string(path, static_cast<size_t>(size)) : std::string();
}

// Asks the listener, does the call, tells the listener.
template <class Call>
long Through(const DiskCall& call, Call action) {
  if (const int error = listener->Allow(call)) {
    errno = error;
    return -1;
  }
  const long result = action();
  if (result >= 0) {
    const int error = errno;
    listener->Done(call);
    errno = error;
  }
  return result;
}

int Open(const char* path, int flags, mode_t mode) {
  const std::lock_guard lock(mutex);
  const auto open = [&] { return syscall(SYS_openat, AT_FDCWD, path, flags, mode); };
  struct stat found;
  const bool makes = (flags & O_CREAT) && IsTapped(path) && stat(path, &found) != 0;
  return static_cast<int>(makes ? Through({DiskKind::Make, path}, open) : open());
}

ssize_t Write(int file, const void* bytes, size_t size, off_t offset) {
  const std::lock_guard lock(mutex);
  const auto write = [&] { return syscall(SYS_pwrite64, file, bytes, size, offset); };
  if (!listener) return write();
  const std::string path = PathOf(file);
  if (!IsTapped(path)) return write();
  struct stat found {};
  fstat(file, &found);
  const auto* from = static_cast<const uint8_t*>(bytes);
  return Through({.kind = DiskKind::Write,
                  .path = path,
                  .offset = static_cast<uint64_t>(offset),
                  .bytes = Bytes(from, from + size),
                  .grows = offset + static_cast<off_t>(size) > found.st_size},
                 write);
}

ssize_t Read(int file, void* bytes, size_t size, off_t offset) {
  const std::lock_guard lock(mutex);
  const auto read = [&] { return syscall(SYS_pread64, file, bytes, size, offset); };
  if (!listener) return read();
  const std::string path = PathOf(file);
  if (!IsTapped(path)) return read();
  return Through({.kind = DiskKind::Read, .path = path, .offset = static_cast<uint64_t>(offset)},
                 read);
}

int Truncate(int file, off_t size) {
  const std::lock_guard lock(mutex);
  const auto cut = [&] { return syscall(SYS_ftruncate, file, size); };
  if (!listener) return static_cast<int>(cut());
  const std::string path = PathOf(file);
  if (!IsTapped(path)) return static_cast<int>(cut());
  return static_cast<int>(Through(
      {.kind = DiskKind::Truncate, .path = path, .offset = static_cast<uint64_t>(size)}, cut));
}

int Sync(int file, long number) {
  const std::lock_guard lock(mutex);
  const auto sync = [&] { return syscall(number, file); };
  if (!listener) return static_cast<int>(sync());
  const std::string path = PathOf(file);
  if (!IsTapped(path + "/")) return static_cast<int>(sync());
  struct stat found {};
  fstat(file, &found);
  const DiskKind kind = S_ISDIR(found.st_mode) ? DiskKind::SyncFolder : DiskKind::Sync;
  return static_cast<int>(Through({kind, path}, sync));
}

long Control(int file, int command, void* argument) {
  const auto control = [&] { return syscall(SYS_fcntl, file, command, argument); };
  if (command != F_OFD_SETLK || !listener) return control();
  const std::lock_guard lock(mutex);
  const auto& wanted = *static_cast<struct flock*>(argument);
  const std::string path = PathOf(file);
  if (wanted.l_type == F_UNLCK || !IsTapped(path)) return control();
  return Through(
      {.kind = DiskKind::Lock, .path = path, .offset = static_cast<uint64_t>(wanted.l_start)},
      control);
}

}  // namespace

DiskTap::DiskTap(const std::filesystem::path& root, DiskListener& told) {
  const std::lock_guard lock(mutex);
  folder = std::filesystem::canonical(root).string() + "/";
  listener = &told;
}

DiskTap::~DiskTap() {
  const std::lock_guard lock(mutex);
  listener = nullptr;
}

}  // namespace btrieve::test

extern "C" {

using namespace btrieve::test;

int open(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const auto mode = static_cast<mode_t>(flags & O_CREAT ? va_arg(rest, int) : 0);
  va_end(rest);
  return Open(path, flags, mode);
}
int open64(const char* path, int flags, ...) __attribute__((alias("open")));

ssize_t pwrite(int file, const void* bytes, size_t size, off_t offset) {
  return Write(file, bytes, size, offset);
}
ssize_t pwrite64(int file, const void* bytes, size_t size, off64_t offset) {
  return Write(file, bytes, size, offset);
}
ssize_t pread(int file, void* bytes, size_t size, off_t offset) {
  return Read(file, bytes, size, offset);
}
ssize_t pread64(int file, void* bytes, size_t size, off64_t offset) {
  return Read(file, bytes, size, offset);
}
int ftruncate(int file, off_t size) noexcept { return Truncate(file, size); }
int ftruncate64(int file, off64_t size) noexcept { return Truncate(file, size); }
int fsync(int file) { return Sync(file, SYS_fsync); }
int fdatasync(int file) { return Sync(file, SYS_fdatasync); }

int fcntl(int file, int command, ...) {
  va_list rest;
  va_start(rest, command);
  void* argument = va_arg(rest, void*);
  va_end(rest);
  return static_cast<int>(Control(file, command, argument));
}
int fcntl64(int file, int command, ...) __attribute__((alias("fcntl")));

int unlink(const char* path) noexcept {
  const std::lock_guard lock(mutex);
  const auto remove = [&] { return syscall(SYS_unlink, path); };
  struct stat found;
  const bool told = IsTapped(path) && stat(path, &found) == 0;
  return static_cast<int>(told ? Through({DiskKind::Remove, path}, remove) : remove());
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
              unsigned flags) noexcept {
  const std::lock_guard lock(mutex);
  const auto move = [&] { return syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags); };
  return static_cast<int>(
      IsTapped(to) ? Through({.kind = DiskKind::Rename, .path = from, .to = to}, move) : move());
}
int rename(const char* from, const char* to) noexcept {
  return renameat2(AT_FDCWD, from, AT_FDCWD, to, 0);
}

}  // extern "C"
