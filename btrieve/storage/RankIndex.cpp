#include "btrieve/storage/RankIndex.h"

#include <algorithm>

#include "btrieve/storage/Layout.h"
#include "btrieve/storage/RowRules.h"

namespace btrieve {
namespace {

constexpr uint32_t kFewInRange = 128;
// Changes of one transaction that are counted in the file before it pays to read all ranges.
constexpr uint32_t kCountedInFile = 4;

}  // namespace

RankIndex::RankIndex(const Connection& connection, uint16_t id, size_t entrySize)
    : id_(id), entrySize_(entrySize) {
  const std::string key = std::to_string(id);
  const std::string table = id == 0 ? "rec" : EntryTable(id);
  const std::string column = id == 0 ? "pos" : "e";
  load_ = connection.Prepare("SELECT low, n FROM range WHERE k=" + key + " ORDER BY low");
  add_ = connection.Prepare("UPDATE range SET n=n+?1 WHERE k=" + key +
                            " AND low=(SELECT max(low) FROM range WHERE k=" + key +
                            " AND low<=?2) RETURNING n");
  update_ = connection.Prepare("UPDATE range SET n=?1 WHERE k=" + key + " AND low=?2");
  insert_ = connection.Prepare("INSERT INTO range(k, low, n) VALUES(" + key + ", ?, ?)");
  remove_ = connection.Prepare("DELETE FROM range WHERE k=" + key + " AND low=?");
  countWithin_ = connection.Prepare("SELECT count(*) FROM (SELECT 1 FROM " + table + " WHERE " +
                                    column + ">=? AND " + column + "<? LIMIT ?)");
  entriesFrom_ = connection.Prepare("SELECT " + column + " FROM " + table + " WHERE " + column +
                                    ">=? ORDER BY " + column + " LIMIT ? OFFSET ?");
}

void RankIndex::Load() {
  if (loaded_) return;
  Forget();
  InUse rows(load_);
  while (rows->Step()) {
    const ByteView low = rows->Bytes(0);
    const int64_t count = rows->Number(1);
    const bool first = ranges_.empty();
    const bool possible = low.size() == (first ? 0 : entrySize_) && count >= 0 &&
                          count <= kHighestPosition &&
                          (first || BytesLess(ViewOf(ranges_.back().low), low));
    if (!possible) ThrowDamaged();
    ranges_.push_back({TextOf(low), static_cast<uint32_t>(count), false});
  }
  if (ranges_.empty()) ThrowDamaged();
  loaded_ = true;
}

// A range to look into. One that holds more than any can, once all has been flushed, would send
// the look on and on.
const RankIndex::Range& RankIndex::Known(size_t range) const {
  if (ranges_[range].count > kMostInRange) ThrowDamaged();
  return ranges_[range];
}

void RankIndex::Forget() noexcept {
  loaded_ = false;
  countedInFile_ = 0;
  ranges_.clear();
  changed_.clear();
  sums_.clear();
}

size_t RankIndex::RangeOf(ByteView entry) const noexcept {
  const auto above = std::upper_bound(
      ranges_.begin(), ranges_.end(), entry,
      [](ByteView bytes, const Range& range) { return BytesLess(bytes, ViewOf(range.low)); });
  return static_cast<size_t>(above - ranges_.begin()) - 1;
}

void RankIndex::Count(ByteView entry, int change) {
  if (!loaded_ && countedInFile_ < kCountedInFile) return CountInFile(entry, change);
  Load();
  const size_t at = RangeOf(entry);
  Range& range = ranges_[at];
  range.count += static_cast<uint32_t>(change);
  sums_.clear();
  if (!range.changed) changed_.push_back(at);
  range.changed = true;
}

void RankIndex::CountInFile(ByteView entry, int change) {
  ++countedInFile_;
  int64_t count = 0;
  {
    InUse add(add_);
    if (!add.Row(int64_t{change}, entry)) ThrowDamaged();
    count = add->Number(0);
    add->Step();
  }
  if (count <= kMostInRange) return;
  Load();
  Settle(RangeOf(entry));
}

void RankIndex::WriteCount(const Range& range) {
  InUse update(update_);
  update.Row(int64_t{range.count}, ViewOf(range.low));
}

void RankIndex::Settle(size_t at) {
  Range& range = ranges_[at];
  range.changed = false;
  if (range.count > kMostInRange) return Split(at);
  const bool mayMerge =
      at > 0 && range.count < kFewInRange && range.count + ranges_[at - 1].count <= kUsualInRange;
  if (!mayMerge) return WriteCount(range);
  ranges_[at - 1].count += range.count;
  WriteCount(ranges_[at - 1]);
  InUse remove(remove_);
  remove.Row(ViewOf(range.low));
  ranges_.erase(ranges_.begin() + static_cast<ptrdiff_t>(at));
  sums_.clear();
}

// From the last to the first, so that the numbers of those still to come stay right.
void RankIndex::Flush() {
  countedInFile_ = 0;
  std::sort(changed_.begin(), changed_.end(), std::greater<>());
  for (const size_t at : changed_) Settle(at);
  changed_.clear();
}

void RankIndex::BindBound(Statement& statement, int place, ByteView bytes) {
  if (id_ == 0) {
    statement.Bind(place, BoundPosition(bytes));
  } else {
    statement.Bind(place, bytes);
  }
}

// The entry in the first column of a row.
Entry RankIndex::EntryIn(InUse& row) const {
  if (id_ == 0) return PositionEntry(CheckedPosition(row->Number(0)));
  CheckEntry(row->Bytes(0), entrySize_);
  return Entry(row->Bytes(0));
}

void RankIndex::Split(size_t at) {
  const uint32_t count = ranges_[at].count;
  std::vector<Range> parts;
  {
    InUse rows(entriesFrom_);
    BindBound(entriesFrom_, 1, ViewOf(ranges_[at].low));
    rows->Bind(2, count);
    rows->Bind(3, 0);
    Onward onward;
    onward.Begin(true, ViewOf(ranges_[at].low));
    for (uint32_t row = 0; row < count; ++row) {
      if (!rows->Step()) ThrowDamaged();
      const Entry entry = EntryIn(rows);
      onward.Meet(entry.View());
      if (row % kUsualInRange != 0 || row == 0) continue;
      parts.push_back({TextOf(entry.View()), std::min(kUsualInRange, count - row), false});
    }
  }
  ranges_[at].count = kUsualInRange;
  WriteCount(ranges_[at]);
  for (const Range& part : parts) {
    InUse insert(insert_);
    insert.Row(ViewOf(part.low), int64_t{part.count});
  }
  ranges_.insert(ranges_.begin() + static_cast<ptrdiff_t>(at) + 1, parts.begin(), parts.end());
  sums_.clear();
}

const std::vector<uint64_t>& RankIndex::Sums() {
  Load();
  if (!sums_.empty()) return sums_;
  uint64_t sum = 0;
  for (const Range& range : ranges_) {
    sums_.push_back(sum);
    sum += range.count;
  }
  sums_.push_back(sum);
  return sums_;
}

uint64_t RankIndex::Total() { return Sums().back(); }

uint32_t RankIndex::CountWithin(const Range& range, ByteView bound) {
  InUse count(countWithin_);
  BindBound(countWithin_, 1, ViewOf(range.low));
  BindBound(countWithin_, 2, bound);
  count->Bind(3, int64_t{range.count} + 1);
  count->Step();
  const auto found = static_cast<uint32_t>(count->Number(0));
  if (found > range.count) ThrowDamaged();
  return found;
}

uint64_t RankIndex::RankOf(ByteView bound) {
  const std::vector<uint64_t>& sums = Sums();
  const size_t at = RangeOf(bound);
  return sums[at] + CountWithin(Known(at), bound);
}

bool RankIndex::EntryAt(uint64_t ordinal, Entry& entry) {
  const std::vector<uint64_t>& sums = Sums();
  if (ordinal >= sums.back()) return false;
  const size_t at =
      static_cast<size_t>(std::upper_bound(sums.begin(), sums.end(), ordinal) - sums.begin()) - 1;
  InUse row(entriesFrom_);
  BindBound(entriesFrom_, 1, ViewOf(Known(at).low));
  row->Bind(2, 1);
  row->Bind(3, static_cast<int64_t>(ordinal - sums[at]));
  if (!row->Step()) ThrowDamaged();
  entry = EntryIn(row);
  return true;
}

}  // namespace btrieve
