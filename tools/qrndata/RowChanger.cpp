#include "tools/qrndata/RowChanger.h"

#include <algorithm>
#include <array>

#include "btrieve/keys/KeyOrder.h"
#include "tools/qrndata/KeyChoice.h"

namespace qrndata {

RowChanger::RowChanger(const std::filesystem::path& directory, const Table& table, ChangeMode mode,
                       const std::string& key, std::vector<size_t> slots,
                       std::chrono::seconds patience)
    : target_(directory, table, Access::ReadWrite),
      mode_(mode),
      slots_(std::move(slots)),
      patience_(patience) {
  const size_t slot = ChooseKey(table, key);
  RequireKeyColumns(table.keys[slot]);
  key_ = &KeyInFile(table, slot, target_.Stat().spec, Match());
  if (key_->AllowsDuplicates()) {
    throw Failure(kBadInput, "table " + Quoted(table.name) + ": key \"" + key +
                                 "\" allows duplicates; a record is found by a key without");
  }
}

void RowChanger::RequireKeyColumns(const Key& key) const {
  const Table& table = target_.TheTable();
  for (const Segment& segment : key.segments) {
    const qrn::DbFieldInfo* field = FindField(table, segment.fieldId);
    const bool isGiven =
        field != nullptr &&
        std::ranges::find(slots_, static_cast<size_t>(field - table.fields.data())) != slots_.end();
    if (isGiven) continue;
    throw Failure(kBadInput, "table " + Quoted(table.name) + ": no column for field " +
                                 (field != nullptr ? Quoted(field->Name) : "of the key") +
                                 ", by which records are found");
  }
}

Refusal RowChanger::Add(FieldValues& values) {
  if (Refusal refusal = target_.Check(values)) return refusal;
  if (Refusal refusal = RowTarget::CheckLength(target_.Image().Build(values))) return refusal;
  queue_.push_back(values);
  return {};
}

// One attempt; kConflict when the record was changed between the two calls.
Status RowChanger::Write(const FieldValues& values, const Bytes& wanted, bool& isNew) {
  const btrieve::KeyOrder order(target_.Stat().spec, *key_);
  std::array<uint8_t, btrieve::kMaxKeyLength> value{};
  order.CopyKey(wanted.data(), value.data());
  const auto key = static_cast<int8_t>(key_->number);
  const Status found = order.LeavesOut(wanted.data()) ? Status{btrieve::kKeyNotFound}
                                                      : target_.File().GetEqual(key, value, found_);
  isNew = found == btrieve::kKeyNotFound;
  if (found != btrieve::kOk && !isNew) return found;
  if (isNew && mode_ == ChangeMode::Update) return found;
  written_ = isNew || mode_ == ChangeMode::Replace ? wanted
                                                   : target_.Image().Change(found_, values, slots_);
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
  if (status == btrieve::kKeyNotFound) return {"there is no record with this key value", {}};
  if (status == btrieve::kKeyNotModifiable) {
    return {"a key that may not be modified would be changed", {}};
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
