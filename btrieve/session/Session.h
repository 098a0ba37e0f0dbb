// This process as a client: its open files, its cursors, its transaction. One call at a time is
// inside.
#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "btrieve/files/DataFile.h"
#include "btrieve/locks/LockWait.h"
#include "btrieve/session/Cursor.h"

namespace btrieve {

struct RedoPart;

// How long a call waits for another process's lock before it gives 84 or 85; or 78, much earlier,
// where processes wait for each other and this one began last.
inline constexpr std::chrono::milliseconds kLockWait{3000};

enum class TransactionKind : uint8_t { None, Exclusive, Concurrent };

struct LockRequest {
  LockKind kind = LockKind::None;
  bool wait = true;
};

struct Transaction {
  TransactionKind kind = TransactionKind::None;
  bool retriesWrites = true;
  LockRequest readLock;                          // for reads that ask for none
  std::vector<std::shared_ptr<DataFile>> files;  // all it has used
  std::vector<std::shared_ptr<DataFile>>
      writers;                  // those it has changed, in the order of the first
  std::vector<uint8_t> number;  // random; names it in files
  Status broken = kOk;          // why a write failed that could not be undone by itself
};

class Session {
 public:
  // Never destroyed: a process may end while others of its threads are inside.
  static Session& Get();

  std::mutex& Mutex() noexcept { return mutex_; }
  CursorTable& Cursors() noexcept { return cursors_; }
  Transaction& Running() noexcept { return transaction_; }
  bool InTransaction() const noexcept { return transaction_.kind != TransactionKind::None; }

  // A file that is open here already; null without one.
  std::shared_ptr<DataFile> FindFile(const FileIdentity& identity);
  // The file for one more cursor, opened if it is not: 11, 12, 30, 2, 35, 84, 85, 86, 88, 94.
  [[nodiscard]] Status UseFile(const std::string& path, bool exclusive,
                               std::shared_ptr<DataFile>& file);
  // Opens a file for this process's own ends (recovery), beside any mode; what it may have to tell
  // other files itself is left alone. 12 for a link to a server, which is not followed.
  [[nodiscard]] Status VisitFile(const std::string& path, std::shared_ptr<DataFile>& file);
  void CloseCursor(void* block);

  // Makes the file's newest state readable; in an exclusive transaction takes the file first
  // (84, 85).
  [[nodiscard]] Status PrepareRead(DataFile& file, bool wait);
  // Takes the file for the running exclusive transaction, without waiting.
  [[nodiscard]] Status Occupy(DataFile& file);
  // Finishes what dead processes have left of transactions over several files, in the newest state,
  // which is then the one read: 0, or 85 while another process settles one or decides its own, so
  // that the file's state tells nothing yet.
  [[nodiscard]] Status SettleIntents(DataFile& file);
  // Whether nothing of the kind is left or under way; looks at the state being read.
  bool IsSettled(DataFile& file);

  void Begin(TransactionKind kind, LockRequest readLock, bool retriesWrites);
  [[nodiscard]] Status End();
  // False when an End that has failed may yet turn out to have been one.
  bool Abort();
  // Aborts, closes every file, brings everything to stable storage.
  void CloseAll();

  // The running transaction's intent in a file that is not its coordinator. First the byte that
  // tells its owner to be alive, then within a write transaction the intent. Throw.
  void TakeOwnerByte(DataFile& file);
  void AddOwnIntent(DataFile& file);
  // The running transaction uses the file, so that its end must look at it.
  void TakePart(DataFile& file, bool writes);

  // Repeats `attempt`, which takes locks of `file`, while it gives 84 or 85, for as long as the
  // wait allows; 78 when it waits in vain.
  template <class Attempt>
  Status Retry(DataFile& file, bool wait, Attempt attempt);
  // The same, without 78, for bytes that nobody keeps while he waits himself: gates, settlers'.
  template <class Attempt>
  Status Retry(bool wait, Attempt attempt);

  // For the background thread.
  std::vector<std::shared_ptr<DataFile>> OpenFiles();
  // Brings commits to stable storage that have waited long enough; from within waits.
  void SyncIfDue() noexcept;
  void NoteCommit(DataFile& file) noexcept;
  // The process is ending: brings everything to stable storage, and from now on each commit at
  // once.
  void SyncFromNowOn() noexcept;
  // No state read outlives this that a long log waits for.
  void LetGoOfLongLogs() noexcept;
  // Releases locks that a cursor or the transaction holds.
  static void ReleaseLocks(Cursor& cursor, bool ofTransactionOnly) noexcept;

