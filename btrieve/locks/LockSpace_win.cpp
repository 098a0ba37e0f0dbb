#include <windows.h>

#include "btrieve/locks/LockSpace.h"
#include "btrieve/system/HostFile_win.h"

namespace btrieve {

struct LockSpace::Handle {
  HANDLE file = INVALID_HANDLE_VALUE;
  bool readOnly = false;
  ~Handle() { CloseHandle(file); }
};

namespace {

OVERLAPPED At(uint64_t offset) noexcept {
  OVERLAPPED place{};
  place.Offset = static_cast<DWORD>(offset);
  place.OffsetHigh = static_cast<DWORD>(offset >> 32);
  return place;
}

HANDLE OpenShared(const std::string& path, DWORD access) {
  return CreateFileW(WidePath(path).c_str(), access,
                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                     FILE_ATTRIBUTE_NORMAL, nullptr);
}

bool TakeBytes(HANDLE file, uint64_t byte, uint64_t count, DWORD flags) noexcept {
  OVERLAPPED place = At(byte);
  return LockFileEx(file, flags | LOCKFILE_FAIL_IMMEDIATELY, 0, static_cast<DWORD>(count),
                    static_cast<DWORD>(count >> 32), &place) != 0;
}

}  // namespace

LockSpace::LockSpace() = default;
LockSpace::~LockSpace() = default;
LockSpace::LockSpace(LockSpace&&) noexcept = default;
LockSpace& LockSpace::operator=(LockSpace&&) noexcept = default;

Status LockSpace::Open(const std::string& path) {
  HANDLE file = OpenShared(path, GENERIC_READ | GENERIC_WRITE);
  if (file == INVALID_HANDLE_VALUE) {
    const Status status = StatusOfWindowsError(GetLastError());
    return status == kPermissionError ? OpenToRead(path) : status;
  }
  handle_ = std::make_unique<Handle>();
  handle_->file = file;
  GuardLocks(file);
  return kOk;
}

Status LockSpace::OpenToRead(const std::string& path) {
  HANDLE file = OpenShared(path, GENERIC_READ);
  if (file == INVALID_HANDLE_VALUE) return StatusOfWindowsError(GetLastError());
  handle_ = std::make_unique<Handle>();
  handle_->file = file;
  handle_->readOnly = true;
  GuardLocks(file);
  return kOk;
}

bool LockSpace::IsOpen() const noexcept { return handle_ != nullptr; }
bool LockSpace::IsReadOnly() const noexcept { return handle_ && handle_->readOnly; }

FileIdentity LockSpace::Identity() const noexcept {
  return handle_ ? IdentityOfHandle(handle_->file) : FileIdentity();
}

bool LockSpace::TryShared(uint64_t byte) noexcept { return TakeBytes(handle_->file, byte, 1, 0); }
bool LockSpace::TryExclusive(uint64_t byte, uint64_t count) noexcept {
  return TakeBytes(handle_->file, byte, count, LOCKFILE_EXCLUSIVE_LOCK);
}
void LockSpace::Release(uint64_t byte, uint64_t count) noexcept {
  OVERLAPPED place = At(byte);
  UnlockFileEx(handle_->file, 0, static_cast<DWORD>(count), static_cast<DWORD>(count >> 32),
               &place);
}

bool LockSpace::IsTaken(uint64_t byte) noexcept {
  if (!TryExclusive(byte)) return true;
  Release(byte);
  return false;
}

size_t LockSpace::ReadAt(uint64_t offset, std::span<uint8_t> out) const noexcept {
  OVERLAPPED place = At(offset);
  DWORD got = 0;
  if (!ReadFile(handle_->file, out.data(), static_cast<DWORD>(out.size()), &got, &place)) return 0;
  return got;
}

uint64_t LockSpace::Size() const noexcept {
  LARGE_INTEGER size{};
  return GetFileSizeEx(handle_->file, &size) ? static_cast<uint64_t>(size.QuadPart) : 0;
}

}  // namespace btrieve
