#include "btrieve/PageScan.h"

namespace btrieve {
namespace {

void TakeRecord(const FileSpec& spec, ByteView row, Hit& hit) {
  RowReader record(row);
  record.Skip();  // the position, which the tree itself keeps
  hit.version = static_cast<uint64_t>(record.TakeNumber());
  hit.numbers = record.TakeBytes();
  hit.data = record.TakeBytes();
  CheckRecord(spec, hit.data, hit.numbers);
}

}  // namespace

void PageScan::Start(Storage& storage, int slot, bool forward, ByteView bound) {
  sqlite3* connection = storage.Link().Get();
  spec_ = &storage.Spec();
  along_ = slot != kPhysicalSlot;
  forward_ = forward;
  next_ = end_ = 0;
  bool found;
  if (along_) {
    records_.Open(connection, TreeCursor::Kind::Rows, storage.RecordRoot(), &storage.Pages());
    (void)records_.SeekRow(0);
    entries_.Open(connection, TreeCursor::Kind::Entries, storage.Indexes()[slot].root);
    found = entries_.SeekEntry(bound);
    entrySize_ = storage.Indexes()[slot].EntrySize();
    onward_.Begin(forward, bound);
  } else {
    records_.Open(connection, TreeCursor::Kind::Rows, storage.RecordRoot());
    found = records_.SeekRow(BoundPosition(bound));
    onward_.Begin(forward, BoundPosition(bound));
  }
  ahead_ = !forward ? Ahead::Further : found ? Ahead::First : Ahead::None;
}

bool PageScan::Move() {
  TreeCursor& tree = along_ ? entries_ : records_;
  if (ahead_ == Ahead::Further) {
    if (!(forward_ ? tree.Next() : tree.Previous())) ahead_ = Ahead::None;
  } else if (ahead_ == Ahead::First) {
    ahead_ = Ahead::Further;
  }
  return ahead_ != Ahead::None;
}

// False at the end. Entries stay readable while the cursor stays in their page.
bool PageScan::LookAhead() {
  next_ = end_ = 0;
  do {
    if (!Move()) break;
    Coming& coming = coming_[end_++];
    RowReader entry(entries_.Payload());
    coming.entry = entry.TakeBytes();
    coming.position = CheckedPosition(entry.TakeNumber());
    CheckEntry(coming.entry, entrySize_);
    onward_.Meet(coming.entry);
    coming.spot = records_.Guess(coming.position);
  } while (end_ < kTogether && entries_.StaysInPage(forward_));
  for (size_t at = 0; at < end_; ++at) records_.Prefetch(coming_[at].spot);
  return end_ != 0;
}

ByteView PageScan::RecordOf(const Coming& coming) {
  ByteView row;
  if (records_.TakeSpot(coming.spot, coming.position, row)) return row;
  const bool found = records_.SeekRow(coming.position) && records_.Row() == coming.position;
  if (!found) ThrowDamaged();
  return records_.Payload();
}

bool PageScan::Step(Hit& hit) {
  if (!along_) {
    if (!Move()) return false;
    hit.entry = {};
    int64_t position = 0;
    TakeRecord(*spec_, records_.Payload(&position), hit);
    hit.position = CheckedPosition(position);
    onward_.Meet(hit.position);
    return true;
  }
  if (next_ == end_ && !LookAhead()) return false;
  const Coming& coming = coming_[next_++];
  hit.entry = coming.entry;
  hit.position = coming.position;
  TakeRecord(*spec_, RecordOf(coming), hit);
  return true;
}

}  // namespace btrieve
