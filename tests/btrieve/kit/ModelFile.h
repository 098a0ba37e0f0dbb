// What a file holds, as plainly as it can be said: records by position, entries by key. Keys are
// compared by their fields, not by the ordered bytes that the record manager stores.
#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <set>

#include "Bytes.h"
#include "btrieve/keys/KeySpec.h"

namespace btrieve::test {

inline bool IsNull(const KeySegment& segment, const Bytes& record) {
  const auto from = record.begin() + segment.offset;
  return std::all_of(from, from + segment.length,
                     [&](uint8_t byte) { return byte == segment.nullValue; });
}

inline int64_t SignedAt(const Bytes& bytes, size_t at, size_t length) {
  int64_t value = bytes[at + length - 1] & 0x80 ? -1 : 0;
  for (size_t i = length; i-- > 0;) value = value * 256 + bytes[at + i];
  return value;
}

struct ModelEntry {
  Bytes value;         // raw, all segments
  uint64_t order = 0;  // of records with one value: the later the larger
  uint32_t position = 0;
};

// Of raw key values: below, equal, above 0.
class KeyComparison {
 public:
  KeyComparison(const FileSpec& file, const KeySpec& key) {
    size_t offset = 0;
    for (const KeySegment& segment : key.segments) {
      const uint8_t* map = nullptr;
      if (segment.Has(kSequence)) map = file.sequences[segment.sequence].Map();
      if (segment.FoldsCase()) map = CaseFoldMap();
      parts_.push_back({FindKeyType(static_cast<uint8_t>(segment.Type()))->compare, map, offset,
                        segment.length, segment.Has(kDescending)});
      offset += segment.length;
    }
  }
  int Compare(const Bytes& a, const Bytes& b) const {
    for (const Part& part : parts_) {
      const int order =
          part.compare(a.data() + part.offset, b.data() + part.offset, part.length, part.map);
      if (order != 0) return part.descending ? -order : order;
    }
    return 0;
  }

  bool operator()(const ModelEntry& a, const ModelEntry& b) const {
    const int order = Compare(a.value, b.value);
    return order != 0 ? order < 0 : a.order < b.order;
  }

 private:
  struct Part {
    CompareFields compare;
    const uint8_t* map;
    size_t offset, length;
    bool descending;
  };
  std::vector<Part> parts_;
};

using ModelIndex = std::set<ModelEntry, KeyComparison>;

struct ModelRecord {
  Bytes data;
  uint64_t version = 0;
};

class ModelFile {
 public:
  explicit ModelFile(const FileSpec& spec) : spec_(&spec) {
    for (const KeySpec& key : spec.keys) {
      comparisons_.emplace_back(spec, key);
      indexes.emplace_back(comparisons_.back());
    }
  }

  std::map<uint32_t, ModelRecord> records;
  std::vector<ModelIndex> indexes;  // in the order of FileSpec::keys
  std::set<uint32_t> usedPositions;

  // The raw value of a record in a key; nothing where the key leaves the record out.
  std::optional<Bytes> ValueIn(size_t key, const Bytes& record) const {
    const KeySpec& spec = spec_->keys[key];
    const KeySegment& first = spec.segments[0];
    const auto nulls = std::count_if(spec.segments.begin(), spec.segments.end(),
                                     [&](const KeySegment& s) { return IsNull(s, record); });
    const bool out = first.Has(kNullAnySegment)    ? nulls > 0
                     : first.Has(kNullAllSegments) ? nulls == std::ssize(spec.segments)
                                                   : false;
    return out ? std::nullopt : std::optional(RawValue(spec, record));
  }
  static Bytes RawValue(const KeySpec& key, const Bytes& record) {
    Bytes value;
    for (const KeySegment& segment : key.segments) {
      const auto from = record.begin() + segment.offset;
      value.insert(value.end(), from, from + segment.length);
    }
    return value;
  }

