// What the record manager needs of the system's threads and of the end of the process.
#pragma once

namespace btrieve {

// Runs `body` in a thread of its own, which keeps this library loaded until `body` returns. False
// when the system has no thread to give, or no memory.
[[nodiscard]] bool StartThread(void (*body)()) noexcept;

// The process is ending and its other threads are gone: what they held is never let go of.
bool ProcessIsEnding() noexcept;

}  // namespace btrieve
