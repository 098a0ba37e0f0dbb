// Looks a log through: before SQLite recovers from it, for SQLite takes whatever does not fit for
// the log's end, and when a sync of it has failed.
#pragma once

#include <cstdint>
#include <string>

namespace btrieve {

// False when commits that were acknowledged would be lost in silence: a part known to be on stable
// storage does not hold, or something that was written reads otherwise, and commits depend on it.
// Where the end was never written, as after a kill or a power cut, or was not committed, the log is
// sound. Nobody may be writing to it; it is not changed. A log that is not there is sound. Throws
// Failure when it cannot be read.
[[nodiscard]] bool LogIsSound(const std::string& logPath);

// Writes the log's bytes once more in their places, so that the next sync brings all of them to
// stable storage, whatever an earlier one has failed to bring. False where the system has lost some
// of the first `frames` already. Nobody else may be writing to the log. Throws Failure.
[[nodiscard]] bool WriteLogAgain(const std::string& logPath, uint64_t frames);

}  // namespace btrieve
