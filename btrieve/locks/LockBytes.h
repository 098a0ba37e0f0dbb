// Locks between processes on single bytes of a data file's lock range: who holds which, until it
// lets go or dies. Within one process nothing is excluded: who holds a byte must not ask for it
// again.
#pragma once

#include <chrono>
#include <cstdint>
#include <utility>

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

// Where the bytes are held: by this machine's system, or by a server.
class LockBytes {
 public:
  LockBytes() = default;
  LockBytes(LockBytes&&) noexcept = default;
  LockBytes& operator=(LockBytes&&) noexcept = default;
  virtual ~LockBytes() = default;

  // Never wait. False also when the system fails. Several bytes are let go of as they were taken:
  // together.
  [[nodiscard]] virtual bool TryShared(uint64_t byte) noexcept = 0;
  [[nodiscard]] virtual bool TryExclusive(uint64_t byte, uint64_t count) noexcept = 0;
  [[nodiscard]] bool TryExclusive(uint64_t byte) noexcept { return TryExclusive(byte, 1); }
  virtual void Release(uint64_t byte, uint64_t count) noexcept = 0;

  // For who was refused a byte: returns when it could have been had, in which case the next try may
  // get it, or the time is up, or the wait is in a cycle of waits and is the one to give way.
  // Elsewhere than at a server nobody waits in this way.
  enum class Waited : uint8_t { Elsewhere, Over, Deadlock };
  virtual Waited Await(uint64_t, bool /*shared*/, std::chrono::milliseconds) noexcept {
    return Waited::Elsewhere;
  }
  void Release(uint64_t byte) noexcept { Release(byte, 1); }
};

// Holds a byte, or several in a row, until the end of a scope.
class HeldByte {
 public:
  HeldByte() = default;
  HeldByte(LockBytes& space, uint64_t byte, uint64_t count = 1) noexcept
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

  static HeldByte Shared(LockBytes& space, uint64_t byte) noexcept {
    return space.TryShared(byte) ? HeldByte(space, byte) : HeldByte();
  }
  static HeldByte Exclusive(LockBytes& space, uint64_t byte, uint64_t count = 1) noexcept {
    return space.TryExclusive(byte, count) ? HeldByte(space, byte, count) : HeldByte();
  }

 private:
  LockBytes* space_ = nullptr;
  uint64_t byte_ = 0;
  uint64_t count_ = 1;
};

}  // namespace btrieve
