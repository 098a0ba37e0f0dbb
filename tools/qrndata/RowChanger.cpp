#include "tools/qrndata/RowChanger.h"

#include <algorithm>
#include <array>

#include "btrieve/keys/KeyOrder.h"
#include "tools/qrndata/KeyChoice.h"
#include "tools/qrndata/Messages.h"

namespace qrndata {

RowChanger::RowChanger(const std::filesystem::path& directory, const Table& table, ChangeMode mode,
                       const std::string& key, std::vector<size_t> slots,
                       std::chrono::seconds patience, bool isTrial)
    : target_(directory, table, isTrial ? Access::ReadOnly : Access::ReadWrite),
      mode_(mode),
      slots_(std::move(slots)),
      patience_(patience) {
  const size_t slot = ChooseKey(table, key);
  RequireKeyColumns(table.keys[slot]);
  key_ = &KeyInFile(table, slot, target_.Stat().spec, Match());
  if (key_->AllowsDuplicates()) {
    throw Failure(kBadInput, Say(Message::KeyAllowsDuplicates, Quoted(table.name), key));
  }
  if (isTrial) trial_.emplace(Trial{UniqueValues(target_.File(), target_.Stat().spec), {}, 0});
}

void RowChanger::RequireKeyColumns(const Key& key) const {
  const Table& table = target_.TheTable();
  for (const Segment& segment : key.segments) {
    const qrn::DbFieldInfo* field = FindField(table, segment.fieldId);
    const bool isGiven =
        field != nullptr &&
        std::ranges::find(slots_, static_cast<size_t>(field - table.fields.data())) != slots_.end();
    if (isGiven) continue;
    throw Failure(kBadInput, Say(Message::NoColumnForKey, Quoted(table.name),
                                 field != nullptr ? Quoted(field->Name) : Say(Message::OfTheKey)));
  }
}

Refusal RowChanger::Add(FieldValues& values) {
  if (Refusal refusal = target_.Check(values)) return refusal;
  if (Refusal refusal = RowTarget::CheckLength(target_.Image().Build(values))) return refusal;
  queue_.push_back(values);
  return {};
}

std::string RowChanger::Ordered(const Bytes& record) const {
  const btrieve::KeyOrder order(target_.Stat().spec, *key_);
  std::string ordered(order.OrderedSize(), '\0');
  order.OrderRecord(record.data(), reinterpret_cast<uint8_t*>(ordered.data()));
  return ordered;
}

// The record that has the row's value in the key, into found_.
Status RowChanger::Find(const Bytes& wanted) {
  const btrieve::KeyOrder order(target_.Stat().spec, *key_);
  if (order.LeavesOut(wanted.data())) return btrieve::kKeyNotFound;
  if (trial_) {
    const auto former = trial_->records.find(Ordered(wanted));
    if (former != trial_->records.end()) found_ = former->second;
    if (former != trial_->records.end()) return btrieve::kOk;
  }
  std::array<uint8_t, btrieve::kMaxKeyLength> value{};
  order.CopyKey(wanted.data(), value.data());
  return target_.File().GetEqual(static_cast<int8_t>(key_->number), value, found_);
}

// What an insert or update of written_ would come to.
Status RowChanger::TryWrite(bool isNew) {
  const btrieve::FileSpec& spec = target_.Stat().spec;
  for (const btrieve::KeySpec& key : spec.keys) {
    const bool isFixed = !isNew && !key.segments[0].Has(btrieve::kModifiable);
    const btrieve::KeyOrder order(spec, key);
    if (isFixed && !order.SameRaw(found_.data(), written_.data()))
      return btrieve::kKeyNotModifiable;
  }
  const auto taken = trial_->unique.Take(written_, isNew ? nullptr : &found_);
  if (taken) trial_->takenKey = taken->key;
  if (taken) return btrieve::kDuplicateKey;
  trial_->records[Ordered(written_)] = written_;
  return btrieve::kOk;
}

// One attempt; kConflict when the record was changed between the two calls.
Status RowChanger::Write(const FieldValues& values, const Bytes& wanted, bool& isNew) {
  const Status found = Find(wanted);
  isNew = found == btrieve::kKeyNotFound;
  if (found != btrieve::kOk && !isNew) return found;
  if (isNew && mode_ == ChangeMode::Update) return found;
  written_ = isNew || mode_ == ChangeMode::Replace ? wanted
                                                   : target_.Image().Change(found_, values, slots_);
  if (trial_) return TryWrite(isNew);
  return isNew ? target_.File().Insert(written_) : target_.File().Update(written_);
}

Status RowChanger::Change(FieldValues& values, bool& isNew) {
  const Bytes wanted = target_.Image().Build(values);
  while (true) {
    const Status status = Write(values, wanted, isNew);
    const bool isAgain = status == btrieve::kConflict || IsHeldElsewhere(status);
    if (!isAgain || !patience_.WaitOn()) return status;
  }
}

Refusal RowChanger::RefusalOf(Status status, bool isNew) {
  if (status == btrieve::kKeyNotFound) return {Say(Message::NoRecordOfKey), {}};
  if (status == btrieve::kKeyNotModifiable) {
    return {Say(Message::KeyWouldChange), {}};
  }
  if (status == btrieve::kDuplicateKey && trial_) {
    return target_.RefuseDuplicate(trial_->takenKey, Message::ValueIsThere);
  }
  if (status == btrieve::kDuplicateKey) {
    return target_.ExplainDuplicate(written_, isNew ? nullptr : &found_);
  }
  const bool isOfRow =
      status == btrieve::kConflict || (IsHeldElsewhere(status) && status != btrieve::kFileInUse);
  return isOfRow ? Refusal{StatusText(status), {}} : Refusal{};
}

Outcome RowChanger::Store() {
  Outcome outcome;
  while (first_ < queue_.size()) {
    FieldValues& values = queue_[first_];
    bool isNew = false;
    const Status status = Change(values, isNew);
    patience_.Renew();
    if (IsHeldElsewhere(status) && InterruptWatch::WasInterrupted()) {
      outcome.failure = Failure(kInterrupted, Say(Message::Interrupted));
      return outcome;
    }
    if (status != btrieve::kOk) {
      outcome.refusal = RefusalOf(status, isNew);
      if (!outcome.refusal) outcome.failure = target_.FailureOf(status);
    }
    ++first_;
    if (status != btrieve::kOk) return outcome;
    ++outcome.stored;
    ++stored_;
    if (!isNew) ++changed_;
  }
  queue_.clear();
  first_ = 0;
  patience_.Rest();
  return outcome;
}

}  // namespace qrndata
