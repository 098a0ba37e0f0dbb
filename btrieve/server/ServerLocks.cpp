#include "btrieve/server/ServerLocks.h"

namespace btrieve::server {
namespace {

const std::string kTryShared =
    "SELECT pg_try_advisory_lock_shared($1::bigint::int, $2::bigint::int)";
const std::string kTryExclusive = "SELECT pg_try_advisory_lock($1::bigint::int, $2::bigint::int)";
const std::string kUnlockShared =
    "SELECT pg_advisory_unlock_shared($1::bigint::int, $2::bigint::int)";
const std::string kUnlock = "SELECT pg_advisory_unlock($1::bigint::int, $2::bigint::int)";

}  // namespace

int32_t ServerLockKey(uint64_t byte) noexcept {
  if (byte >= lockbyte::kClaims) return ServerClaim(byte - lockbyte::kClaims);
  if (byte >= lockbyte::kRecords) return static_cast<int32_t>(byte - lockbyte::kRecords);
  return static_cast<int32_t>(kServerGate - static_cast<int64_t>(byte - lockbyte::kGate));
}

// What somebody else may still hold on the connection, as another place's file does, stays.
ServerLocks::~ServerLocks() {
  while (!held_.empty()) Release(held_.begin()->first, 1);
}

bool ServerLocks::Try(uint64_t byte, Kind kind) noexcept {
  try {
    const auto place = held_.emplace(byte, kind);
    if (!place.second) return false;
    const Arguments keys = Arguments().Add(int64_t{object_}).Add(int64_t{ServerLockKey(byte)});
    bool granted = false;
    try {
      granted = link_->Ask(kind == Kind::Shared ? kTryShared : kTryExclusive, keys).Truth(0, 0);
    } catch (const Failure&) {  // the connection's end is told by what follows
    }
    if (!granted) held_.erase(place.first);
    return granted;
  } catch (...) {
    return false;
  }
}

bool ServerLocks::TryShared(uint64_t byte) noexcept { return Try(byte, Kind::Shared); }

bool ServerLocks::TryExclusive(uint64_t byte, uint64_t count) noexcept {
  return count == 1 && Try(byte, Kind::Exclusive);
}

void ServerLocks::Release(uint64_t byte, uint64_t) noexcept {
  const auto found = held_.find(byte);
  if (found == held_.end()) return;
  const Kind kind = found->second;
  held_.erase(found);
  if (!link_->IsAlive()) return;
  try {
    const Arguments keys = Arguments().Add(int64_t{object_}).Add(int64_t{ServerLockKey(byte)});
    link_->Ask(kind == Kind::Shared ? kUnlockShared : kUnlock, keys);
  } catch (...) {  // a lock that stays would keep others waiting for ever
    link_->Abandon();
  }
}

}  // namespace btrieve::server
