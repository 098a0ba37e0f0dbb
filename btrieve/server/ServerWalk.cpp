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

bool ServerWalk::BatchHolds() const {
  return changes_ == file_.Changes() && Clock::now() < read_ + kOldestAnswer;
}

// One record, for who wants no more; then a batch; then more and more, for who has used it up most
// likely goes on for long.
int64_t ServerWalk::RowsToAsk() {
  if (lastSize_ == 0) return 1;
  const bool wasUsed = next_ == rows_.Count() && asked_ > 1;
  doubled_ = wasUsed ? std::min(doubled_ + 1, kMostDoubled) : 0;
  const size_t room = (kBatchBytes << doubled_) / lastSize_;
  return std::clamp<int64_t>(static_cast<int64_t>(room), 1, kFirstBatch << doubled_);
}

void ServerWalk::ReadOn() {
  asked_ = RowsToAsk();
  changes_ = file_.Changes();
  read_ = Clock::now();
  next_ = 0;
  rows_ = file_.ReadBatch(slot_, forward_, place_.View(), asked_);
  if (rows_.Count() > asked_) ThrowDamaged();
}

void ServerWalk::Pass(const Hit& hit) {
  slot_ == kPhysicalSlot ? onward_.Meet(hit.position) : onward_.Meet(hit.entry);
  place_ = slot_ == kPhysicalSlot ? PositionEntry(hit.position) : Entry(hit.entry);
  if (forward_) place_.MoveBehind();
}

bool ServerWalk::Step(Hit& hit) {
  if (ended_) return false;
  const bool used = next_ == rows_.Count();
  const bool wasLast = used && asked_ > 0 && rows_.Count() < asked_;
  if ((used && !wasLast) || !BatchHolds()) ReadOn();
  if (next_ == rows_.Count()) {
    ended_ = true;
    return false;
  }
  file_.TakeRow(rows_, next_++, slot_, hit);
  Pass(hit);
  lastSize_ = SizeOf(hit);
  return true;
}

}  // namespace btrieve::server
