#include "btrieve/server/ServerWalk.h"

#include <algorithm>

namespace btrieve::server {
namespace {

size_t SizeOf(const Hit& hit) noexcept {
  return hit.data.size() + hit.numbers.size() + hit.entry.size() + 1;
}

}  // namespace

ServerWalk::ServerWalk(ServerFile& file, int slot, bool forward, ByteView bound)
    : file_(file), slot_(slot), forward_(forward), place_(bound) {
  slot == kPhysicalSlot ? onward_.Begin(forward, BoundPosition(bound))
                        : onward_.Begin(forward, bound);
}

bool ServerWalk::BatchHolds(const ScanDemand* demand) const {
  if (changes_ != file_.Changes() || Clock::now() >= read_ + kOldestAnswer) return false;
  if (condition_.empty()) return true;
  return demand && demand->request && BytesEqual(condition_, demand->request->Condition());
}

// Who has used a batch up most likely goes on for long.
int ServerWalk::Grown() const {
  if (next_ != rows_.Count() || asked_ <= 1) return 0;
  const bool inPassing = Clock::now() < read_ + next_ * kInPassing;
  return std::min(grown_ + (inPassing ? kGrowthOfPrograms : kGrowth), kMostGrown);
}

uint32_t ServerWalk::FirstBatch() const noexcept {
  return file_.Spec().IsVariable() ? kFirstOfAnyLength : kFirstBatch;
}

// One record, for who wants no more; then a batch; then more and more. Who tells how many it wants
// gets so many at once.
void ServerWalk::ReadOn(const ScanDemand* demand) {
  grown_ = Grown();
  changes_ = file_.Changes();
  read_ = Clock::now();
  next_ = 0;
  rows_ = {};
  behind_ = Behind::More;
  condition_.clear();
  if (demand) return ReadFor(*demand);
  if (lastSize_ == 0) return ReadRows(1);
  if (grown_ > 0 && file_.Spec().IsVariable()) return ReadFor({nullptr, FirstBatch(), 1});
  ReadRows(
      RowsThatFit(RowsWanted({nullptr, 0, 1}), std::min(kBatchBytes << grown_, kMostBatchBytes)));
}

// What has an end is not read on behind it, and what has records of any length is bounded by their
// bytes there.
void ServerWalk::ReadFor(const ScanDemand& demand) {
  const ScanFilter filter(demand.request, file_.Spec(), kFirstOfCondition);
  const std::optional<Entry> end = demand.request ? demand.request->EndOfMatches() : std::nullopt;
  if (end && IsAtOrBehind(*end)) return ReadRows(1);
  if (filter.LeavesOut() || end || file_.Spec().IsVariable()) {
    return ReadStretch(demand, filter, end);
  }
  ReadRows(RowsThatFit(RowsWanted(demand), kMostBatchBytes));
}

int64_t ServerWalk::RowsWanted(const ScanDemand& demand) const noexcept {
  if (demand.oneByOne) return 1;
  const int64_t least = lastSize_ == 0 ? 1 : FirstBatch();
  return std::min(std::max<int64_t>(demand.wanted, least) << grown_, kMostExamined);
}

int64_t ServerWalk::RowsThatFit(int64_t rows, size_t bytes) const noexcept {
  const size_t size = lastSize_ != 0 ? lastSize_ : file_.Spec().recordLength + size_t{1};
  return std::clamp<int64_t>(static_cast<int64_t>(bytes / size), 1, rows);
}

void ServerWalk::ReadRows(int64_t rows) {
  asked_ = rows;
  isStretch_ = false;
  rows_ = file_.ReadBatch(slot_, forward_, place_.View(), rows);
  if (rows_.Count() > rows) ThrowDamaged();
  behind_ = rows_.Count() < rows ? Behind::Nothing : Behind::More;
}

void ServerWalk::ReadStretch(const ScanDemand& demand, const ScanFilter& filter,
                             const std::optional<Entry>& end) {
  const int64_t period = demand.request ? demand.request->RejectCount() : kSystemRejectCount;
  asked_ = RowsWanted(demand);
  const StretchLimits limits{std::min((period << grown_) + asked_, kMostExamined), asked_,
                             kMostBatchBytes, demand.rejects, period};
  auto [rows, beyond] = file_.ReadStretch(slot_, forward_, place_.View(), end, limits, filter);
  if (rows.Count() > asked_) ThrowDamaged();
  const int last = rows.Count() - 1;
  const bool isAll = last < 0 || (file_.IsLastOfStretch(rows, last, slot_) &&
                                  file_.NumberInStretch(rows, last, slot_) < limits.examined);
  behind_ = !isAll ? Behind::More : end ? Behind::Beyond : Behind::Nothing;
  isStretch_ = true;
  examined_ = 0;
  if (filter.LeavesOut()) {
    const ByteView condition = demand.request->Condition();
    condition_.assign(condition.begin(), condition.end());
  }
  rows_ = std::move(rows);
  beyond_ = std::move(beyond);
}

// Nothing has been left out between what was given last and the record there.
void ServerWalk::TakeBeyond() {
  rows_ = std::move(beyond_);
  next_ = 0;
  asked_ = 1;
  isStretch_ = false;
  condition_.clear();
  behind_ = rows_.Count() == 0 ? Behind::Nothing : Behind::More;
}

bool ServerWalk::IsAtOrBehind(const Entry& end) const noexcept {
  return forward_ ? !BytesLess(place_.View(), end.View()) : !BytesLess(end.View(), place_.View());
}

void ServerWalk::Pass(const Hit& hit) {
  slot_ == kPhysicalSlot ? onward_.Meet(hit.position) : onward_.Meet(hit.entry);
  place_.Assign(slot_ == kPhysicalSlot ? PositionEntry(hit.position).View() : hit.entry);
  if (forward_) place_.MoveBehind();
}

bool ServerWalk::FindRow(const ScanDemand* demand) {
  while (next_ == rows_.Count()) {
    if (behind_ == Behind::Nothing) return false;
    behind_ == Behind::Beyond ? TakeBeyond() : ReadOn(demand);
  }
  return true;
}

// False where the reader's last rejection is among what has been left out before the row: what has
// come was asked for with more rejections left.
bool ServerWalk::PassOver(ScanDemand* demand) {
  if (demand) demand->passed = {};
  if (!isStretch_) return true;
  const int64_t number = file_.NumberInStretch(rows_, next_, slot_);
  const int64_t passed = number - examined_ - 1;
  if (passed < 0) ThrowDamaged();
  if (passed >= (demand ? demand->rejects : 1)) return false;
  examined_ = number;
  if (passed == 0) return true;
  demand->rejects -= static_cast<uint32_t>(passed);
  demand->passed = file_.BeforeInStretch(rows_, next_, slot_);
  return true;
}

bool ServerWalk::Go(Hit& hit, ScanDemand* demand) {
  if (ended_) return false;
  if (!BatchHolds(demand)) ReadOn(demand);
  bool found = FindRow(demand);
  if (found && !PassOver(demand)) {
    ReadOn(demand);
    found = FindRow(demand);
    if (found && !PassOver(demand)) ThrowDamaged();
  }
  ended_ = !found;
  if (ended_) return false;
  file_.TakeRow(rows_, next_++, slot_, hit);
  Pass(hit);
  lastSize_ = SizeOf(hit);
  return true;
}

}  // namespace btrieve::server
