// One process's locks on one file. Cursors of a process do not exclude each other, so each record
// is counted here and locked against other processes while anybody in this one holds it.
#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <unordered_map>

#include "btrieve/locks/LockSpace.h"

namespace btrieve {

class FileLocks {
 public:
  // The file of this machine.
  LockSpace& Space() noexcept { return space_; }
  // Where the locks of its records are held: there, too, unless a server holds them.
  LockBytes& Bytes() noexcept { return elsewhere_ ? *elsewhere_ : space_; }
  // What was held before is gone, as when the server has gone.
  void HoldElsewhere(std::unique_ptr<LockBytes> bytes) noexcept;

  // Until the file is closed here nobody opens it to write; those who read it do so together.
  [[nodiscard]] bool KeepWritersOut() noexcept {
    gate_ = HeldByte::Shared(space_, lockbyte::kGate);
    return static_cast<bool>(gate_);
  }

  // The byte that another process would not let this one have when one of the functions below was
  // last refused; 0 since ForgetRefusal, and where nobody keeps the byte for long.
  uint64_t Refused() const noexcept { return refused_; }
  void ForgetRefusal() noexcept { refused_ = 0; }
  // For a byte that was asked for in another way.
  void NoteRefusal(uint64_t byte, bool shared = false) noexcept { (void)Refuse(byte, shared); }
  // See LockBytes.
  LockBytes::Waited AwaitRefused(std::chrono::milliseconds limit) noexcept {
    return refused_ == 0 ? LockBytes::Waited::Elsewhere
                         : Bytes().Await(refused_, refusedShared_, limit);
  }
  // Whether others' wait for the byte lasts for as long as this process goes on as it does: a write
  // or a look of the moment does not count.
  bool KeepsWaiting(uint64_t byte) const noexcept;

  // Says for the length of a scope that a write or a locking read is under way. Empty while another
  // process has the file in an exclusive transaction. Costs nothing while this process has.
  class Activity {
   public:
    explicit Activity(FileLocks& locks) noexcept;
    explicit operator bool() const noexcept { return granted_; }
    void End() noexcept;

    ~Activity() { End(); }
    Activity(const Activity&) = delete;
    Activity& operator=(const Activity&) = delete;

   private:
    FileLocks* counted_ = nullptr;
    bool granted_;
  };

  // Within an Activity. False while another process holds the record.
  [[nodiscard]] bool Hold(uint32_t position);
  void Drop(uint32_t position) noexcept;
  bool Holds(uint32_t position) const noexcept { return records_.contains(position); }
  // The record for the length of a write; nothing to do where this process holds it anyway.
  [[nodiscard]] bool HoldBriefly(uint32_t position, HeldByte& byte) noexcept;

  // Makes exclusive transactions of others wait although no record is held.
  [[nodiscard]] bool AddPresence() noexcept;
  void DropPresence() noexcept;

  // The value of a unique key, until DropClaims. False while another process adds the same one.
  [[nodiscard]] bool Claim(uint64_t hash);
  bool HasClaim(uint64_t hash) const noexcept { return claims_.contains(lockbyte::Claim(hash)); }
  void DropClaim(uint64_t hash) noexcept;
  [[nodiscard]] bool ClaimBriefly(uint64_t hash, HeldByte& byte) noexcept;
  // Every value, where this process claims none. False while another one adds any.
  [[nodiscard]] bool ClaimAllBriefly(HeldByte& bytes) noexcept;
  void DropClaims() noexcept;

  // The whole file for an exclusive transaction: 0, 85 another one has it or a write is under way,
  // 84 others hold records in it.
  [[nodiscard]] Status TakeWhole() noexcept;
  void DropWhole() noexcept;
  bool HasWhole() const noexcept { return whole_; }

 private:
  bool OthersHoldRecords() noexcept;
  // False, noting the byte as refused.
  bool Refuse(uint64_t byte, bool shared = false) noexcept {
    refused_ = byte;
    refusedShared_ = shared;
    return false;
  }

  LockSpace space_;
  std::unique_ptr<LockBytes> elsewhere_;
  HeldByte gate_;
  std::unordered_map<uint32_t, uint32_t> records_;  // with the number of holders
  std::set<uint64_t> claims_;
  uint32_t presence_ = 0;
  uint32_t activities_ = 0;  // one within another
  bool whole_ = false;
  uint64_t refused_ = 0;
  bool refusedShared_ = false;
};

}  // namespace btrieve