 private:
  class Patience;
  template <class Attempt>
  static Status Repeat(Patience& patience, Attempt attempt);

  // These two answer kLookAgain when the file has been replaced, or its use has changed, meanwhile.
  Status PassGate(const std::string& path, std::shared_ptr<DataFile>& file, HeldByte& gate);
  Status OpenOnce(const std::string& path, bool exclusive, std::shared_ptr<DataFile>& file,
                  bool& alone);
  Status OpenFile(const std::string& path, bool exclusive, std::shared_ptr<DataFile>& file,
                  bool& alone);
  Status Reopen(DataFile& file, bool exclusive);
  Status ReachAnew(DataFile& file, bool exclusive);
  Status OpenLink(const std::shared_ptr<DataFile>& found, bool exclusive, HeldByte& gate,
                  std::shared_ptr<DataFile>& file);
  Status DeclareLink(DataFile& file, bool exclusive);
  std::shared_ptr<DataFile> FindSame(const DataFile& linked);
  void Register(const std::shared_ptr<DataFile>& file);
  // Carries on what the file, as a transaction's coordinator, still has to tell other files.
  void FinishRedo(DataFile& file);
  void FinishPart(DataFile& file, const RedoPart& part);
  Status SettleIntent(DataFile& file, const std::vector<uint8_t>& number, const std::string& name);
  void DeclareIntent(DataFile& file);
  void TakeSettlerByte(DataFile& file);
  void Commit();
  bool MakeRoom() noexcept;
  void CommitParts();
  struct Coming;
  void Write(Coming& coming);
  void NoteWritten(Coming& coming);
  void CommitElsewhere();
  bool DecisionIsVoid() noexcept;
  void AbortPart(DataFile& file, bool removeIntent);
  void CommitOne(DataFile& file);
  void ReviseCursors(DataFile& file, uint64_t committedVersion);
  void ReleaseParts() noexcept;
  void SyncAll() noexcept;

  std::mutex mutex_;
  CursorTable cursors_;
  Transaction transaction_;
  std::vector<std::weak_ptr<DataFile>> files_;
  // At the end of a transaction: the commit of its coordinator, or of its one file, has been tried,
  // and it can no longer be undone.
  bool deciding_ = false;
  bool decided_ = false;
  bool anyDirty_ = false;
  bool syncsEach_ = false;
  Clock::time_point dirtySince_;
};

// Pauses between attempts, longer and longer. Even a call that must not wait lets a few
// milliseconds pass: another process's single write holds its locks for less than that.
class Session::Patience {
 public:
  // For a lock of `file`; null: for what nobody keeps while he waits himself.
  Patience(Session& session, DataFile* file, bool wait) noexcept;
  // 0 to try again; `refusal` when the time is up, 78.
  Status Pause(Status refusal);

 private:
  Status AwaitElsewhere();
  bool IsDeadlocked();

  Session& session_;
  DataFile* file_;
  bool wait_;
  Clock::time_point begin_;
  Clock::time_point end_;
  std::chrono::milliseconds next_{1};
  std::unique_ptr<LockWait> others_;  // once it has lasted longer than a single write
};

// What an attempt gives to be repeated at once: it has met a change and must look anew.
inline constexpr Status kLookAgain = -1;

template <class Attempt>
Status Session::Repeat(Patience& patience, Attempt attempt) {
  while (true) {
    const Status status = attempt();
    if (status == kLookAgain) continue;
    if (status != kRecordInUse && status != kFileInUse) return status;
    if (const Status end = patience.Pause(status)) return end;
  }
}

template <class Attempt>
Status Session::Retry(DataFile& file, bool wait, Attempt attempt) {
  Patience patience(*this, &file, wait);
  return Repeat(patience, attempt);
}

template <class Attempt>
Status Session::Retry(bool wait, Attempt attempt) {
  Patience patience(*this, nullptr, wait);
  return Repeat(patience, attempt);
}

}  // namespace btrieve
