// The bytes of a file of this machine: far beyond its end, locked through a handle of its own.
// Natively built and Windows programs exclude each other.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "btrieve/locks/LockBytes.h"
#include "btrieve/system/HostFile.h"
#include "btrieve/system/Status.h"

namespace btrieve {

class LockSpace final : public LockBytes {
 public:
  LockSpace();
  ~LockSpace() override;
  LockSpace(LockSpace&&) noexcept;
  LockSpace& operator=(LockSpace&&) noexcept;

  // 0, or 12, 11, 35, 94, 85 (a foreign program denies sharing). A file that may not be written is
  // opened for reading.
  // In one process a file must be opened here once at a time, and closed after SQLite's connection:
  // closing any descriptor of a file would take SQLite's own locks along.
  [[nodiscard]] Status Open(const std::string& path);
  // The same for a file that is only read: also where a foreign program denies writing.
  [[nodiscard]] Status OpenToRead(const std::string& path);
  bool IsOpen() const noexcept;
  // An exclusive lock then keeps others' exclusive ones off, but not their shared ones, where the
  // system wants it so.
  bool IsReadOnly() const noexcept;
  // Of the file behind the handle, which a path may have left meanwhile.
  FileIdentity Identity() const noexcept;

  using LockBytes::Release;
  using LockBytes::TryExclusive;
  [[nodiscard]] bool TryShared(uint64_t byte) noexcept override;
  [[nodiscard]] bool TryExclusive(uint64_t byte, uint64_t count) noexcept override;
  void Release(uint64_t byte, uint64_t count) noexcept override;
  // Whether another process holds the byte, which this one must not.
  bool IsTaken(uint64_t byte) noexcept;

  // Reads from the data file; the number of bytes read.
  size_t ReadAt(uint64_t offset, std::span<uint8_t> out) const noexcept;
  uint64_t Size() const noexcept;

 private:
  struct Handle;
  std::unique_ptr<Handle> handle_;
};

}  // namespace btrieve
