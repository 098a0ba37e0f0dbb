// One data file as SQLite keeps it: the record table, one table of entries for each key, counters,
// and the statements on them. It knows what has been committed (and this process's open write
// transaction), nothing of locks, cursors or uncommitted changes kept elsewhere.
//
// A file that is kept elsewhere stands behind the same functions (ForeignFile): everything that
// reads works on both and asks Foreign() nowhere but where counting differs.
//
// Everything here throws Failure when the storage fails.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "btrieve/keys/Entry.h"
#include "btrieve/keys/KeyOrder.h"
#include "btrieve/keys/KeySpec.h"
#include "btrieve/pages/CheckedVfs.h"
#include "btrieve/pages/LogFormat.h"
#include "btrieve/pages/LogLength.h"
#include "btrieve/pages/Sqlite.h"
#include "btrieve/storage/EntryTree.h"
#include "btrieve/storage/ForeignFile.h"
#include "btrieve/storage/Head.h"
#include "btrieve/storage/OrderNumbers.h"
#include "btrieve/storage/OwnerName.h"
#include "btrieve/storage/RankIndex.h"
#include "btrieve/storage/RecordRows.h"
#include "btrieve/storage/Tree.h"

namespace btrieve {

class BaseWalk;

// The slot of the physical order, where a slot names a key by its place in FileSpec::keys.
inline constexpr int kPhysicalSlot = -1;

// One key of an open file.
struct Index {
  Index(const FileSpec& file, const KeySpec& key, uint16_t keyId);

  uint8_t number;  // what callers pass
  uint16_t id;     // names its table; never used again in this file
  bool duplicates;
  bool modifiable;
  bool autoIncrement;
  KeyOrder order;
  uint32_t root = 0;  // the first page of its table
  EntryTree entries;
  Statement remove;
  std::unique_ptr<RankIndex> ranks;

  // The value of an entry.
  ByteView ValueOf(const Entry& entry) const noexcept {
    return entry.View().first(order.OrderedSize());
  }
  size_t EntrySize() const noexcept {
    return order.OrderedSize() + (duplicates ? kOrderNumberSize : 0);
  }
};

class Storage {
 public:
  Storage() = default;
  ~Storage();
  Storage(const Storage&) = delete;
  Storage& operator=(const Storage&) = delete;

  // Makes an empty data file at `path`, where none may be; it is closed again on return.
  static void Create(const std::string& path, const FileSpec& spec);
  // True for the first bytes of a file that Create could have made.
  static bool IsDataFile(ByteView start) noexcept;
  static constexpr size_t kStartSize = 100;

  // How a file is opened: to be written; to be read beside its log, which others may write; or as
  // it stands, without a log, when nobody can change it.
  enum class Access : uint8_t { Write, Read, Unchanging };
  void Open(const std::string& path, Access access = Access::Write);
  // What is kept elsewhere, instead; it is only read.
  void OpenForeign(std::unique_ptr<ForeignFile> file);
  void Close() noexcept;
  bool IsReadOnly() const noexcept { return access_ != Access::Write; }
  // It is kept elsewhere and cannot be reached any more.
  bool IsLost() const noexcept { return foreign_ && foreign_->IsLost(); }
  // Null for a file of our own.
  ForeignFile* Foreign() const noexcept { return foreign_.get(); }

  const FileSpec& Spec() const noexcept { return spec_; }
  // The slot of a key by the number callers pass; -1 without one.
  int SlotOf(int keyNumber) const noexcept {
    return keyNumber >= 0 && keyNumber <= kHighestKeyNumber ? slots_[keyNumber] : -1;
  }
  std::vector<Index>& Indexes() noexcept { return indexes_; }
  // For the next key that comes; 0xFFFF when none is left.
  uint16_t NextKeyId() const noexcept { return nextKeyId_; }
  const std::vector<Index>& Indexes() const noexcept { return indexes_; }
  Head& Counts() noexcept { return head_; }
  // For who is about to tell them: those of a file that is kept elsewhere are only asked for here.
  void RenewCounts() {
    if (foreign_) head_ = foreign_->Counts();
  }
  const Connection& Link() const noexcept { return connection_; }
  uint32_t RecordRoot() const noexcept { return recordRoot_; }
  // The records' tree, standing wherever the last one looked there. Closed when walks end.
  TreeCursor& Records();
  RankIndex& PhysicalRanks() noexcept { return *physicalRanks_; }
  RankIndex& Ranks(int slot) { return slot < 0 ? *physicalRanks_ : *indexes_[slot].ranks; }

