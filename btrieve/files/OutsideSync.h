// A sync of a file's log that runs outside the session's mutex, so that calls go on meanwhile. The
// thread that syncs and the open file share it: the thread holds nothing else of the file, and who
// closes the file waits for it.
#pragma once

#include <atomic>
#include <chrono>
#include <thread>

#include "btrieve/system/Background.h"

namespace btrieve {

class OutsideSync {
 public:
  // With the session's mutex held; Finish then follows without it.
  void Begin() noexcept { state_ = State::UnderWay; }
  void Finish(bool done) noexcept { state_ = done ? State::Done : State::Failed; }
  // Returns once none is under way. False, once, when the last one failed; also at the end of the
  // process, when the thread has gone in the middle of it.
  [[nodiscard]] bool Await() noexcept {
    // By looking, for a sync takes its milliseconds anyway, and no wake-up can be missed.
    while (state_ == State::UnderWay && !ProcessIsEnding()) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    const State last = state_.exchange(State::Done);
    return last == State::Done;
  }

 private:
  enum class State : int { Done, UnderWay, Failed };
  std::atomic<State> state_{State::Done};
};

}  // namespace btrieve