  // Status 5 for a value that another record has, else 0. `self` is not looked at.
  Status CheckUnique(const Bytes& record, uint32_t self) const {
    for (size_t key = 0; key < indexes.size(); ++key) {
      const auto value = ValueIn(key, record);
      if (!value || spec_->keys[key].AllowsDuplicates()) continue;
      for (auto entry = indexes[key].lower_bound({*value, 0, 0}); entry != indexes[key].end();
           ++entry) {
        if (Compare(key, entry->value, *value) != 0) break;
        if (entry->position != self) return kDuplicateKey;
      }
    }
    return kOk;
  }
  // Status 10 when a key that may not change would; 0 otherwise.
  Status CheckModifiable(const Bytes& before, const Bytes& after) const {
    for (const KeySpec& key : spec_->keys) {
      if (!key.IsModifiable() && RawValue(key, before) != RawValue(key, after)) {
        return kKeyNotModifiable;
      }
    }
    return kOk;
  }

  void Insert(uint32_t position, const Bytes& record) {
    usedPositions.insert(position);
    records[position] = {record, nextVersion_++};
    for (size_t key = 0; key < indexes.size(); ++key) {
      if (const auto value = ValueIn(key, record)) {
        indexes[key].insert({*value, NextOrder(key), position});
      }
    }
  }
  // An entry whose value collates as before keeps its place among duplicates.
  void Update(uint32_t position, const Bytes& record) {
    for (size_t key = 0; key < indexes.size(); ++key) {
      const auto value = ValueIn(key, record);
      uint64_t order = 0;
      if (const ModelEntry* entry = EntryOf(key, position)) {
        if (value && Compare(key, entry->value, *value) == 0) order = entry->order;
        indexes[key].erase(*entry);
      }
      if (value) indexes[key].insert({*value, order ? order : NextOrder(key), position});
    }
    records[position] = {record, nextVersion_++};
  }
  void Remove(uint32_t position) {
    for (size_t key = 0; key < indexes.size(); ++key) {
      if (const ModelEntry* entry = EntryOf(key, position)) indexes[key].erase(*entry);
    }
    records.erase(position);
  }

  // The entry of a record, null when there is none.
  const ModelEntry* EntryOf(size_t key, uint32_t position) const {
    for (const ModelEntry& entry : indexes[key]) {
      if (entry.position == position) return &entry;
    }
    return nullptr;
  }
  size_t DistinctValues(size_t key) const {
    size_t count = 0;
    const ModelEntry* last = nullptr;
    for (const ModelEntry& entry : indexes[key]) {
      count += !last || Compare(key, last->value, entry.value) != 0;
      last = &entry;
    }
    return count;
  }
  int Compare(size_t key, const Bytes& a, const Bytes& b) const {
    return comparisons_[key].Compare(a, b);
  }
  // The value that an autoincrement field of 0 gets; nothing without such a field.
  void FillAutoIncrement(Bytes& record) const {
    for (size_t key = 0; key < indexes.size(); ++key) {
      const KeySegment& segment = spec_->keys[key].segments[0];
      if (segment.Type() != KeyType::AutoIncrement) continue;
      if (SignedAt(record, segment.offset, segment.length) != 0) continue;
      int64_t highest = 0;
      for (const auto& [position, other] : records) {
        highest = std::max(highest, std::abs(SignedAt(other.data, segment.offset, segment.length)));
      }
      ++highest;
      std::memcpy(&record[segment.offset], &highest, segment.length);
    }
  }

  // Goes back to an earlier state. Numbers go on, so that nothing new is taken for something old.
  void Restore(const ModelFile& earlier) {
    records = earlier.records;
    indexes = earlier.indexes;
    usedPositions = earlier.usedPositions;
  }

  const FileSpec& Spec() const { return *spec_; }

 private:
  // In a unique key the value alone is the place.
  uint64_t NextOrder(size_t key) { return spec_->keys[key].AllowsDuplicates() ? nextOrder_++ : 1; }

  const FileSpec* spec_;
  std::vector<KeyComparison> comparisons_;
  uint64_t nextOrder_ = 1;
  uint64_t nextVersion_ = 1;
};

}  // namespace btrieve::test
