#include "btrieve/storage/BaseWalk.h"

#include <algorithm>
#include <utility>

namespace btrieve {

void BaseWalk::Enter(Storage& storage, int slot) {
  if (storage_ == &storage && slot_ == slot) return;
  End();
  const bool along = slot != kPhysicalSlot;
  storage.AddWalk(*this);
  storage_ = &storage;
  rows_.Forget();
  slot_ = slot;
  try {
    tree_.Open(storage.Link().Get(), along ? TreeCursor::Kind::Entries : TreeCursor::Kind::Rows,
               along ? storage.Indexes()[slot].root : storage.RecordRoot());
  } catch (...) {  // a damaged root is held by then
    End();
    throw;
  }
}

void BaseWalk::StartForeign(Storage& storage, int slot, bool forward, ByteView bound) {
  End();
  std::unique_ptr<ForeignWalk> walk = storage.Foreign()->Walk(slot, forward, bound);
  storage.AddWalk(*this);
  home_ = &storage;
  foreign_ = std::move(walk);
  slot_ = slot;
  forward_ = forward;
}

void BaseWalk::Start(Storage& storage, int slot, bool forward, ByteView bound) {
  if (storage.Foreign()) return StartForeign(storage, slot, forward, bound);
  Enter(storage, slot);
  forward_ = forward;
  ahead_ = Ahead::None;
  next_ = end_ = 0;
  together_ = 1;
  failed_.reset();
  bool found;
  if (slot == kPhysicalSlot) {
    onward_.Begin(forward, BoundPosition(bound));
    found = tree_.SeekRow(BoundPosition(bound));
  } else {
    onward_.Begin(forward, bound);
    found = tree_.SeekEntry(bound);
  }
  ahead_ = !forward ? Ahead::Further : found ? Ahead::First : Ahead::None;
}

bool BaseWalk::Move() {
  if (ahead_ == Ahead::Further) {
    if (!(forward_ ? tree_.Next() : tree_.Previous())) ahead_ = Ahead::None;
  } else if (ahead_ == Ahead::First) {
    ahead_ = Ahead::Further;
  }
  return ahead_ != Ahead::None;
}

void BaseWalk::TakeComing() {
  Coming& coming = coming_[end_];
  RowReader entry(tree_.Payload());
  coming.entry = entry.TakeBytes();
  coming.position = CheckedPosition(entry.TakeNumber());
  CheckEntry(coming.entry, storage_->Indexes()[slot_].EntrySize());
  onward_.Meet(coming.entry);
  ++end_;
  coming.spot = {};
  if (together_ != 1) coming.spot = storage_->Records().Guess(coming.position);
}

// False at the end. Entries stay readable while the tree's cursor stays in their page. A search for
// one record looks no further than that; damage further on is told when it is come to.
bool BaseWalk::LookAhead() {
  if (failed_) throw *failed_;
  next_ = end_ = 0;
  try {
    do {
      if (!Move()) break;
      TakeComing();
    } while (end_ < together_ && tree_.StaysInPage(forward_));
  } catch (...) {
    if (end_ == 0) throw;
    failed_ = Failure{CaughtStatus()};
  }
  for (size_t at = 0; at < end_; ++at) storage_->Records().Prefetch(coming_[at].spot);
  together_ = std::min(4 * together_, kTogether);
  return end_ != 0;
}

ByteView BaseWalk::RecordOf(const Coming& coming) {
  ByteView row;
  const bool found = storage_->Records().TakeSpot(coming.spot, coming.position, row) ||
                     storage_->FindRow(coming.position, row);
  if (!found) ThrowDamaged();
  return row;
}

bool BaseWalk::StepAlong(Hit& hit) {
  if (next_ == end_ && !LookAhead()) return false;
  const Coming& coming = coming_[next_++];
  hit.entry = coming.entry;
  hit.position = coming.position;
  rows_.Take(storage_->Spec(), RecordOf(coming), hit);
  return true;
}

bool BaseWalk::StepByPlace(Hit& hit) {
  if (!Move()) return false;
  int64_t position = 0;
  hit.entry = {};
  rows_.Take(storage_->Spec(), tree_.Payload(&position), hit);
  hit.position = CheckedPosition(position);
  onward_.Meet(hit.position);
  return true;
}

bool BaseWalk::Step(Hit& hit) {
  if (!storage_) return foreign_ && foreign_->Step(hit);
  return slot_ == kPhysicalSlot ? StepByPlace(hit) : StepAlong(hit);
}

void BaseWalk::ReadAgain(Hit& hit) {
  if (!storage_) return;  // elsewhere the walk keeps what it has given
  ByteView row;
  if (!storage_->FindRow(hit.position, row)) ThrowDamaged();
  rows_.Take(storage_->Spec(), row, hit);
}

void BaseWalk::End() noexcept {
  foreign_.reset();
  if (Storage* home = std::exchange(home_, nullptr)) home->RemoveWalk(*this);
  if (!storage_) return;
  tree_.Close();
  storage_->RemoveWalk(*this);
  storage_ = nullptr;
}

}  // namespace btrieve
