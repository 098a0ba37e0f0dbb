// Adding, changing and removing a record with its entries in all keys: first planned, which finds
// what forbids it and changes nothing, then carried out, either in the file (within a write
// transaction of the storage) or in the concurrent transaction's changes.
#pragma once

#include <vector>

#include "btrieve/DataFile.h"

namespace btrieve {

// A record's entries in one key before and after; empty where it has none.
struct KeyChange {
  Entry before;
  Entry after;
  bool Moves() const noexcept { return !(before == after); }
};

struct WritePlan {
  uint32_t position = 0;
  bool existed = false;
  bool remains = false;
  std::vector<uint8_t> before;  // the record as it was
  OrderNumbers numbers;
  std::vector<KeyChange> keys;  // by slot
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

  // 5. `image` must stay until Carry.
  [[nodiscard]] Status PlanInsert(ByteView image, uint32_t position, WritePlan& plan);
  // 10, 5. `old` is copied.
  [[nodiscard]] Status PlanUpdate(const Hit& old, ByteView image, WritePlan& plan);
  void PlanDelete(const Hit& old, WritePlan& plan);

  // Carries the plan out; the record's new version.
  uint64_t Carry(const WritePlan& plan, ByteView image);

  // Puts records as the log of a transaction has them, whatever stands there now: first Clear for
  // all of them, which takes away the entries that move, then Fill for all. One at a time they
  // could stand in each other's way in a unique key. Fill gives the new version.
  void Clear(const LoggedRecord& record);
  uint64_t Fill(const LoggedRecord& record);

 private:
  void Begin(WritePlan& plan, uint32_t position);
  void TakeBefore(const Hit& old, WritePlan& plan);
  Status PlanKey(int slot, ByteView image, WritePlan& plan);
  uint64_t MovedNumber();
  uint64_t CarryDirect(const WritePlan& plan, ByteView image);
  uint64_t CarryOverlaid(const WritePlan& plan, ByteView image);
  void PlanLogged(const LoggedRecord& record, WritePlan& plan);
  uint64_t CarryRow(const WritePlan& plan, ByteView image);
  void RemoveEntries(const WritePlan& plan);
  void AddEntries(const WritePlan& plan);
  void RemoveEntry(int slot, const Entry& entry);
  void AddEntry(int slot, const Entry& entry, uint32_t position);
  void CountDistinct(int slot, int change);
  bool GroupIsEmpty(int slot, const Entry& entry);

  DataFile& file_;
  bool direct_;
};

// A number for the value of a unique key that the plan adds, to be locked against other processes.
uint64_t ClaimOf(const Index& index, const Entry& entry) noexcept;

}  // namespace btrieve
