// Locks between processes: single bytes far beyond the end of a data file, locked through a handle
// of its own. A process that dies lets go of them; natively built and Windows programs exclude each
// other. Within one process nothing is excluded: who holds a byte must not ask for it again.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>

#include "btrieve/system/HostFile.h"
#include "btrieve/system/Status.h"

namespace btrieve {

// The bytes and what holding them means. Data never reaches them: SQLite's files end far below.
namespace lockbyte {
inline constexpr uint64_t kBase = uint64_t{1} << 62;
// Exclusive: the state of the bytes below changes in more than one step: opening, replacing.
// Shared, for as long as it is open: the file is read as it stands, and nobody may write it.
inline constexpr uint64_t kGate = kBase;
// Shared: the process has the file open; exclusive: alone.
inline constexpr uint64_t kOpen = kBase + 1;
// Exclusive: an exclusive transaction uses the file. Shared: a write or a locking read is under
// way.
inline constexpr uint64_t kTransaction = kBase + 2;
// Shared: the process holds record locks or has uncommitted changes of a concurrent transaction.
inline constexpr uint64_t kRecordHolders = kBase + 3;
// Exclusive: one record, by position.
inline constexpr uint64_t kRecords = kBase + (uint64_t{1} << 32);
// Exclusive: the process that ends a transaction over several files, by a number of it.
inline constexpr uint64_t kOwners = kBase + (uint64_t{1} << 33);
// Exclusive: whether that transaction has been is being settled, by its own process at its end or,
// when that has died, by another one. Who gets the byte while the owner's is held finds the
// transaction undecided.
inline constexpr uint64_t kSettlers = kBase + (uint64_t{1} << 34);
// Exclusive: a value of a unique key that is being added, by a hash of 60 bits; or all of them, for
// a write of many records.
inline constexpr uint64_t kClaims = kBase + (uint64_t{1} << 61);
inline constexpr uint64_t kClaimCount = uint64_t{1} << 60;

constexpr uint64_t Record(uint32_t position) { return kRecords + position; }
constexpr uint64_t Owner(uint32_t number) { return kOwners + number; }
constexpr uint64_t Settler(uint32_t number) { return kSettlers + number; }
constexpr uint64_t Claim(uint64_t hash) { return kClaims + (hash & (kClaimCount - 1)); }
}  // namespace lockbyte

class LockSpace {
 public:
  LockSpace();
  ~LockSpace();
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

  // Never wait. False also when the system fails. Several bytes are let go of as they were taken:
  // together.
  [[nodiscard]] bool TryShared(uint64_t byte) noexcept;
  [[nodiscard]] bool TryExclusive(uint64_t byte, uint64_t count = 1) noexcept;
  void Release(uint64_t byte, uint64_t count = 1) noexcept;
  // Whether another process holds the byte, which this one must not.
  bool IsTaken(uint64_t byte) noexcept;

  // Reads from the data file; the number of bytes read.
  size_t ReadAt(uint64_t offset, std::span<uint8_t> out) const noexcept;
  uint64_t Size() const noexcept;

 private:
  struct Handle;
  std::unique_ptr<Handle> handle_;
};

// Holds a byte, or several in a row, until the end of a scope.
class HeldByte {
 public:
  HeldByte() = default;
  HeldByte(LockSpace& space, uint64_t byte, uint64_t count = 1) noexcept
      : space_(&space), byte_(byte), count_(count) {}
  HeldByte(HeldByte&& other) noexcept
      : space_(other.space_), byte_(other.byte_), count_(other.count_) {
    other.space_ = nullptr;
  }
  HeldByte& operator=(HeldByte&& other) noexcept {
    std::swap(space_, other.space_);
    std::swap(byte_, other.byte_);
    std::swap(count_, other.count_);
    return *this;
  }
  ~HeldByte() { Release(); }

  void Release() noexcept {
    if (space_) space_->Release(byte_, count_);
    space_ = nullptr;
  }
  explicit operator bool() const noexcept { return space_ != nullptr; }
  bool Holds(uint64_t byte) const noexcept {
    return space_ && byte >= byte_ && byte - byte_ < count_;
  }

  static HeldByte Shared(LockSpace& space, uint64_t byte) noexcept {
    return space.TryShared(byte) ? HeldByte(space, byte) : HeldByte();
  }
  static HeldByte Exclusive(LockSpace& space, uint64_t byte, uint64_t count = 1) noexcept {
    return space.TryExclusive(byte, count) ? HeldByte(space, byte, count) : HeldByte();
  }

 private:
  LockSpace* space_ = nullptr;
  uint64_t byte_ = 0;
  uint64_t count_ = 1;
};

}  // namespace btrieve
