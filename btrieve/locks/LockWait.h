// A process's part in what processes tell each other of their waits, so that those who wait for
// each other in a cycle need not wait their time out. See WaitCycle.h.
#pragma once

#include "btrieve/locks/SharedBoard.h"
#include "btrieve/locks/WaitCycle.h"

namespace btrieve {

// Whoever opens it by this name understands these notes.
inline constexpr BoardShape kWaitBoard{"w64btrv-waits-1", kWaitSeats, sizeof(WaitNote)};

// One wait for another process's lock. Where the system has no memory to share, or all seats are
// taken, no cycle is ever seen. Some 40 KB.
class LockWait {
 public:
  LockWait() noexcept;
  ~LockWait();
  LockWait(const LockWait&) = delete;
  LockWait& operator=(const LockWait&) = delete;

  // Between two attempts to get past `obstacle`, a pause apart. `holds(Obstacle)` tells whether
  // this process has that byte. True when the wait is in a cycle and is the one to give way.
  template <class Holds>
  [[nodiscard]] bool IsToGiveWay(const Obstacle& obstacle, Holds holds) {
    if (!board_ || !ReadNotes()) return false;
    Want(obstacle);
    for (size_t seat = 0; seat < kWaitSeats; ++seat) {
      const WaitNote& other = notes_[seat];
      const bool kept = seat != board_.Seat() && other.number != 0 && holds(other.wanted);
      own_.keepsWaiting[seat] = kept ? other.number : 0;
    }
    return Publish() && ClosesCycle();
  }

 private:
  bool ReadNotes() noexcept;
  void Want(const Obstacle& obstacle) noexcept;
  bool Publish() noexcept;
  bool ClosesCycle() noexcept;

  SharedBoard board_;
  WaitNote own_;
  WaitNotes notes_;  // as they stood at the last look
  WaitCycle suspected_{};
};

}  // namespace btrieve
