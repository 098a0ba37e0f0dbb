#include "btrieve/locks/FileLocks.h"

namespace btrieve {

void FileLocks::HoldElsewhere(std::unique_ptr<LockBytes> bytes) noexcept {
  elsewhere_ = std::move(bytes);
  records_.clear();
  claims_.clear();
  presence_ = activities_ = 0;
  whole_ = false;
  refused_ = 0;
}

FileLocks::Activity::Activity(FileLocks& locks) noexcept : granted_(locks.whole_) {
  if (granted_) return;
  granted_ = locks.activities_ > 0 || locks.Bytes().TryShared(lockbyte::kTransaction) ||
             locks.Refuse(lockbyte::kTransaction, true);
  if (!granted_) return;
  ++locks.activities_;
  counted_ = &locks;
}

void FileLocks::Activity::End() noexcept {
  FileLocks* locks = std::exchange(counted_, nullptr);
  if (locks && --locks->activities_ == 0) locks->Bytes().Release(lockbyte::kTransaction);
}

bool FileLocks::KeepsWaiting(uint64_t byte) const noexcept {
  if (byte == lockbyte::kTransaction) return whole_;
  if (byte == lockbyte::kRecordHolders) return presence_ > 0;
  if (byte >= lockbyte::kClaims) return claims_.contains(byte);
  const bool isRecord = byte >= lockbyte::kRecords && byte < lockbyte::kOwners;
  return isRecord && Holds(static_cast<uint32_t>(byte - lockbyte::kRecords));
}

bool FileLocks::AddPresence() noexcept {
  if (presence_ == 0 && !Bytes().TryShared(lockbyte::kRecordHolders)) return false;
  ++presence_;
  return true;
}

void FileLocks::DropPresence() noexcept {
  if (--presence_ == 0) Bytes().Release(lockbyte::kRecordHolders);
}

bool FileLocks::Hold(uint32_t position) {
  const auto found = records_.find(position);
  if (found != records_.end()) {
    ++found->second;
    return true;
  }
  const uint64_t byte = lockbyte::Record(position);
  if (!Bytes().TryExclusive(byte)) return Refuse(byte);
  if (!AddPresence()) {
    Bytes().Release(byte);
    return false;
  }
  records_.emplace(position, 1);
  return true;
}

void FileLocks::Drop(uint32_t position) noexcept {
  const auto found = records_.find(position);
  if (found == records_.end() || --found->second > 0) return;
  records_.erase(found);
  Bytes().Release(lockbyte::Record(position));
  DropPresence();
}

bool FileLocks::HoldBriefly(uint32_t position, HeldByte& byte) noexcept {
  if (Holds(position)) return true;
  byte = HeldByte::Exclusive(Bytes(), lockbyte::Record(position));
  return byte || Refuse(lockbyte::Record(position));
}

bool FileLocks::Claim(uint64_t hash) {
  const uint64_t byte = lockbyte::Claim(hash);
  if (claims_.contains(byte)) return true;
  if (!Bytes().TryExclusive(byte)) return Refuse(byte);
  claims_.insert(byte);
  return true;
}

bool FileLocks::ClaimBriefly(uint64_t hash, HeldByte& byte) noexcept {
  if (claims_.contains(lockbyte::Claim(hash))) return true;
  byte = HeldByte::Exclusive(Bytes(), lockbyte::Claim(hash));
  return byte || Refuse(lockbyte::Claim(hash));
}

bool FileLocks::ClaimAllBriefly(HeldByte& bytes) noexcept {
  if (!claims_.empty()) return false;
  bytes = HeldByte::Exclusive(Bytes(), lockbyte::kClaims, lockbyte::kClaimCount);
  return static_cast<bool>(bytes);
}

void FileLocks::DropClaim(uint64_t hash) noexcept {
  if (claims_.erase(lockbyte::Claim(hash)) != 0) Bytes().Release(lockbyte::Claim(hash));
}

void FileLocks::DropClaims() noexcept {
  for (const uint64_t byte : claims_) Bytes().Release(byte);
  claims_.clear();
}

// Nobody can take a record while the transaction byte is held, so the own presence may be lifted
// for the look: a system that cannot widen a lock in place would see it as another's.
bool FileLocks::OthersHoldRecords() noexcept {
  if (presence_ > 0) Bytes().Release(lockbyte::kRecordHolders);
  const bool free = Bytes().TryExclusive(lockbyte::kRecordHolders);
  if (free) Bytes().Release(lockbyte::kRecordHolders);
  if (presence_ > 0) (void)Bytes().TryShared(lockbyte::kRecordHolders);
  return !free;
}

Status FileLocks::TakeWhole() noexcept {
  if (whole_) return kOk;
  if (!Bytes().TryExclusive(lockbyte::kTransaction)) {
    Refuse(lockbyte::kTransaction);
    return kFileInUse;
  }
  if (OthersHoldRecords()) {
    Bytes().Release(lockbyte::kTransaction);
    Refuse(lockbyte::kRecordHolders);
    return kRecordInUse;
  }
  whole_ = true;
  return kOk;
}

void FileLocks::DropWhole() noexcept {
  if (whole_) Bytes().Release(lockbyte::kTransaction);
  whole_ = false;
}

}  // namespace btrieve
