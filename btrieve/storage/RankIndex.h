// How many entries of an index stand before a given one, and which is the n-th, without walking the
// index. The file keeps for each index a table of ranges with the number of entries in each; a
// range is split when it grows past kMostInRange, so an answer is a sum of counts in memory and one
// count inside a single range.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "btrieve/keys/Entry.h"
#include "btrieve/pages/Sqlite.h"

namespace btrieve {

class RankIndex {
 public:
  static constexpr uint32_t kMostInRange = 1024;
  static constexpr uint32_t kUsualInRange = 512;

  // `id` is the key's, 0 for the physical order, whose entries are positions (PositionEntry).
  // Its entries have `entrySize` bytes. Throws Failure (2) for counts that cannot be.
  RankIndex(const Connection& connection, uint16_t id, size_t entrySize);

  // Called for each entry that is added (+1) or removed (-1), within a write transaction.
  void Count(ByteView entry, int change);
  // Writes what has not been written; before the commit.
  void Flush();
  // What is in memory no longer holds: another process has written, or a transaction was undone.
  void Forget() noexcept;

  uint64_t Total();
  // Entries below `bound`.
  uint64_t RankOf(ByteView bound);
  // Entry number `ordinal` from 0; false when there are not so many.
  bool EntryAt(uint64_t ordinal, Entry& entry);

 private:
  struct Range {
    std::string low;  // its least possible entry
    uint32_t count;
    bool changed;
  };

  void Load();
  void CountInFile(ByteView entry, int change);
  size_t RangeOf(ByteView entry) const noexcept;
  const std::vector<uint64_t>& Sums();
  void Settle(size_t range);
  void Split(size_t range);
  void WriteCount(const Range& range);
  const Range& Known(size_t range) const;
  uint32_t CountWithin(const Range& range, ByteView bound);
  void BindBound(Statement& statement, int place, ByteView bytes);
  Entry EntryIn(InUse& row) const;

  uint16_t id_;
  size_t entrySize_;
  bool loaded_ = false;
  uint32_t countedInFile_ = 0;
  std::vector<Range> ranges_;
  std::vector<size_t> changed_;
  std::vector<uint64_t> sums_;  // entries before each range; empty when out of date
  Statement load_, add_, update_, insert_, remove_, countWithin_, entriesFrom_;
};

}  // namespace btrieve
