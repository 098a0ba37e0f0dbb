// How long a row waits for what other programs hold.
#pragma once

#include <chrono>
#include <optional>
#include <thread>

#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/Interrupt.h"

namespace qrndata {

inline bool IsHeldElsewhere(Status status) noexcept {
  return status == btrieve::kRecordInUse || status == btrieve::kFileInUse ||
         status == btrieve::kDeadlock;
}

class Patience {
 public:
  explicit Patience(std::chrono::seconds length) : length_(length) {}

  // After a refused attempt: waits a little, and says whether there may be another one. Who
  // interrupts the program waits no longer.
  bool WaitOn() {
    // A record manager need not wait by itself.
    constexpr std::chrono::milliseconds kBetweenAttempts{50};
    if (!since_) since_ = Clock::now();
    if (InterruptWatch::WasInterrupted() || Clock::now() >= *since_ + length_) return false;
    std::this_thread::sleep_for(kBetweenAttempts);
    return true;
  }
  // A row was stored: the next one waits anew.
  void Renew() noexcept { since_.reset(); }

  // Between blocks of rows: who waits for a value or the file gets its turn although the next block
  // begins at once. Others' longest pause between two attempts is shorter than the rest.
  void Rest() {
    constexpr std::chrono::milliseconds kRest{25}, kBetweenRests{500};
    if (length_ == std::chrono::seconds{} || Clock::now() < restedAt_ + kBetweenRests) return;
    std::this_thread::sleep_for(kRest);
    restedAt_ = Clock::now();
  }

 private:
  using Clock = std::chrono::steady_clock;

  std::chrono::seconds length_;
  std::optional<Clock::time_point> since_;
  Clock::time_point restedAt_ = Clock::now();
};

}  // namespace qrndata
