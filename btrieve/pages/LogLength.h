// What keeps a file's log short. Pages go from the log into the file while others read and write,
// but the log begins anew only at a commit that finds all of it carried over and nobody reading
// from it. So a state that was read is held from one call to the next only while the log is short,
// and who commits carries the log over once in a while.
#pragma once

#include "btrieve/pages/CheckedVfs.h"

namespace btrieve {

inline constexpr uint32_t kLongLog = 4000;  // pages; about 16 MB

// Two counters of the shared log index.
uint32_t PagesInLog(SharedLogHead head) noexcept;
uint32_t PagesCarriedOver(SharedLogHead head) noexcept;

// Whether a connection's open read state keeps a long log from being carried over or beginning
// anew.
bool HoldsUpLog(sqlite3* connection, SharedLogHead head) noexcept;

// Carries one connection's log into the file.
class LogCarrier {
 public:
  // After a commit, with no transaction open: every kLongLog pages. When the log has become several
  // times as long, others are made to wait for some milliseconds, so that it begins anew. That
  // nothing could be carried over is no failure: the commit stands, and the log is still there.
  void AfterCommit(sqlite3* connection) noexcept;
  // The last one was hindered by others.
  bool IsBehind() const noexcept { return behind_; }
  // Once more, without making anybody wait.
  void TryAgain(sqlite3* connection) noexcept;

 private:
  void Carry(sqlite3* connection, uint32_t pages, int mode) noexcept;

  uint32_t pagesAtLast_ = 0;
  bool behind_ = false;
};

}  // namespace btrieve
