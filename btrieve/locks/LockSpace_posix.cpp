#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "btrieve/locks/ByteLocks_posix.h"
#include "btrieve/locks/LockSpace.h"

namespace btrieve {

struct LockSpace::Handle {
  int descriptor = -1;
  bool readOnly = false;
  ~Handle() { close(descriptor); }
};

namespace {

Status StatusOfOpen(int error) noexcept {
  if (error == ENOENT) return kFileNotFound;
  if (error == ENOTDIR) return kDirectoryError;
  if (error == EISDIR || error == ENAMETOOLONG || error == EINVAL) return kInvalidFileName;
  if (error == EMFILE || error == ENFILE) return kFileTableFull;
  if (error == EACCES || error == EPERM || error == EROFS) return kPermissionError;
  return kIoError;
}

}  // namespace

LockSpace::LockSpace() = default;
LockSpace::~LockSpace() = default;
LockSpace::LockSpace(LockSpace&&) noexcept = default;
LockSpace& LockSpace::operator=(LockSpace&&) noexcept = default;

Status LockSpace::Open(const std::string& path) {
  const int descriptor = open(path.c_str(), O_RDWR | O_CLOEXEC);
  if (descriptor < 0) {
    const Status status = StatusOfOpen(errno);
    return status == kPermissionError ? OpenToRead(path) : status;
  }
  handle_ = std::make_unique<Handle>();
  handle_->descriptor = descriptor;
  return kOk;
}

Status LockSpace::OpenToRead(const std::string& path) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return StatusOfOpen(errno);
  handle_ = std::make_unique<Handle>();
  handle_->descriptor = descriptor;
  handle_->readOnly = true;
  return kOk;
}

bool LockSpace::IsOpen() const noexcept { return handle_ != nullptr; }
bool LockSpace::IsReadOnly() const noexcept { return handle_ && handle_->readOnly; }

FileIdentity LockSpace::Identity() const noexcept {
  struct stat found {};
  if (!handle_ || fstat(handle_->descriptor, &found) != 0) return {};
  return {static_cast<uint64_t>(found.st_dev), static_cast<uint64_t>(found.st_ino)};
}

bool LockSpace::TryShared(uint64_t byte) noexcept {
  return SetByteLock(handle_->descriptor, F_RDLCK, byte);
}
bool LockSpace::TryExclusive(uint64_t byte, uint64_t count) noexcept {
  return SetByteLock(handle_->descriptor, handle_->readOnly ? F_RDLCK : F_WRLCK, byte, count);
}
void LockSpace::Release(uint64_t byte, uint64_t count) noexcept {
  SetByteLock(handle_->descriptor, F_UNLCK, byte, count);
}
bool LockSpace::IsTaken(uint64_t byte) noexcept { return IsByteLocked(handle_->descriptor, byte); }

size_t LockSpace::ReadAt(uint64_t offset, std::span<uint8_t> out) const noexcept {
  size_t done = 0;
  while (done < out.size()) {
    const ssize_t got = pread(handle_->descriptor, out.data() + done, out.size() - done,
                              static_cast<off_t>(offset + done));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    done += static_cast<size_t>(got);
  }
  return done;
}

uint64_t LockSpace::Size() const noexcept {
  struct stat found {};
  return fstat(handle_->descriptor, &found) == 0 ? static_cast<uint64_t>(found.st_size) : 0;
}

}  // namespace btrieve
