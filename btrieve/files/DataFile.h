// One data file of this process: its storage, its locks, and what the client's transaction has
// changed in it. All cursors on the file share it. Reads here are the client's view: its own
// uncommitted changes are seen, those of others are not.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "btrieve/files/OutsideSync.h"
#include "btrieve/files/Overlay.h"
#include "btrieve/files/Walk.h"
#include "btrieve/locks/FileLocks.h"
#include "btrieve/pages/LogWatch.h"
#include "btrieve/storage/Storage.h"

namespace btrieve {

using Clock = std::chrono::steady_clock;

// The bound behind all entries of a value.
inline Entry BehindValue(ByteView value) noexcept {
  Entry bound(value);
  bound.Fill(0xFF, kBehindAll);
  return bound;
}

// What the running transaction holds in one file.
struct Participation {
  bool writes = false;               // exclusive: a write transaction of the storage is open
  bool intent = false;               // the file has the transaction's intent
  std::set<uint32_t> changed;        // exclusive: records written, where the redo needs them
  std::unique_ptr<Overlay> overlay;  // concurrent: the changes
  std::vector<uint32_t> held;        // concurrent: records locked for having been written
  bool ownerHeld = false;            // the byte that says that the intent's owner lives
  bool settlerHeld = false;          // the byte that says that its end is being decided
  uint32_t firstAhead = 0;           // exclusive: the first position put aside for it
  bool present = false;              // concurrent: others' exclusive transactions are kept off
};

class DataFile : public std::enable_shared_from_this<DataFile> {
 public:
  DataFile(std::string path, FileIdentity identity)
      : path_(std::move(path)), logPath_(path_ + "-wal"), identity_(identity) {}
  ~DataFile();
  DataFile(const DataFile&) = delete;
  DataFile& operator=(const DataFile&) = delete;

  const std::string& Path() const noexcept { return path_; }
  const FileIdentity& Identity() const noexcept { return identity_; }
  Storage& Base() noexcept { return base_; }
  const Storage& Base() const noexcept { return base_; }
  FileLocks& Locks() noexcept { return locks_; }
  Participation& Part() noexcept { return part_; }
  const FileSpec& Spec() const noexcept { return base_.Spec(); }
  Index& IndexAt(int slot) noexcept { return base_.Indexes()[slot]; }
  int KeyCount() const noexcept { return static_cast<int>(base_.Indexes().size()); }

  // Null while the client sees the file's own state.
  const Overlay* Uncommitted() const noexcept { return part_.overlay.get(); }
  // For a concurrent transaction to write into; ends all walks.
  Overlay& Changes();

  bool Fetch(uint32_t position, Hit& hit);
  // Files with another home than this one's cannot be changed in one transaction with it.
  const void* Home() const noexcept { return base_.Foreign() ? base_.Foreign()->Home() : nullptr; }
  // The record whose entry is the first of a value; 0 without one.
  uint32_t FindValue(int slot, const Entry& value);
  uint32_t RecordCount() noexcept;
  uint32_t DistinctCount(int slot) noexcept;

  // The value of a record in a key, and its whole entry; empty where the key leaves it out.
  void MakeValue(int slot, const uint8_t* record, Entry& value);
  void MakeEntry(int slot, const Hit& record, Entry& entry);

  // Positions no record has had, for records or for their numbers' sake in a concurrent
  // transaction. Reserve takes at least so many from the file, a block of them, in the write
  // transaction that is open, and commits it; throws 18 when none are left.
  bool HasReserved(uint32_t count) const noexcept { return endReserved_ - nextReserved_ >= count; }
  void Reserve(uint32_t count);
  uint32_t TakeReserved() noexcept { return nextReserved_++; }
  // At the end of the transaction, so that no later duplicate gets an earlier number: within its
  // commit what is left goes back to the file, if nothing has been numbered behind it; then it is
  // forgotten.
  void ReturnReserved() noexcept;
  void ForgetReserved() noexcept;
  // The next position a direct write would give; 0 when none is left.
  uint32_t NextPosition();
  // An exclusive transaction's positions must not be given again should it be undone, so a commit
  // before its own puts numbers aside for it, and its own write transaction begins with the first
  // of them. Both within a write transaction; what is kept elsewhere makes the commit itself,
  // before.
  void PutPositionsAside();
  void TakePositionsAside();

  const std::string& LogPath() const noexcept { return logPath_; }
  // There are commits in the log that are not yet on stable storage.
  void MarkDirty() noexcept { dirty_ = true; }
  // Brings them there, waiting for a sync of this log that is under way elsewhere; false when the
  // system fails.
  [[nodiscard]] bool MakeStable() noexcept;
  // Brings there what any process has committed.
  [[nodiscard]] bool MakeAllStable() noexcept;
  // 2, or 18 where the disk is full: why the last sync failed.
  Status SyncFault() const noexcept { return syncFault_; }
  // For who syncs without holding up other calls: what is dirty is now theirs to sync, and to be
  // told of by Finish. Null when there is nothing. `entryToo` as SyncFile takes it.
  std::shared_ptr<OutsideSync> GiveAwaySync(bool& entryToo) noexcept;
  // Looked at once in a while: what others have committed is taken for dirty when they have been
  // quiet for one look, for they may be dead. True while there is more to look at.
  bool LookAtOthers() noexcept;
  // Once opened: what a dead process has left in the log, whose syncs may have failed, is made
  // stable before anything is put behind it, as far as the system lets it.
  void TakeOverLog(bool alone) noexcept;

  // Between calls, and while one waits: a state that keeps a long log from beginning anew is let
  // go of; the next read begins from a new one.
  void LetGoOfLongLog() noexcept {
    if (base_.HoldsUpLog()) base_.LeaveRead();
  }
  // Whether the file was read since the last look, for letting go of an idle snapshot.
  void Touch() noexcept { touched_ = true; }
  bool TakeTouched() noexcept { return std::exchange(touched_, false); }

  bool openExclusively = false;
  bool openNowhere = false;  // its server was reached anew, and has not let it be opened
  int openCursors = 0;

 private:
  [[nodiscard]] bool SyncLog() noexcept;
  // Waits for a sync outside, and notes what came of it.
  void TakeOutcome() noexcept;

  static constexpr uint32_t kLeastReserved = 8;
  // Lost when a process dies in an exclusive transaction. One that inserts more and dies leaves
  // the rest of its positions to be given again; nobody but its process knew them.
  static constexpr uint32_t kPutAside = 1u << 16;

  std::string path_;
  std::string logPath_;
  FileIdentity identity_;
  FileLocks locks_;  // outlives the storage: its handle must be closed last
  Storage base_;
  Participation part_;
  Walk finder_;
  uint32_t nextReserved_ = 0;
  uint32_t endReserved_ = 0;
  uint32_t reserveNext_ = kLeastReserved;
  uint32_t updatesAtReserve_ = 0;
  bool dirty_ = false;
  std::optional<LogPlace> syncing_;  // what a sync outside, when it is done, has covered
  Status syncFault_ = kIoError;
  bool logEntryIsNew_ = true;
  std::shared_ptr<OutsideSync> outside_ = std::make_shared<OutsideSync>();
  LogWatch watch_;
  bool touched_ = false;
};

}  // namespace btrieve
