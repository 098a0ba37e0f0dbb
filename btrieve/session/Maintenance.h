// The thread behind the calls: once in a while it brings commits to stable storage, those of dead
// processes too, and lets go of read states that nobody uses, or that a long log waits for. It
// starts with the first work for it and ends when no file is open; it never keeps one open. What is
// dirty when the process ends in good order is brought to stable storage then.
#pragma once

namespace btrieve {

// There is something to look after; called with the session's mutex held, at every call.
void WakeMaintenance() noexcept;

}  // namespace btrieve
