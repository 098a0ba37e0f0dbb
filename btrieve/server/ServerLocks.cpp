#include "btrieve/server/ServerLocks.h"

#include <algorithm>

namespace btrieve::server {
namespace {

constexpr char kTryShared[] =
    "SELECT pg_try_advisory_lock_shared($1::bigint::int, $2::bigint::int)";
constexpr char kTryExclusive[] = "SELECT pg_try_advisory_lock($1::bigint::int, $2::bigint::int)";
constexpr char kWaitShared[] = "SELECT pg_advisory_lock_shared($1::bigint::int, $2::bigint::int)";
constexpr char kWait[] = "SELECT pg_advisory_lock($1::bigint::int, $2::bigint::int)";
constexpr char kSetLimit[] = "SELECT set_config('lock_timeout', $1::text, false)";

constexpr char kUnlockShared[] =
    "SELECT pg_advisory_unlock_shared($1::bigint::int, $2::bigint::int)";
constexpr char kUnlock[] = "SELECT pg_advisory_unlock($1::bigint::int, $2::bigint::int)";

std::string UsualLimit() { return std::to_string(kLockLimit.count()); }

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

// What was waited for is given back at once, for whoever asks first. Within a transaction of the
// server's the wait's end must not be the transaction's.
void ServerLocks::Wait(uint64_t byte, Kind kind, std::chrono::milliseconds limit) {
  const bool within = link_->Work().IsOpen();
  const std::string time = std::to_string(std::max<int64_t>(limit.count(), 1));
  const Arguments keys = Arguments().Add(int64_t{object_}).Add(int64_t{ServerLockKey(byte)});
  std::vector<Question> questions;
  if (within) questions.push_back({"SAVEPOINT btrieve_wait", {}});
  questions.push_back({kSetLimit, Arguments().Add(ViewOf(time))});
  questions.push_back({kind == Kind::Shared ? kWaitShared : kWait, keys});
  questions.push_back({kind == Kind::Shared ? kUnlockShared : kUnlock, keys});
  const std::string usual = UsualLimit();
  questions.push_back({kSetLimit, Arguments().Add(ViewOf(usual))});
  if (within) questions.push_back({"RELEASE SAVEPOINT btrieve_wait", {}});
  try {
    link_->AskAll(questions);
  } catch (const Failure&) {
    if (!link_->IsAlive()) throw;
    link_->Run(within ? "ROLLBACK TO SAVEPOINT btrieve_wait; RELEASE SAVEPOINT btrieve_wait"
                      : "SET lock_timeout = " + usual);
    throw;
  }
}

LockBytes::Waited ServerLocks::Await(uint64_t byte, bool shared,
                                     std::chrono::milliseconds limit) noexcept {
  if (!link_->IsAlive() || link_->Work().IsBroken()) return Waited::Over;
  try {
    Wait(byte, shared ? Kind::Shared : Kind::Exclusive, limit);
  } catch (const Failure& failure) {
    if (failure.status == kDeadlock) return Waited::Deadlock;
  } catch (...) {  // the next try tells
  }
  return Waited::Over;
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
