#include <algorithm>
#include <cstring>

#include "btrieve/keys/KeyOrder.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/RecordScan.h"
#include "tools/qrndata/TableChecks.h"

namespace qrndata {

namespace {

// Positions of the records that should be in a key, and of those found there.
class RecordsCheck {
 public:
  RecordsCheck(BtrFile& file, const FileStat& stat, Progress& progress)
      : file_(file), stat_(stat), progress_(progress) {}

  Faults Run();

 private:
  void CountRow() {
    ++rows_;
    progress_.Update(rows_, rows_);
  }
  void StepThrough();
  void WalkKey(size_t slot);
  void CompareWithNeighbour(const btrieve::KeySpec& key, const btrieve::KeyOrder& order,
                            const RecordScan& scan);
  void ComparePositions(const btrieve::KeySpec& key, const std::vector<uint32_t>& expected);
  void Report(const btrieve::KeySpec& key, uint32_t position, Message what);
  void Expect(const std::string& what, uint64_t counted, uint64_t told);

  BtrFile& file_;
  const FileStat& stat_;
  Progress& progress_;
  Faults faults_;
  std::vector<btrieve::KeyOrder> orders_;
  std::vector<std::vector<uint32_t>> expected_;  // by key, ascending
  std::vector<uint32_t> found_;
  Bytes ordered_, previous_;
  uint64_t rows_ = 0, distinct_ = 0;
};

void RecordsCheck::Expect(const std::string& what, uint64_t counted, uint64_t told) {
  if (counted == told) return;
  faults_.push_back(Say(Message::CountedOtherwise, what, Grouped(counted), Grouped(told)));
}

void RecordsCheck::Report(const btrieve::KeySpec& key, uint32_t position, Message what) {
  faults_.push_back(Say(Message::OfKey, key.number, Say(what, position)));
}

void RecordsCheck::StepThrough() {
  uint64_t count = 0;
  for (RecordScan scan(file_, kNoKey); scan.Next(); ++count) {
    CountRow();
    if (scan.Record().size() < stat_.spec.recordLength) {
      faults_.push_back(Say(Message::TooFewBytes, scan.Position(), scan.Record().size()));
      continue;
    }
    for (size_t slot = 0; slot < orders_.size(); ++slot) {
      if (!orders_[slot].LeavesOut(scan.Record().data())) {
        expected_[slot].push_back(scan.Position());
      }
    }
  }
  Expect(Say(Message::RecordCount), count, stat_.records);
  for (std::vector<uint32_t>& positions : expected_) std::sort(positions.begin(), positions.end());
}

void RecordsCheck::CompareWithNeighbour(const btrieve::KeySpec& key, const btrieve::KeyOrder& order,
                                        const RecordScan& scan) {
  order.OrderRecord(scan.Record().data(), ordered_.data());
  const int sign =
      found_.empty() ? 1 : std::memcmp(ordered_.data(), previous_.data(), order.OrderedSize());
  if (sign < 0) Report(key, scan.Position(), Message::WrongPlace);
  if (sign == 0 && !key.AllowsDuplicates()) {
    Report(key, scan.Position(), Message::SameValue);
  }
  if (sign != 0) ++distinct_;
  std::swap(ordered_, previous_);
}

void RecordsCheck::WalkKey(size_t slot) {
  const btrieve::KeySpec& key = stat_.spec.keys[slot];
  found_.clear();
  distinct_ = 0;
  for (RecordScan scan(file_, static_cast<int8_t>(key.number)); scan.Next();) {
    CountRow();
    if (scan.Record().size() < stat_.spec.recordLength) continue;
    CompareWithNeighbour(key, orders_[slot], scan);
    found_.push_back(scan.Position());
    // A key that leads round in a circle has more entries than there are records.
    if (found_.size() > 2 * expected_[slot].size() + 1000) break;
  }
  Expect(Say(Message::DistinctValues, key.number), distinct_, stat_.uniqueValues[slot]);
  ComparePositions(key, expected_[slot]);
}

void RecordsCheck::ComparePositions(const btrieve::KeySpec& key,
                                    const std::vector<uint32_t>& expected) {
  std::sort(found_.begin(), found_.end());
  const auto twice = std::adjacent_find(found_.begin(), found_.end());
  if (twice != found_.end()) Report(key, *twice, Message::InItTwice);
  std::vector<uint32_t> difference;
  std::set_difference(expected.begin(), expected.end(), found_.begin(), found_.end(),
                      std::back_inserter(difference));
  for (const uint32_t position : difference) Report(key, position, Message::NotInIt);
  difference.clear();
  std::set_difference(found_.begin(), found_.end(), expected.begin(), expected.end(),
                      std::back_inserter(difference));
  for (const uint32_t position : difference) {
    Report(key, position, Message::ShouldNotBe);
  }
}

Faults RecordsCheck::Run() {
  for (const btrieve::KeySpec& key : stat_.spec.keys) orders_.emplace_back(stat_.spec, key);
  expected_.resize(orders_.size());
  ordered_.resize(btrieve::kMaxOrderedSize);
  previous_.resize(btrieve::kMaxOrderedSize);
  StepThrough();
  for (size_t slot = 0; slot < orders_.size(); ++slot) WalkKey(slot);
  return std::move(faults_);
}

}  // namespace

Faults CheckRecords(BtrFile& file, const FileStat& stat, Progress& progress) {
  return RecordsCheck(file, stat, progress).Run();
}

}  // namespace qrndata
