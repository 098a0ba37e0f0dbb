#include "btrieve/files/RecordWriter.h"

#include <algorithm>

namespace btrieve {

void RecordWriter::Begin(WritePlan& plan, uint32_t position) {
  plan.position = position;
  plan.keys.resize(static_cast<size_t>(file_.KeyCount()));
  for (KeyChange& key : plan.keys) {
    key.before.SetSize(0);
    key.after.SetSize(0);
  }
}

void RecordWriter::TakeBefore(const Hit& old, WritePlan& plan) {
  Begin(plan, old.position);
  plan.existed = true;
  plan.before.assign(old.data.begin(), old.data.end());
  plan.numbers = OrderNumbers(old.numbers);
  for (int slot = 0; slot < file_.KeyCount(); ++slot) {
    file_.MakeEntry(slot, old, plan.keys[slot].before);
  }
}

void RecordWriter::PlanInsert(ByteView image, uint32_t position, WritePlan& plan) {
  Begin(plan, position);
  plan.existed = false;
  plan.remains = true;
  plan.numbers = OrderNumbers();
  for (int slot = 0; slot < file_.KeyCount(); ++slot) PlanKey(slot, image, plan);
}

Status RecordWriter::PlanUpdate(const Hit& old, ByteView image, WritePlan& plan) {
  TakeBefore(old, plan);
  plan.remains = true;
  for (int slot = 0; slot < file_.KeyCount(); ++slot) {
    const Index& index = file_.IndexAt(slot);
    if (!index.modifiable && !index.order.SameRaw(plan.before.data(), image.data())) {
      return kKeyNotModifiable;
    }
  }
  for (int slot = 0; slot < file_.KeyCount(); ++slot) PlanKey(slot, image, plan);
  return kOk;
}

void RecordWriter::PlanDelete(const Hit& old, WritePlan& plan) {
  TakeBefore(old, plan);
  plan.remains = false;
}

// An entry whose value stays keeps its number, and with it its place among duplicates.
void RecordWriter::PlanKey(int slot, ByteView image, WritePlan& plan) {
  KeyChange& key = plan.keys[slot];
  const Index& index = file_.IndexAt(slot);
  file_.MakeValue(slot, image.data(), key.after);
  if (key.after.Size() == 0) return;
  const size_t valueSize = key.after.Size();
  const bool stays =
      key.before.Size() != 0 && BytesEqual(key.before.View().first(valueSize), key.after.View());
  if (stays) {
    key.after = key.before;
    return;
  }
  if (!index.duplicates) return;
  if (plan.existed) plan.numbers.Set(index.id, MovedNumber());
  key.after.AppendNumber(plan.numbers.For(index.id, plan.position));
}

Status RecordWriter::FindTaken(const WritePlan& plan) {
  for (int slot = 0; slot < file_.KeyCount(); ++slot) {
    if (AddsUnique(plan, slot) && file_.FindValue(slot, plan.keys[slot].after) != 0) {
      return kDuplicateKey;
    }
  }
  return kOk;
}

uint64_t RecordWriter::MovedNumber() {
  if (!direct_) return FirstOrderNumber(file_.TakeReserved());
  Head& head = file_.Base().Counts();
  return FirstOrderNumber(head.nextPosition - 1) | ++head.updateNumber;
}

Status RecordWriter::Carry(const WritePlan& plan, ByteView image, uint64_t& version,
                           const CarryTerms& terms) {
  if (!direct_) {
    version = CarryOverlaid(plan, image);
    return kOk;
  }
  file_.Base().EndWalks();
  if (file_.Base().Foreign()) return CarryElsewhere(plan, image, version, terms);
  if (!plan.existed) return CarryNew(plan, image, version);
  version = CarryRow(plan, image);
  RemoveEntries(plan);
  AddEntries(plan);
  return kOk;
}

// The counters as they are to be go along with the change.
Status RecordWriter::CarryElsewhere(const WritePlan& plan, ByteView image, uint64_t& version,
                                    const CarryTerms& terms) {
  Head& head = file_.Base().Counts();
  const Head before = head;
  CountRow(plan);
  const RowChange change{plan.position,         plan.existed, plan.remains, head.version,
                         plan.numbers.Stored(), image,        plan.keys};
  const Status status = file_.Base().CarryElsewhere(change, terms);
  version = head.version;
  if (status != kOk) head = before;
  return status;
}

Status RecordWriter::CarryBlock(std::span<const WritePlan> plans, std::span<const ByteView> images,
                                uint64_t& version, bool commits) {
  file_.Base().EndWalks();
  Head& head = file_.Base().Counts();
  const Head before = head;
  std::vector<RowChange> changes;
  changes.reserve(plans.size());
  for (size_t at = 0; at < plans.size(); ++at) {
    const WritePlan& plan = plans[at];
    version = CountRow(plan);
    changes.push_back(
        {plan.position, false, true, version, plan.numbers.Stored(), images[at], plan.keys});
  }
  const Status status = file_.Base().CarryBlockElsewhere(changes, commits);
  if (status != kOk) head = before;
  return status;
}

// What may be refused comes first, so that only the entries taken before have to go again.
Status RecordWriter::CarryNew(const WritePlan& plan, ByteView image, uint64_t& version) {
  if (!AddUnique(plan)) return kDuplicateKey;
  version = CarryRow(plan, image);
  AddRepeated(plan);
  return kOk;
}

uint64_t RecordWriter::CountRow(const WritePlan& plan) {
  Head& head = file_.Base().Counts();
  if (!plan.existed) {
    head.nextPosition = std::max(head.nextPosition, plan.position + 1);
    ++head.records;
  } else if (!plan.remains) {
    if (head.records == 0) ThrowDamaged();
    --head.records;
  }
  return ++head.version;
}

uint64_t RecordWriter::CarryRow(const WritePlan& plan, ByteView image) {
  Storage& base = file_.Base();
  const uint64_t version = CountRow(plan);
  if (!plan.existed) {
    base.InsertRow(plan.position, version, plan.numbers.Stored(), image);
  } else if (plan.remains) {
    base.UpdateRow(plan.position, version, plan.numbers.Stored(), image);
  } else {
    base.DeleteRow(plan.position);
  }
  return version;
}

uint64_t RecordWriter::CarryOverlaid(const WritePlan& plan, ByteView image) {
  Overlay& changes = file_.Changes();
  Overlay::Step step(changes);
  step_ = &step;
  const OverlayRecord* known = changes.Find(plan.position);
  OverlayRecord record{known ? known->inBase : plan.existed,
                       !plan.remains,
                       changes.NextVersion(),
                       {image.begin(), image.end()},
                       plan.numbers};
  const uint64_t version = record.version;
  if (plan.existed && !known) Adopt(plan);
  step.Put(plan.position, std::move(record));
  step.CountRecords(static_cast<int>(plan.remains) - static_cast<int>(plan.existed));
  RemoveEntries(plan);
  AddEntries(plan);
  step.Keep();
  return version;
}

void RecordWriter::Adopt(const WritePlan& plan) {
  std::vector<Entry> entries;
  for (const KeyChange& key : plan.keys) entries.push_back(key.before);
  step_->Adopt(plan.position, entries);
}

void RecordWriter::RemoveEntries(const WritePlan& plan) {
  for (int slot = 0; slot < file_.KeyCount(); ++slot) {
    const KeyChange& key = plan.keys[slot];
    if (key.before.Size() != 0 && (!plan.remains || key.Moves())) RemoveEntry(slot, key.before);
  }
}

bool RecordWriter::AddsUnique(const WritePlan& plan, int slot) const noexcept {
  return plan.Adds(slot) && !file_.IndexAt(slot).duplicates;
}

// False, with nothing changed, where one of the values is taken.
bool RecordWriter::AddUnique(const WritePlan& plan) {
  for (int slot = 0; slot < file_.KeyCount(); ++slot) {
    if (!AddsUnique(plan, slot)) continue;
    if (TryAddEntry(slot, plan.keys[slot].after, plan.position)) continue;
    while (slot-- > 0) {
      if (AddsUnique(plan, slot)) RemoveEntry(slot, plan.keys[slot].after);
    }
    return false;
  }
  return true;
}

void RecordWriter::AddRepeated(const WritePlan& plan) {
  for (int slot = 0; slot < file_.KeyCount(); ++slot) {
    if (!plan.Adds(slot) || !file_.IndexAt(slot).duplicates) continue;
    if (!TryAddEntry(slot, plan.keys[slot].after, plan.position)) throw Failure{kIoError};
  }
}

// Of a record whose values nobody else has.
void RecordWriter::AddEntries(const WritePlan& plan) {
  if (!AddUnique(plan)) throw Failure{kIoError};
  AddRepeated(plan);
}

bool RecordWriter::GroupIsEmpty(int slot, const Entry& entry) {
  const Index& index = file_.IndexAt(slot);
  return !index.duplicates || file_.FindValue(slot, Entry(index.ValueOf(entry))) == 0;
}

void RecordWriter::CountDistinct(int slot, int change) {
  if (direct_) {
    uint32_t& count = file_.Base().Counts().distinct[slot];
    if (change < 0 && count == 0) ThrowDamaged();
    count += static_cast<uint32_t>(change);
  } else {
    step_->CountDistinct(slot, change);
  }
}

// False, with nothing changed, where a unique key has the entry already.
bool RecordWriter::TryAddEntry(int slot, const Entry& entry, uint32_t position) {
  if (!direct_) {
    if (GroupIsEmpty(slot, entry)) CountDistinct(slot, +1);
    step_->AddEntry(slot, entry, position);
    return true;
  }
  const EntryTree::Added added = file_.Base().InsertEntry(slot, entry, position);
  if (added == EntryTree::Added::NewValue) CountDistinct(slot, +1);
  return added != EntryTree::Added::Taken;
}

void RecordWriter::RemoveEntry(int slot, const Entry& entry) {
  if (direct_) {
    file_.Base().DeleteEntry(slot, entry);
  } else {
    step_->RemoveEntry(slot, entry);
  }
  if (GroupIsEmpty(slot, entry)) CountDistinct(slot, -1);
}

void RecordWriter::PlanLogged(const LoggedRecord& record, WritePlan& plan) {
  if (!record.deleted) CheckRecord(file_.Spec(), record.image, record.numbers);
  Hit old;
  plan.existed = file_.Base().Fetch(record.position, old);
  if (plan.existed) {
    TakeBefore(old, plan);
  } else {
    Begin(plan, record.position);
  }
  plan.remains = !record.deleted;
  if (record.deleted) return;
  plan.numbers = OrderNumbers(record.numbers);
  const Hit now{record.position, 0, record.image, record.numbers, {}};
  for (int slot = 0; slot < file_.KeyCount(); ++slot) {
    file_.MakeEntry(slot, now, plan.keys[slot].after);
  }
}

// Elsewhere a record and its entries are one, so the whole record goes, to come again.
void RecordWriter::Clear(const LoggedRecord& record) {
  WritePlan plan;
  PlanLogged(record, plan);
  file_.Base().EndWalks();
  if (file_.Base().Foreign()) {
    uint64_t version = 0;
    plan.remains = false;
    for (KeyChange& key : plan.keys) key.after.SetSize(0);
    if (plan.existed && CarryElsewhere(plan, {}, version, {}) != kOk) throw Failure{kIoError};
    return;
  }
  RemoveEntries(plan);
}

uint64_t RecordWriter::Fill(const LoggedRecord& record) {
  WritePlan plan;
  PlanLogged(record, plan);
  if (!plan.existed && !plan.remains) return 0;
  file_.Base().EndWalks();
  Head& head = file_.Base().Counts();
  head.updateNumber = std::max(head.updateNumber, plan.numbers.HighestUpdate());
  if (file_.Base().Foreign()) {
    uint64_t version = 0;
    if (CarryElsewhere(plan, record.image, version, {}) != kOk) throw Failure{kIoError};
    return version;
  }
  const uint64_t version = CarryRow(plan, record.image);
  AddEntries(plan);
  return version;
}

uint64_t ClaimOf(const Index& index, const Entry& entry) noexcept {
  uint64_t hash = 0xCBF29CE484222325 ^ index.id;
  for (const uint8_t byte : entry.View()) hash = (hash ^ byte) * 0x100000001B3;
  hash ^= hash >> 32;
  hash *= 0x9E3779B97F4A7C15;
  return hash ^ (hash >> 29);
}

}  // namespace btrieve
