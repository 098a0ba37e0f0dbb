// Adding, changing and removing a record with its entries in all keys: first planned, which finds
// what forbids it and changes nothing, then carried out, either in the file (within a write
// transaction of the storage) or in the concurrent transaction's changes.
#pragma once

#include <vector>

#include "btrieve/files/DataFile.h"
#include "btrieve/storage/RowChange.h"

namespace btrieve {

struct WritePlan {
  uint32_t position = 0;
  bool existed = false;
  bool remains = false;
  std::vector<uint8_t> before;  // the record as it was
  OrderNumbers numbers;
  std::vector<KeyChange> keys;  // by slot

  // The record gets an entry in the key that it has not now.
  bool Adds(int slot) const noexcept {
    return remains && keys[slot].after.Size() != 0 && keys[slot].Moves();
  }
};

// The state a transaction leaves a record in.
struct LoggedRecord {
  uint32_t position = 0;
  bool deleted = false;
  ByteView numbers;
  ByteView image;
};

class RecordWriter {
 public:
  // `direct`: into the file, else into the transaction's changes.
  RecordWriter(DataFile& file, bool direct) noexcept : file_(file), direct_(direct) {}

  // `image` must stay until Carry. Whether values are taken is not looked for: see FindTaken, and
  // Carry.
  void PlanInsert(ByteView image, uint32_t position, WritePlan& plan);
  // 5 where the value of a unique key that the plan adds is another record's.
  [[nodiscard]] Status FindTaken(const WritePlan& plan);
  // 10. `old` is copied. Then as with PlanInsert.
  [[nodiscard]] Status PlanUpdate(const Hit& old, ByteView image, WritePlan& plan);
  void PlanDelete(const Hit& old, WritePlan& plan);

  // Carries the plan out; `version` is the record's new one. 5, with nothing changed, for a new
  // record whose value is taken: in the file the keys themselves refuse it, so that nobody need
  // have looked before; in a transaction's changes FindTaken must have been asked.
  // A file that is kept elsewhere refuses changed records, too, and may give 84; see CarryTerms.
  [[nodiscard]] Status Carry(const WritePlan& plan, ByteView image, uint64_t& version,
                             const CarryTerms& terms = {});

  // New records together, planned one behind the other, in a file that is kept elsewhere: all, or
  // with 5 none. `version` is the last one's.
  [[nodiscard]] Status CarryBlock(std::span<const WritePlan> plans,
                                  std::span<const ByteView> images, uint64_t& version,
                                  bool commits = false);

  // Puts records as the log of a transaction has them, whatever stands there now: first Clear for
  // all of them, which takes away the entries that move, then Fill for all. One at a time they
  // could stand in each other's way in a unique key. Fill gives the new version.
  void Clear(const LoggedRecord& record);
  uint64_t Fill(const LoggedRecord& record);

 private:
  void Begin(WritePlan& plan, uint32_t position);
  void TakeBefore(const Hit& old, WritePlan& plan);
  void PlanKey(int slot, ByteView image, WritePlan& plan);
  uint64_t MovedNumber();
  Status CarryElsewhere(const WritePlan& plan, ByteView image, uint64_t& version,
                        const CarryTerms& terms);
  Status CarryNew(const WritePlan& plan, ByteView image, uint64_t& version);
  uint64_t CarryOverlaid(const WritePlan& plan, ByteView image);
  void Adopt(const WritePlan& plan);
  void PlanLogged(const LoggedRecord& record, WritePlan& plan);
  uint64_t CountRow(const WritePlan& plan);
  uint64_t CarryRow(const WritePlan& plan, ByteView image);
  void RemoveEntries(const WritePlan& plan);
  bool AddsUnique(const WritePlan& plan, int slot) const noexcept;
  bool AddUnique(const WritePlan& plan);
  void AddRepeated(const WritePlan& plan);
  void AddEntries(const WritePlan& plan);
  void RemoveEntry(int slot, const Entry& entry);
  bool TryAddEntry(int slot, const Entry& entry, uint32_t position);
  void CountDistinct(int slot, int change);
  bool GroupIsEmpty(int slot, const Entry& entry);

  DataFile& file_;
  bool direct_;
  Overlay::Step* step_ = nullptr;  // of the write under way, unless direct
};

// A number for the value of a unique key that the plan adds, to be locked against other processes.
uint64_t ClaimOf(const Index& index, const Entry& entry) noexcept;

}  // namespace btrieve