  // Reads see the newest committed state from here on; nothing is done while that has not changed.
  // A commit that its dying process has not published is ruled out on the way, where that can be
  // done: it is not seen later either.
  void EnterRead();
  // The same for who is about to act upon the file's state in another file: throws where it cannot
  // be done.
  void RuleOutLostCommit();
  // Lets go of the state read, and ends all walks.
  void LeaveRead() noexcept;
  // What has been committed, and, once it is on stable storage, that it is.
  LogPlace CommittedPlace() const noexcept;
  void NoteSynced(const LogPlace& synced) noexcept { MarkLog(connection_.Get(), synced); }
  // The file is not where it was opened, and its log neither; and what brings the log to stable
  // storage then.
  bool HasMoved() const noexcept { return btrieve::HasMoved(connection_.Get()); }
  [[nodiscard]] bool SyncOpenLog() const noexcept {
    return btrieve::SyncOpenLog(connection_.Get());
  }
  // A sync of the log has failed. What it was to bring is not brought by the next one, unless
  // RenewLog has written it once more: false where that cannot be done.
  void DoubtLog() noexcept { btrieve::DoubtLog(connection_.Get(), true); }
  [[nodiscard]] bool RenewLog(const std::string& logPath) noexcept;
  // Moves what the log holds into the file and empties it, for the room that makes. False when it
  // cannot be done, as within a write transaction.
  bool CarryLogOver() noexcept;
  bool IsReading() const noexcept { return snapshot_ || foreign_; }
  // The state read keeps a long log from beginning anew: between calls it is not worth that.
  bool HoldsUpLog() const noexcept {
    return snapshot_ && btrieve::HoldsUpLog(connection_.Get(), logHead_);
  }
  // For after commits, with no transaction open.
  LogCarrier& Carrier() noexcept { return carrier_; }
  // For a file that nobody reads for some time.
  void Rest() noexcept {
    LeaveRead();
    pages_.Release();
  }
  // Nothing has been committed since the state being read, nor is a commit under way: one whose
  // process has died in the midst of publishing it may yet come to be seen.
  bool IsCurrent() const noexcept {
    if (foreign_) return writing_ || foreign_->IsCurrent();
    return writing_ || (snapshot_ && !IsMarked() && NothingCommittedSince());
  }

  // One write transaction at a time; reads are part of it. It begins from the newest state, behind
  // which no lost commit stands in the log.
  void BeginWrite();
  // The same for one record's write in a file that is kept elsewhere. 85 as ForeignFile tells.
  [[nodiscard]] Status BeginLoneWrite(LoneWrite& lone);
  // There as RecordWriter carries it; `head` is to hold the counters.
  [[nodiscard]] Status CarryElsewhere(const RowChange& change, const CarryTerms& terms);
  [[nodiscard]] Status CarryBlockElsewhere(std::span<const RowChange> changes, bool commits);
  void CommitWrite();
  void RollbackWrite() noexcept;
  bool IsWriting() const noexcept { return writing_; }
  // Ends all walks and lets all pages go; to be called before rows change.
  void EndWalks() noexcept;
  // A walk that holds pages from now on. Of too many, the one that began first ends.
  void AddWalk(BaseWalk& walk);
  void RemoveWalk(BaseWalk& walk) noexcept;

