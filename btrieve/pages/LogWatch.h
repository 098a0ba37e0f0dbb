// Tells whether others have committed to a file since its log was last known to be stable.
#pragma once

#include "btrieve/pages/CheckedVfs.h"

namespace btrieve {

class LogWatch {
 public:
  enum class Seen : uint8_t { Nothing, Changing, Quiet };

  // What stands in the log now will be stable, whoever wrote it.
  void NoteStable(SharedLogHead head) noexcept { stable_ = seen_ = CopyOf(head); }
  // Changing: something has come since the last look; Quiet: not since then, but it is not known to
  // be stable.
  Seen Look(SharedLogHead head) noexcept {
    const LogHead now = CopyOf(head);
    if (now == stable_) return Seen::Nothing;
    const bool changing = now != seen_;
    seen_ = now;
    return changing ? Seen::Changing : Seen::Quiet;
  }

 private:
  using LogHead = std::array<uint64_t, kLogHeadWords>;

  static LogHead CopyOf(SharedLogHead head) noexcept {
    LogHead copy{};
    for (size_t word = 0; head && word < copy.size(); ++word) copy[word] = head[word];
    return copy;
  }

  LogHead stable_{};
  LogHead seen_{};
};

}  // namespace btrieve
