// A shared memory object that is read and written, not mapped: whoever may take part may also cut
// it short, and to touch a mapping of what is no longer there would end the process. A seat is
// taken by the lock on the byte of its number.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <new>

#include "btrieve/locks/ByteLocks_posix.h"
#include "btrieve/locks/SharedBoard.h"

namespace btrieve {

struct SharedBoard::Handle {
  int descriptor;
  explicit Handle(int opened) noexcept : descriptor(opened) {}
  ~Handle() { close(descriptor); }
};

namespace {

constexpr mode_t kForAll = 0666;

// Made anew it is opened up at once, whatever the process's mask says. One that stands must be
// opened without leave to make it: in a folder for all the system would refuse that to other users.
int OpenOrMake(const char* name) noexcept {
  char path[64];
  std::snprintf(path, sizeof path, "/%s", name);
  const int standing = shm_open(path, O_RDWR, 0);
  if (standing >= 0 || errno != ENOENT) return standing;
  const int made = shm_open(path, O_RDWR | O_CREAT | O_EXCL, kForAll);
  if (made >= 0) (void)!fchmod(made, kForAll);
  return made;
}

bool HasRoom(int descriptor, size_t size) noexcept {
  struct stat found {};
  if (fstat(descriptor, &found) != 0) return false;
  const auto wanted = static_cast<off_t>(size);
  return found.st_size >= wanted || ftruncate(descriptor, wanted) == 0;
}

}  // namespace

SharedBoard::SharedBoard(const BoardShape& shape) noexcept : shape_(shape) {
  if (!Open()) return;
  while (seat_ < shape_.seats && !Take(seat_)) ++seat_;
}
SharedBoard::~SharedBoard() = default;

bool SharedBoard::Open() noexcept {
  const int descriptor = OpenOrMake(shape_.name);
  if (descriptor < 0) return false;
  handle_.reset(new (std::nothrow) Handle(descriptor));
  if (!handle_) {
    close(descriptor);
  } else if (!HasRoom(descriptor, shape_.seats * shape_.seatSize)) {
    handle_.reset();
  }
  return handle_ != nullptr;
}

bool SharedBoard::Take(size_t seat) noexcept {
  return SetByteLock(handle_->descriptor, F_WRLCK, seat);
}

bool SharedBoard::IsTaken(size_t seat) const noexcept {
  return IsByteLocked(handle_->descriptor, seat);
}

bool SharedBoard::Read(std::span<uint8_t> seats) const noexcept {
  return pread(handle_->descriptor, seats.data(), seats.size(), 0) ==
         static_cast<ssize_t>(seats.size());
}

bool SharedBoard::Write(std::span<const uint8_t> bytes) noexcept {
  return pwrite(handle_->descriptor, bytes.data(), bytes.size(),
                static_cast<off_t>(seat_ * shape_.seatSize)) == static_cast<ssize_t>(bytes.size());
}

}  // namespace btrieve
