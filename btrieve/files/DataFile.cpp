#include "btrieve/files/DataFile.h"

#include <algorithm>

#include "btrieve/system/DiskSpace.h"

namespace btrieve {

namespace {
constexpr uint32_t kMostReserved = 1024;
}

DataFile::~DataFile() {
  finder_.End();
  (void)MakeStable();
  base_.Close();
}

Overlay& DataFile::Changes() {
  base_.EndWalks();
  if (!part_.overlay) part_.overlay = std::make_unique<Overlay>(base_.Indexes().size());
  return *part_.overlay;
}

bool DataFile::Fetch(uint32_t position, Hit& hit) {
  const OverlayRecord* record = part_.overlay ? part_.overlay->Find(position) : nullptr;
  if (!record) return base_.Fetch(position, hit);
  hit = {position, record->version, record->data, record->numbers.Stored(), {}};
  return !record->deleted;
}

uint32_t DataFile::FindValue(int slot, const Entry& value) {
  const Entry behind = BehindValue(value.View());
  if (!part_.overlay) return base_.FindEntry(slot, value, behind);
  finder_.Start(*this, slot, true, value.View());
  Hit hit;
  const bool found = finder_.Step(hit) && BytesLess(hit.entry, behind.View());
  const uint32_t position = found ? hit.position : 0;
  finder_.End();
  return position;
}

uint32_t DataFile::RecordCount() noexcept {
  const int64_t change = part_.overlay ? part_.overlay->RecordChange() : 0;
  return static_cast<uint32_t>(base_.Counts().records + change);
}

uint32_t DataFile::DistinctCount(int slot) noexcept {
  const int64_t change = part_.overlay ? part_.overlay->DistinctChange(slot) : 0;
  return static_cast<uint32_t>(base_.Counts().distinct[slot] + change);
}

void DataFile::MakeValue(int slot, const uint8_t* record, Entry& value) {
  const KeyOrder& order = IndexAt(slot).order;
  value.SetSize(0);
  if (order.LeavesOut(record)) return;
  order.OrderRecord(record, value.Data());
  value.SetSize(order.OrderedSize());
}

void DataFile::MakeEntry(int slot, const Hit& record, Entry& entry) {
  MakeValue(slot, record.data.data(), entry);
  const Index& index = IndexAt(slot);
  if (entry.Size() == 0 || !index.duplicates) return;
  entry.AppendNumber(OrderNumberIn(record.numbers, index.id, record.position));
}

uint32_t DataFile::NextPosition() {
  const uint32_t next = base_.Counts().nextPosition;
  return next <= kHighestPosition ? next : base_.FindFreePosition();
}

void DataFile::Reserve(uint32_t count) {
  Head& head = base_.Counts();
  const uint32_t free = kHighestPosition + 1 - std::min(head.nextPosition, kHighestPosition + 1);
  const uint32_t taken = std::min(std::max(reserveNext_, count), free);
  const uint32_t first = head.nextPosition;
  const uint32_t updates = head.updateNumber;
  if (taken >= count) base_.SetNextPosition(first + taken);
  base_.CommitWrite();
  if (taken < count) throw Failure{kDiskFull};
  nextReserved_ = first;
  endReserved_ = first + taken;
  updatesAtReserve_ = updates;
  reserveNext_ = std::min(reserveNext_ * 2, kMostReserved);
}

void DataFile::ReturnReserved() noexcept {
  Head& head = base_.Counts();
  const bool last = head.nextPosition == endReserved_ && head.updateNumber == updatesAtReserve_;
  if (last) head.nextPosition = nextReserved_;
}

void DataFile::ForgetReserved() noexcept {
  nextReserved_ = endReserved_ = 0;
  reserveNext_ = kLeastReserved;
}

void DataFile::PutPositionsAside() {
  if (ForeignFile* foreign = base_.Foreign()) {
    part_.firstAhead = foreign->PutPositionsAside(kPutAside);
    return;
  }
  const uint32_t first = base_.Counts().nextPosition;
  part_.firstAhead = first;
  const uint32_t free = kHighestPosition + 1 - std::min(first, kHighestPosition + 1);
  base_.SetNextPosition(first + std::min(kPutAside, free));
}

void DataFile::TakePositionsAside() { base_.SetNextPosition(part_.firstAhead); }

// The log is found by its name, which may lead nowhere any more, or to another file's log. What is
// open is then synced; whoever began the log has brought its name there.
bool DataFile::SyncLog() noexcept {
  if (!SyncFile(LogPath(), logEntryIsNew_)) return false;
  return !base_.HasMoved() || base_.SyncOpenLog();
}

// Whatever has been written to the log by the time of the sync is covered, others' commits too.
bool DataFile::MakeStable() noexcept {
  TakeOutcome();
  if (!dirty_) return true;
  watch_.NoteStable(LogHeadOf(base_.Link().Get()));
  const LogPlace place = base_.CommittedPlace();
  ForgetLastError();
  dirty_ = !base_.RenewLog(LogPath()) || !SyncLog();
  if (dirty_) {
    syncFault_ = LastErrorIsDiskFull() ? kDiskFull : kIoError;
    base_.DoubtLog();
    return false;
  }
  logEntryIsNew_ = false;
  base_.NoteSynced(place);
  return true;
}

void DataFile::TakeOutcome() noexcept {
  const bool done = outside_->Await();
  const std::optional<LogPlace> place = std::exchange(syncing_, std::nullopt);
  const bool missed = place && base_.HasMoved();  // what was synced may be another file
  if (!done || missed) dirty_ = logEntryIsNew_ = true;
  if (!done) {
    base_.DoubtLog();
  } else if (place && !missed) {
    base_.NoteSynced(*place);
  }
}

std::shared_ptr<OutsideSync> DataFile::GiveAwaySync(bool& entryToo) noexcept {
  TakeOutcome();
  if (!dirty_ || !base_.RenewLog(LogPath())) return nullptr;
  if (base_.HasMoved()) {
    (void)MakeStable();
    return nullptr;
  }
  dirty_ = false;
  watch_.NoteStable(LogHeadOf(base_.Link().Get()));
  syncing_ = base_.CommittedPlace();
  entryToo = std::exchange(logEntryIsNew_, false);
  outside_->Begin();
  return outside_;
}

bool DataFile::LookAtOthers() noexcept {
  if (base_.IsReadOnly() || base_.Foreign()) return false;
  const LogWatch::Seen seen = watch_.Look(LogHeadOf(base_.Link().Get()));
  if (seen == LogWatch::Seen::Quiet) MarkDirty();
  return seen != LogWatch::Seen::Nothing;
}

void DataFile::TakeOverLog(bool alone) noexcept {
  if (SizeOfFile(LogPath()) == 0) return watch_.NoteStable(LogHeadOf(base_.Link().Get()));
  if (!alone) return;
  base_.DoubtLog();
  (void)MakeAllStable();
}

bool DataFile::MakeAllStable() noexcept {
  MarkDirty();
  return MakeStable();
}

}  // namespace btrieve
