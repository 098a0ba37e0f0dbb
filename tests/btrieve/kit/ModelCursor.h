// What each call must answer: the model of a cursor's place over a ModelFile.
#pragma once

#include <algorithm>

#include "Calls.h"
#include "Descriptor.h"
#include "ModelFile.h"

namespace btrieve::test {

inline constexpr uint64_t kBehindAllOrders = UINT64_MAX;

// How a value is looked for: which bound, and whether the entry before it is meant.
inline bool IsLess(int operation) { return operation == kGetLess || operation == kGetLessOrEqual; }

struct Expected {
  Status status = 0;
  std::optional<Bytes> data = std::nullopt;  // bytes returned; nothing: the buffer is untouched
  std::optional<Bytes> key = std::nullopt;   // key value returned, and untouched behind it
};

inline Expected Fails(Status status) { return {.status = status}; }

class ModelCursor {
 public:
  explicit ModelCursor(ModelFile& file) : file_(&file) {}

  // Each predicts the answer and moves the cursor as the call does.
  // 5..13
  Expected Read(int operation, const CallIn& in) {
    const int key = in.keyNumber;
    if (!HasKey(key)) return Fails(kInvalidKeyNumber);
    if (in.keyLength >= 0 && static_cast<size_t>(in.keyLength) < KeySize(key)) {
      return Fails(kKeyBufferTooShort);
    }
    Status status = kOk;
    const bool moves = operation == kGetNext || operation == kGetPrevious;
    const auto entry = moves ? Neighbour(key, operation == kGetNext, distinct_, status)
                             : Find(operation, key, in.key, status);
    if (!entry) return Fails(status);
    const ModelEntry found = **entry;
    StandOn(key, found, true);
    return Deliver(found.position, key, in);
  }
  // 55..63
  Expected ReadKey(int operation, const CallIn& in) {
    const int key = in.keyNumber;
    const int base = operation - kGetKey;
    if (!HasKey(key)) return Fails(kInvalidKeyNumber);
    if (in.keyLength >= 0 && static_cast<size_t>(in.keyLength) < KeySize(key)) {
      return Fails(kKeyBufferTooShort);
    }
    Status status = kOk;
    const bool moves = base == kGetNext || base == kGetPrevious;
    const auto entry =
        moves ? Neighbour(key, base == kGetNext, true, status) : Find(base, key, in.key, status);
    if (!entry) return Fails(status);
    const ModelEntry first = *LowerBound(key, (*entry)->value);
    StandOn(key, first, false, true);
    return {.key = first.value};
  }
  Expected Step(int operation, const CallIn& in) {
    const auto& records = file_->records;
    auto found = records.end();
    const bool fresh = physical_ == Physical::BeforeFirst;
    switch (operation) {
      case kStepFirst:
        found = records.begin();
        break;
      case kStepLast:
        found = records.empty() ? records.end() : std::prev(records.end());
        break;
      case kStepNext:
        found = fresh ? records.begin() : records.upper_bound(position_);
        break;
      default: {
        const auto here = records.lower_bound(position_);
        if (!fresh && here != records.begin()) found = std::prev(here);
      }
    }
    if (found == records.end()) return Fails(kEndOfFile);
    Stand(found->first, true);
    logical_ = Logical::None;
    return Deliver(found->first, -1, in);
  }
  Expected Direct(const CallIn& in) {
    const auto position = NumberAt<uint32_t>(in.data, 0);
    const int key = in.keyNumber;
    if (key != -1 && !HasKey(key)) return Fails(kInvalidKeyNumber);
    if (!file_->records.count(position)) return Fails(kInvalidAddress);
    if (key == -1) {
      Stand(position, true);
      logical_ = Logical::None;
      return Deliver(position, -1, in);
    }
    const ModelEntry* entry = file_->EntryOf(static_cast<size_t>(key), position);
    if (!entry) return Fails(kNullKeyPath);
    StandOn(key, *entry, true);
    return Deliver(position, key, in);
  }
  Expected Position(const CallIn&) const {
    if (!Current()) return Fails(kInvalidPositioning);
    return {.data = Number(position_)};
  }
  Expected Extended(int operation, const Descriptor& descriptor, const CallIn& in);
  Expected Percent(const CallIn& in);
  Expected FindPercent(const CallIn& in) const;
  Expected Update(const CallIn& in) {
    const FileSpec& spec = file_->Spec();
    if (physical_ != Physical::At || !usable_) return Fails(kInvalidPositioning);
    if (in.data.size() < spec.recordLength) return Fails(kDataBufferLength);
    if (!SeesItsRecord()) return Fails(kConflict);
    Bytes record = in.data;
    if (!spec.IsVariable()) record.resize(spec.recordLength);
    if (const Status status = file_->CheckModifiable(file_->records.at(position_).data, record)) {
      return Fails(status);
    }
    if (const Status status = file_->CheckUnique(record, position_)) return Fails(status);
    file_->Update(position_, record);
    version_ = file_->records.at(position_).version;
    if (in.keyNumber < 0) return {};
    const auto key = static_cast<size_t>(in.keyNumber);
    if (logical_ == Logical::At && key_ != in.keyNumber) logical_ = Logical::Broken;
    const ModelEntry* entry = file_->EntryOf(key, position_);
    if (logical_ == Logical::At && entry) StandOn(key_, *entry, true);
    return {.key = ModelFile::RawValue(spec.keys[key], record)};
  }
  Expected Delete() {
    if (physical_ != Physical::At || !usable_) return Fails(kInvalidPositioning);
    if (!SeesItsRecord()) return Fails(kConflict);
    file_->Remove(position_);
    physical_ = Physical::Gone;
    usable_ = false;
    return {};
  }
  // The insert's status; when it is 0 Inserted tells where the record came to lie.
  Expected Insert(const CallIn& in) const {
    const FileSpec& spec = file_->Spec();
    if (in.data.size() < spec.recordLength) return Fails(kDataBufferLength);
    Bytes record = in.data;
    if (!spec.IsVariable()) record.resize(spec.recordLength);
    Bytes filled = record;
    file_->FillAutoIncrement(filled);
    if (const Status status = file_->CheckUnique(filled, 0)) return Fails(status);
    Expected expected;
    if (filled != record) expected.data = filled;
    if (in.keyNumber >= 0 && HasKey(in.keyNumber)) {
      expected.key = ModelFile::RawValue(spec.keys[static_cast<size_t>(in.keyNumber)], filled);
    }
    return expected;
  }
  void Inserted(uint32_t position, const CallIn& in) {
    Bytes record = in.data;
    if (!file_->Spec().IsVariable()) record.resize(file_->Spec().recordLength);
    file_->FillAutoIncrement(record);
    file_->Insert(position, record);
    Stand(position, true);
    if (in.keyNumber < 0 || !HasKey(in.keyNumber)) return;
    const ModelEntry* entry = file_->EntryOf(static_cast<size_t>(in.keyNumber), position);
    if (entry) {
      StandOn(in.keyNumber, *entry, true);
    } else {
      logical_ = Logical::None;
    }
  }

