// The thread behind the calls: once in a while it brings commits to stable storage and lets go of
// read states that nobody uses, which would keep the log from being emptied. It starts with the
// first work for it and ends when no file is open.
#pragma once

namespace btrieve {

// There is something to look after; called with the session's mutex held, at every call.
void WakeMaintenance() noexcept;

}  // namespace btrieve
