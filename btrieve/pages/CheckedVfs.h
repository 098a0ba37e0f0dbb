// A layer between SQLite and the system's files, for things SQLite does not do by itself:
//
// - every page ends with a checksum, put there before the page is written to the log and verified
//   whenever it is read, from the log or the data file, and before it goes from one into the other.
//   So a damaged page is an error and never wrong data;
// - the log has a head and a mask, from which its real end is told (LogFormat.h);
// - a full disk is told from other failures, whatever failed for it;
// - the counters that SQLite keeps in shared memory beside a log can be looked at without a system
//   call, which tells whether another process has committed anything;
// - a commit whose process dies between writing it to the log and publishing it there can be told
//   from one that never was, so that the living rule it out before they act as if it were not.
#pragma once

#include <sqlite3.h>

#include <array>
#include <cstdint>
#include <span>

namespace btrieve {

inline constexpr size_t kStoragePageSize = 4096;  // bytes of every page of a data file
inline constexpr size_t kPageSumSize = 8;         // of them at the end: the checksum

// Registers the layer under the name "btrieve", once; also starts SQLite. False out of memory.
bool RegisterCheckedVfs() noexcept;

// The checksum of page `number` (from 1); `page` has kStoragePageSize bytes.
uint64_t PageSum(const uint8_t* page, uint64_t number) noexcept;
bool PageIsSound(const uint8_t* page, uint64_t number) noexcept;
// Puts the checksum at the page's end.
void SealPage(uint8_t* page, uint64_t number) noexcept;

// The head of the shared log index: it differs after each commit. Other processes write to it.
inline constexpr size_t kLogHeadWords = 6;
inline constexpr size_t kLogHeadFrames = 2;  // the word with the frames committed, in its low half
inline constexpr size_t kLogHeadSalts = 4;   // the word with the generation's salts
using SharedLogHead = const volatile uint64_t*;

// Where the head of the log index of this connection's main file is mapped; null before the first
// read. The address may change whenever the connection is used.
SharedLogHead LogHeadOf(sqlite3* connection) noexcept;

// A commit stands whole in the log a moment before the index there tells of it. If its process dies
// in between, the living do not see it, and a recovery after the last of them has gone brings it
// back. So a word in shared memory says that a commit is under way. With the write lock held:
// MarkCommit before, UnmarkCommit after a success; a failed commit stays marked, for its frames may
// stand in the log.
void MarkCommit(sqlite3* connection) noexcept;
void UnmarkCommit(sqlite3* connection) noexcept;
// Costs one look at shared memory. Who holds the write lock and finds a mark knows that its commit
// was lost; any commit now writes over it.
bool IsCommitMarked(SharedLogHead head) noexcept;
// Whether nobody holds the write lock at the moment.
bool WriteLockIsFree(sqlite3* connection) noexcept;

// Notes in the log of this connection's main file what of it is on stable storage. Only a help
// should the log ever be damaged: that it cannot be noted is no failure.
struct LogPlace;
void MarkLog(sqlite3* connection, const LogPlace& synced) noexcept;

// Whether the name under which this connection opened its main file leads to it no more. Not told
// where the system keeps open files from being moved.
bool HasMoved(sqlite3* connection) noexcept;
// Brings this connection's log to stable storage, whatever its name is now. False also where it has
// none open.
bool SyncOpenLog(sqlite3* connection) noexcept;

// After a sync that failed the system may take what was not written for written, and the next sync
// succeeds without it. Such a log is doubtful: nothing is carried over from it until it has been
// written once more (LogExam.h) or begun anew.
void DoubtLog(sqlite3* connection, bool doubtful) noexcept;
bool LogIsDoubtful(sqlite3* connection) noexcept;

}  // namespace btrieve