  // The record that the cursor stands on; nothing before the first, on a deleted one.
  std::optional<uint32_t> Current() const {
    if (physical_ != Physical::At || !file_->records.count(position_)) return std::nullopt;
    return position_;
  }
  // The place along a key is that of the current record, so Update may move it.
  bool PlaceIsCurrent() const {
    return logical_ != Logical::At || (physical_ == Physical::At && place_.position == position_);
  }
  bool HasDistinctPlace() const { return logical_ == Logical::At && distinct_; }
  // The record it stands on is as the cursor last saw it.
  bool SeesItsRecord() const {
    if (physical_ != Physical::At) return true;
    const auto record = file_->records.find(position_);
    return record != file_->records.end() && record->second.version == version_;
  }
  // What it remembers, record and place, is all in the file.
  bool IsAtHome() const {
    if (physical_ == Physical::Gone || !SeesItsRecord()) return false;
    return logical_ != Logical::At || Index(key_).count(place_) != 0;
  }

 private:
  enum class Physical { BeforeFirst, At, Gone };
  enum class Logical { None, Broken, At };
  using Entry = ModelIndex::const_iterator;

  const ModelIndex& Index(int key) const { return file_->indexes[static_cast<size_t>(key)]; }
  bool HasKey(int key) const { return key >= 0 && key < std::ssize(file_->indexes); }
  size_t KeySize(int key) const { return file_->Spec().keys[static_cast<size_t>(key)].Length(); }

