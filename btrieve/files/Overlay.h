// What a concurrent transaction has changed in one file, kept in memory until its end: for every
// record it has touched the state the client sees, and that record's entries in every key. Other
// clients go on reading and writing the file meanwhile; the records in here are locked to them.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "btrieve/keys/Entry.h"
#include "btrieve/storage/OrderNumbers.h"

namespace btrieve {

// Versions given within a transaction; real ones stay below until the end gives them out.
inline constexpr uint64_t kFirstOverlayVersion = uint64_t{1} << 62;

struct OverlayRecord {
  bool inBase = false;  // the file has a record of this position
  bool deleted = false;
  uint64_t version = 0;
  std::vector<uint8_t> data;
  OrderNumbers numbers;
};

class Overlay {
 public:
  using Bytes = std::vector<uint8_t>;
  struct Less {
    using is_transparent = void;
    bool operator()(ByteView a, ByteView b) const noexcept { return BytesLess(a, b); }
  };
  using Entries = std::map<Bytes, uint32_t, Less>;
  using Records = std::map<uint32_t, OverlayRecord>;

  explicit Overlay(size_t keys) : added_(keys), hidden_(keys), distinctChange_(keys) {}

  // Null for a record the transaction has not touched: the file's own state holds.
  const OverlayRecord* Find(uint32_t position) const noexcept;
  bool IsEmpty() const noexcept { return records_.empty(); }
  const Records& All() const noexcept { return records_; }
  // Entries of touched records: as they are now, and as the file has them.
  const Entries& Added(int slot) const noexcept { return added_[slot]; }
  const std::set<Bytes, Less>& Hidden(int slot) const noexcept { return hidden_[slot]; }

  // Changes against the file's own counts.
  int64_t RecordChange() const noexcept { return recordChange_; }
  int64_t DistinctChange(int slot) const noexcept { return distinctChange_[slot]; }
  uint64_t NextVersion() noexcept { return nextVersion_++; }

  class Step;

 private:
  Records records_;
  std::vector<Entries> added_;
  std::vector<std::set<Bytes, Less>> hidden_;
  int64_t recordChange_ = 0;
  std::vector<int64_t> distinctChange_;
  uint64_t nextVersion_ = kFirstOverlayVersion;
};

// One write to the changes. Should it end half way, for want of memory or of what must be read,
// nothing of it is there: what is not kept is taken back, for which no memory is needed.
class Overlay::Step {
 public:
  explicit Step(Overlay& changes);
  ~Step();
  Step(const Step&) = delete;
  Step& operator=(const Step&) = delete;

  // Takes a record of the file in before its first change. `entries` holds its entry of each key,
  // empty where the key leaves it out.
  void Adopt(uint32_t position, const std::vector<Entry>& entries);
  // What a record is from now on.
  void Put(uint32_t position, OverlayRecord&& record);
  void AddEntry(int slot, const Entry& entry, uint32_t position);
  void RemoveEntry(int slot, const Entry& entry) noexcept;
  void CountRecords(int change) noexcept { changes_.recordChange_ += change; }
  void CountDistinct(int slot, int change) noexcept { changes_.distinctChange_[slot] += change; }
  void Keep() noexcept { kept_ = true; }

 private:
  struct AddedEntry {
    int slot;
    Entries::iterator at;
  };
  struct RemovedEntry {
    int slot;
    Entries::node_type entry;
  };
  struct HiddenEntry {
    int slot;
    std::set<Bytes, Less>::iterator at;
  };

  Overlay& changes_;
  bool kept_ = false;
  std::vector<AddedEntry> added_;
  std::vector<RemovedEntry> removed_;
  std::vector<HiddenEntry> hidden_;
  Records::node_type replaced_;
  Records::iterator put_;
  int64_t recordChange_;
  std::vector<int64_t> distinctChange_;
};

}  // namespace btrieve
