#include "btrieve/PageScan.h"

namespace btrieve {

void PageScan::Start(Storage& storage, int slot, bool forward, ByteView bound) {
  sqlite3* connection = storage.Link().Get();
  along_ = slot != kPhysicalSlot;
  forward_ = forward;
  records_.Open(connection, TreeCursor::Kind::Rows, storage.RecordRoot());
  bool found;
  if (along_) {
    entries_.Open(connection, TreeCursor::Kind::Entries, storage.Indexes()[slot].root);
    found = entries_.SeekEntry(bound);
  } else {
    found = records_.SeekRow(BoundPosition(bound));
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

bool PageScan::Step(Hit& hit) {
  if (!Move()) return false;
  if (along_) {
    RowReader entry(entries_.Payload());
    hit.entry = entry.TakeBytes();
    const int64_t position = entry.TakeNumber();
    const bool found = records_.SeekRow(position) && records_.Row() == position;
    if (!found) throw Failure{kIoError};
  } else {
    hit.entry = {};
  }
  ReadRecord(hit);
  return true;
}

void PageScan::ReadRecord(Hit& hit) {
  hit.position = static_cast<uint32_t>(records_.Row());
  RowReader record(records_.Payload());
  record.Skip();  // the position, which the tree itself keeps
  hit.version = static_cast<uint64_t>(record.TakeNumber());
  hit.numbers = record.TakeBytes();
  hit.data = record.TakeBytes();
}

}  // namespace btrieve