  // A record is still what it was when it was read, as far as a lock that was got since keeps it
  // so.
  bool IsStill(uint32_t position, uint64_t version);

  // False when there is none.
  bool Fetch(uint32_t position, Hit& hit);
  bool FindRow(uint32_t position, ByteView& row);
  // The position of the first entry at or above `from` and below `to`; 0 without one.
  uint32_t FindEntry(int slot, const Entry& from, const Entry& to);

  // Within a write transaction: the position to be given next.
  void SetNextPosition(uint32_t position) noexcept {
    wrote_ = true;
    head_.nextPosition = position;
  }
  // Within a write transaction: rows of intents have come or gone.
  void ChangeIntents(int by) noexcept {
    wrote_ = true;
    head_.intents += static_cast<uint32_t>(by);
  }
  // Rows alone; counters and order are the caller's care.
  void InsertRow(uint32_t position, uint64_t version, ByteView numbers, ByteView data);
  void UpdateRow(uint32_t position, uint64_t version, ByteView numbers, ByteView data);
  void DeleteRow(uint32_t position);
  [[nodiscard]] EntryTree::Added InsertEntry(int slot, const Entry& entry, uint32_t position);
  void DeleteEntry(int slot, const Entry& entry);
  // The lowest position that no record has; 0 when all are taken.
  uint32_t FindFreePosition();

  // Within a write transaction. AddIndex builds it over all records: 5 when a unique key meets
  // equal values, 26 when the file has had as many keys as it can number; the transaction is then
  // to be rolled back.
  [[nodiscard]] Status AddIndex(const FileSpec& changed, uint8_t number);
  void RemoveIndex(const FileSpec& changed, uint8_t number);
  OwnerRecord ReadOwner();
  void WriteOwner(const OwnerRecord& owner);

 private:
  static constexpr size_t kMostWalks = 16;  // each holds some five pages

  bool IsMarked() const noexcept { return logHead_ && IsCommitMarked(logHead_); }
  Status BeginElsewhere(LoneWrite* lone);
  void TryRuleOutLostCommit() noexcept;
  void TakeWriteLock();
  void WriteOverLostCommit();
  void Prepare();
  void PrepareIndex(Index& index);
  uint32_t RootOf(const std::string& table);
  void CheckTables();
  void LoadSpecification();
  void TakeForeignSpecification();
  Status AddIndexElsewhere(const FileSpec& changed, size_t slot);
  void StoreSpecification();
  void LoadHead();
  void ForgetCaches() noexcept;
  void NumberSlots() noexcept;
  void RestoreSpecification() noexcept;
  void TryCommit();
  void RestoreHead() noexcept;
  bool NothingCommittedSince() const noexcept;
  void RememberLogHead() noexcept;
  void FlushCounts();
  void BuildIndex(Index& index, size_t slot);

  Connection connection_;
  std::unique_ptr<ForeignFile> foreign_;  // with it there is no connection
  Access access_ = Access::Write;
  FileSpec spec_;
  std::vector<Index> indexes_;
  std::array<int8_t, kHighestKeyNumber + 1> slots_{};
  std::unique_ptr<RankIndex> physicalRanks_;
  Head head_;
  std::vector<uint8_t> knownHead_;  // as committed
  SharedLogHead logHead_ = nullptr;
  std::array<uint64_t, kLogHeadWords> knownLog_{};
  bool snapshot_ = false;
  bool writing_ = false;
  bool wrote_ = false;        // rows, in this write transaction
  bool respecified_ = false;  // keys came or went in it
  uint16_t nextKeyId_ = 1;
  uint32_t recordRoot_ = 0;
  PagePool pages_;
  TreeCursor records_;
  LogCarrier carrier_;

  Statement begin_, beginWrite_, commit_, rollback_;
  Statement readHead_, writeHead_;
  Statement insertRow_, updateRow_, deleteRow_;
  std::vector<BaseWalk*> walks_;  // those that hold pages, the oldest first
};

}  // namespace btrieve
