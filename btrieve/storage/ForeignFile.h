// A data file whose records and keys stand elsewhere than in SQLite's trees: in a file that another
// record manager has made, or on a server. Storage answers from it in place of its own tables, so
// that operations, currency, statuses, extended requests and percentages are written once, for all.
//
// What it keeps is what Storage keeps. Records by position, 1..kHighestPosition: bytes, a version
// that each write raises, and the order numbers of entries that an Update has moved. For each key,
// by its slot (its place in FileSpec::keys), one entry for every record that the key does not leave
// out: the ordered value, in a key with duplicates the order number behind it; entries are ordered
// as bytes, none is there twice. In kPhysicalSlot entries are positions (PositionEntry).
//
// Reads see what has been committed. One order read on is read from newer and newer states, each at
// least as new as the last Refresh found; a step always goes to the neighbour, in the state read,
// of what the step before gave.
//
// What can be written has locks of its own, which keep processes that reach it from each other. Its
// write transactions are those of its home: files of one home that are being written at one time
// are committed together, when the last of them is. Who begins one has waited for whoever was
// writing to the file.
//
// Everything throws Failure: 2 for what nobody could have written, 20 once the file cannot be
// reached. Views in a hit stay valid until the next read of the file, and not beyond the walk that
// gave them.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "btrieve/keys/Entry.h"
#include "btrieve/keys/KeySpec.h"
#include "btrieve/locks/LockBytes.h"
#include "btrieve/storage/Head.h"
#include "btrieve/storage/OwnerName.h"
#include "btrieve/storage/RowChange.h"
#include "btrieve/system/Status.h"

namespace btrieve {

struct Hit;
struct ScanDemand;

// Goes through one order.
class ForeignWalk {
 public:
  ForeignWalk() = default;
  virtual ~ForeignWalk() = default;
  ForeignWalk(const ForeignWalk&) = delete;
  ForeignWalk& operator=(const ForeignWalk&) = delete;

  // False at the end, and ever after.
  virtual bool Step(Hit& hit) = 0;
  // The same for an extended read. Records that the demand's request rejects, but not at the end,
  // may be passed over: they are taken off its rejections, of which one is left, so that the reader
  // itself rejects the last; and never the order's last record. The demand tells which came last.
  virtual bool Search(Hit& hit, ScanDemand&) { return Step(hit); }
};

// A write of one record outside of transactions, begun in one step with what it must know.
struct LoneWrite {
  uint32_t position = 0;     // the record to be changed; 0 for new ones
  bool wantsBlocks = false;  // many new ones
  bool recordIsFree = true;  // out: no other process holds it; kept so to the write's end
  bool takesBlocks = false;  // out: no other process adds values, nor can it; as before
};

// How a change is carried out beside the other changes of its transaction.
struct CarryTerms {
  bool commits = false;  // it is the last one: the transaction is committed with it
  // By slot: numbers of the values of unique keys that no other process may be adding; 0: none.
  std::span<const uint64_t> claims;
};

class ForeignFile {
 public:
  ForeignFile() = default;
  virtual ~ForeignFile() = default;
  ForeignFile(const ForeignFile&) = delete;
  ForeignFile& operator=(const ForeignFile&) = delete;

  // As it is when the file is opened; it stays.
  virtual const FileSpec& Spec() const noexcept = 0;
  virtual OwnerRecord Owner() = 0;
  // What order numbers are stored under.
  virtual uint16_t KeyId(size_t slot) const noexcept { return static_cast<uint16_t>(slot + 1); }

  // Before each call's reads: takes notice of what others have committed, without asking for it.
  virtual void Refresh() {}
  // Nothing is known to have been committed since.
  virtual bool IsCurrent() noexcept { return true; }
  // From time to time while nothing is asked for: what has been told of is taken notice of.
  virtual void TakeInNews() noexcept {}
  // It cannot be reached any more; whoever opens it anew reaches it again, or is told why not.
  virtual bool IsLost() const noexcept { return false; }
  // False for a file in whose place another one, or another make-up, has come since it was found.
  virtual bool IsInPlace() { return true; }

  virtual Head Counts() = 0;
  virtual uint64_t Total(int slot) const = 0;
  // How many entries stand below the bound.
  virtual uint64_t RankOf(int slot, ByteView bound) = 0;
  // The entry at `rank`, which is below the total.
  virtual Entry EntryAt(int slot, uint64_t rank) = 0;
  // The record at a position, with the numbers of its entries; false when there is none.
  virtual bool Fetch(uint32_t position, Hit& hit) = 0;
  // Forward: what stands at or above the bound. Backward: below it, from the last one down. The
  // file outlives its walks.
  virtual std::unique_ptr<ForeignWalk> Walk(int slot, bool forward, ByteView bound) = 0;

  // False: none of what follows is called.
  virtual bool IsWritable() const noexcept { return false; }
  // Files with the same home can be written in one transaction.
  virtual const void* Home() const noexcept { return nullptr; }
  // The file's among those of its home.
  virtual int64_t Number() const noexcept { return 0; }
  virtual std::unique_ptr<LockBytes> MakeLocks() { return nullptr; }
  // Whoever reads now has just got a lock: nothing read before it holds.
  virtual void ForgetRead() noexcept {}

  // The newest counters go to `head`. 85, with nothing begun, where a lone write is kept off by
  // another process's exclusive transaction.
  [[nodiscard]] virtual Status BeginWrite(Head& head, LoneWrite* lone);
  // 0; or with nothing changed 5 where the value of a unique key is taken, 84 where another process
  // adds it. `head` are the counters from now on, but for those of different values, which the file
  // counts itself.
  [[nodiscard]] virtual Status Carry(const RowChange& change, const Head& head,
                                     const CarryTerms& terms);
  // In a commit of its own, also while its home's transaction is open, in which the file has not
  // been written to yet: so many positions from the one returned on are not given by anybody else.
  virtual uint32_t PutPositionsAside(uint32_t count);
  // New records, one behind the other, all of them or, with 5, none: then somebody else's record,
  // or one among them, has a value. For a lone write that takes blocks and for exclusive
  // transactions. `head` and `commits` as with Carry.
  [[nodiscard]] virtual Status CarryBlock(std::span<const RowChange> changes, const Head& head,
                                          bool commits);
  // Nothing, where Carry has committed.
  virtual void CommitWrite(const Head& head);
  virtual void RollbackWrite() noexcept {}
  // Within a write transaction. The lowest position that no record has; 0 when all are taken.
  virtual uint32_t FindFreePosition();
  virtual void WriteOwner(const OwnerRecord& owner);
  // A key more, filled from all records, or one less; the transaction's counters are to have room
  // for it. 5 when a unique key meets equal values. Spec and ids are the new ones then, until
  // RollbackWrite.
  [[nodiscard]] virtual Status AddKey(const FileSpec& changed, size_t slot, Head& head);
  virtual void RemoveKey(const FileSpec& changed, size_t slot, Head& head);
};

}  // namespace btrieve