  std::optional<Entry> Find(int operation, int key, const Bytes& value, Status& status) const {
    const ModelIndex& index = Index(key);
    Entry entry = index.begin();
    switch (operation) {
      case kGetFirst:
        break;
      case kGetLast:
        entry = index.end();
        break;
      case kGetGreater:
      case kGetLessOrEqual:
        entry = UpperBound(key, value);
        break;
      default:
        entry = LowerBound(key, value);
        break;
    }
    const bool before = operation == kGetLast || IsLess(operation);
    if (before ? entry == index.begin() : entry == index.end()) {
      status = operation == kGetEqual ? kKeyNotFound : kEndOfFile;
      return std::nullopt;
    }
    if (before) --entry;
    if (operation == kGetEqual && AsksForNull(key, value)) {
      status = kKeyNotFound;
      return std::nullopt;
    }
    if (operation == kGetEqual && file_->Compare(static_cast<size_t>(key), entry->value, value)) {
      status = kKeyNotFound;
      return std::nullopt;
    }
    return entry;
  }
  // Next or previous of the place, by record or by value.
  std::optional<Entry> Neighbour(int key, bool forward, bool byValue, Status& status) const {
    status = logical_ == Logical::None                    ? kInvalidPositioning
             : logical_ == Logical::Broken || key_ != key ? kDifferentKeyNumber
                                                          : kOk;
    if (status != kOk) return std::nullopt;
    const ModelIndex& index = Index(key);
    if (forward) {
      const Entry next = byValue ? UpperBound(key, place_.value) : index.upper_bound(place_);
      if (next != index.end()) return next;
    } else {
      const Entry here = byValue ? LowerBound(key, place_.value) : index.lower_bound(place_);
      if (here != index.begin()) return std::prev(here);
    }
    status = kEndOfFile;
    return std::nullopt;
  }
  bool AsksForNull(int key, const Bytes& value) const {
    size_t at = 0;
    for (const KeySegment& segment : file_->Spec().keys[static_cast<size_t>(key)].segments) {
      if (segment.Type() == KeyType::NullIndicator && value[at] != 0) return true;
      at += segment.length;
    }
    return false;
  }
  Entry LowerBound(int key, const Bytes& value) const {
    return Index(key).lower_bound({value, 0, 0});
  }
  Entry UpperBound(int key, const Bytes& value) const {
    return Index(key).upper_bound({value, kBehindAllOrders, 0});
  }
  void Stand(uint32_t position, bool usable) {
    physical_ = Physical::At;
    position_ = position;
    version_ = file_->records.at(position).version;
    usable_ = usable;
  }
  void StandOn(int key, const ModelEntry& entry, bool usable, bool distinct = false) {
    Stand(entry.position, usable);
    logical_ = Logical::At;
    key_ = key;
    place_ = entry;
    distinct_ = distinct;
  }
  Expected Deliver(uint32_t position, int key, const CallIn& in) const {
    const Bytes& record = file_->records.at(position).data;
    const size_t room = std::max(in.room, in.data.size());
    if (room < file_->Spec().recordLength) return Fails(kDataBufferLength);
    Expected expected;
    const size_t size = std::min(room, record.size());
    expected.data = Bytes(record.begin(), record.begin() + static_cast<std::ptrdiff_t>(size));
    if (size < record.size()) expected.status = kDataBufferLength;
    if (key >= 0) {
      expected.key = ModelFile::RawValue(file_->Spec().keys[static_cast<size_t>(key)], record);
    }
    return expected;
  }
  std::vector<uint32_t> Ahead(int operation, bool withCurrent, int key) const;

  ModelFile* file_;
  Physical physical_ = Physical::BeforeFirst;
  uint32_t position_ = 0;
  uint64_t version_ = 0;
  bool usable_ = false;
  Logical logical_ = Logical::None;
  int key_ = 0;
  ModelEntry place_;
  bool distinct_ = false;
};

}  // namespace btrieve::test
