#include "btrieve/legacy/OldFile.h"

#include <algorithm>

#include "btrieve/legacy/Damage.h"

namespace btrieve::legacy {
namespace {

constexpr uint64_t kOnlyVersion = 1;  // nobody writes the records

// Each order is a row of records numbered from 0.
class OldWalk final : public ForeignWalk {
 public:
  OldWalk(OldFile& file, int slot, bool forward, uint32_t next) noexcept
      : file_(file), slot_(slot), forward_(forward), next_(next) {}

  bool Step(Hit& hit) override {
    if (forward_ ? next_ == file_.Total(slot_) : next_ == 0) return false;
    file_.Read(slot_, forward_ ? next_++ : --next_, hit);
    return true;
  }

 private:
  OldFile& file_;
  int slot_;
  bool forward_;
  uint32_t next_;  // rank; backward of the one met last
};

}  // namespace

OldFile::OldFile(std::vector<uint8_t> file, std::vector<std::string>* faults)
    : head_(ReadHead(file, faults)),
      pages_(std::move(file), head_.spec.pageSize),
      slots_(pages_, head_, faults) {
  for (const KeySpec& key : head_.spec.keys) orders_.emplace_back(head_.spec, key);
  ReadKeys(faults);
}

void OldFile::ReadKeys(std::vector<std::string>* faults) {
  std::vector<bool> taken(pages_.Count());
  for (size_t key = 0; key < orders_.size(); ++key) {
    try {
      rows_.push_back(ReadKey(pages_, head_, slots_, key, orders_[key], taken));
    } catch (const Damage& damage) {
      if (!faults) throw;
      faults->push_back(damage.text);
      rows_.emplace_back();
    }
  }
}

const std::vector<uint32_t>& OldFile::RowOf(int slot) const noexcept {
  return slot == kPhysicalSlot ? slots_.Records() : rows_[slot].records;
}

Head OldFile::Counts() {
  Head counts;
  counts.records = static_cast<uint32_t>(Total(kPhysicalSlot));
  for (const auto& key : head_.keys) counts.distinct.push_back(key.values);
  return counts;
}

// Duplicates are numbered by their place in the whole key, which puts them in the chain's order.
void OldFile::MakeEntry(int slot, uint32_t rank, Entry& entry) const noexcept {
  orders_[slot].OrderRecord(pages_.At(rows_[slot].records[rank]), entry.Data());
  entry.SetSize(orders_[slot].OrderedSize());
  if (head_.keys[slot].duplicates) entry.AppendNumber(rank);
}

uint64_t OldFile::RankOf(int slot, ByteView bound) {
  const std::vector<uint32_t>& row = RowOf(slot);
  if (slot == kPhysicalSlot) {
    const auto found = std::lower_bound(row.begin(), row.end(), BoundPosition(bound));
    return static_cast<uint64_t>(found - row.begin());
  }
  uint32_t low = 0;
  for (auto high = static_cast<uint32_t>(row.size()); low < high;) {
    const uint32_t middle = low + (high - low) / 2;
    MakeEntry(slot, middle, entry_);
    if (BytesLess(entry_.View(), bound)) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low;
}

void OldFile::Read(int slot, uint32_t rank, Hit& hit) {
  const uint32_t address = RowOf(slot)[rank];
  entry_.SetSize(0);
  if (slot != kPhysicalSlot) MakeEntry(slot, rank, entry_);
  hit = {address, kOnlyVersion, RecordAt(address), {}, entry_.View()};
}

Entry OldFile::EntryAt(int slot, uint64_t rank) {
  Hit hit;
  Read(slot, static_cast<uint32_t>(rank), hit);
  return slot == kPhysicalSlot ? PositionEntry(hit.position) : Entry(hit.entry);
}

std::unique_ptr<ForeignWalk> OldFile::Walk(int slot, bool forward, ByteView bound) {
  const auto next = static_cast<uint32_t>(RankOf(slot, bound));
  return std::make_unique<OldWalk>(*this, slot, forward, next);
}

bool OldFile::Fetch(uint32_t position, Hit& hit) {
  const uint32_t number = slots_.NumberOf(position);
  if (number == kNone || !slots_.HoldsRecord(number)) return false;
  numbers_ = {};
  for (size_t key = 0; key < rows_.size(); ++key) {
    if (!head_.keys[key].duplicates || rows_[key].records.empty()) continue;
    numbers_.Set(static_cast<uint16_t>(key + 1), rows_[key].ranks[number]);
  }
  hit = {position, kOnlyVersion, RecordAt(position), numbers_.Stored(), {}};
  return true;
}

}  // namespace btrieve::legacy
