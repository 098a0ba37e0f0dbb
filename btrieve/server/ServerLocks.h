// The locks of a file on a server: advisory locks of the connection, with two keys of 32 bits: the
// object number of the file's table, and what stands for a byte of a local file:
//
//   a record   its position
//   others     kServerGate and the following, below zero
//   a claim    kServerClaims and 30 bits of its hash; all claims together are not to be had
//
// The server lets go of them when the connection ends.
#pragma once

#include <map>
#include <memory>

#include "btrieve/locks/LockBytes.h"
#include "btrieve/server/ServerLink.h"

namespace btrieve::server {

inline constexpr int32_t kServerGate = -1;
inline constexpr int32_t kServerOpen = -2;
inline constexpr int32_t kServerWhole = -3;
inline constexpr int32_t kServerHolders = -4;
inline constexpr int32_t kServerClaims = INT32_MIN;

constexpr int32_t ServerClaim(uint64_t hash) noexcept {
  return static_cast<int32_t>(kServerClaims + static_cast<int64_t>(hash & 0x3FFFFFFF));
}

class ServerLocks final : public LockBytes {
 public:
  // `object`: as the locks' first key.
  ServerLocks(std::shared_ptr<ServerLink> link, int32_t object)
      : link_(std::move(link)), object_(object) {}
  ~ServerLocks() override;

  using LockBytes::Release;
  using LockBytes::TryExclusive;
  [[nodiscard]] bool TryShared(uint64_t byte) noexcept override;
  [[nodiscard]] bool TryExclusive(uint64_t byte, uint64_t count) noexcept override;
  void Release(uint64_t byte, uint64_t count) noexcept override;
  Waited Await(uint64_t byte, bool shared, std::chrono::milliseconds limit) noexcept override;

 private:
  enum class Kind : uint8_t { Shared, Exclusive };

  bool Try(uint64_t byte, Kind kind) noexcept;
  void Wait(uint64_t byte, Kind kind, std::chrono::milliseconds limit);

  std::shared_ptr<ServerLink> link_;
  int32_t object_;
  std::map<uint64_t, Kind> held_;
};

// The second key of a byte.
int32_t ServerLockKey(uint64_t byte) noexcept;

}  // namespace btrieve::server
