#include "core/Transactions.h"

#include "core/Gateway.h"
#include "core/ReturnCodes.h"
#include "platform/BtrCall.h"

namespace qrn {
namespace {

constexpr int32_t kLargestBias = 400;
constexpr int32_t kLargestConcurrentBias = 500;

bool IsBias(int32_t bias, int32_t largest) {
  return bias >= 0 && bias <= largest && bias % 100 == 0;
}

Status Call(int32_t operation) {
  return BtrCall(static_cast<uint16_t>(operation), nullptr, nullptr, nullptr, nullptr, 0, 0);
}

}  // namespace

Status DbBeginTransaction(int32_t lockBias) noexcept {
  if (!IsBias(lockBias, kLargestBias)) return kBadLockBias;
  return Call(BtrOpBeginTransaction + lockBias);
}

Status DbBeginConCurTransaction(int32_t lockBias) noexcept {
  if (!IsBias(lockBias, kLargestConcurrentBias)) return kBadLockBias;
  return Call(BtrOpBeginConcurrentTransaction + lockBias);
}

Status DbEndTransaction() noexcept { return Call(BtrOpEndTransaction); }
Status DbAbortTransaction() noexcept { return Call(BtrOpAbortTransaction); }

Status DbSetLockBias(DbEngine& engine, int32_t lockBias) noexcept {
  if (!IsBias(lockBias, kLargestBias)) return kBadLockBias;
  engine.LockBias = static_cast<uint16_t>(lockBias);
  return kSuccess;
}

}  // namespace qrn
