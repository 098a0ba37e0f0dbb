// What a file holds, as plainly as it can be said: records by position, entries by key. Keys are
// compared by their fields, not by the ordered bytes that the record manager stores.
#pragma once

#include <map>
#include <optional>
#include <set>

#include "Bytes.h"
#include "btrieve/keys/KeySpec.h"

namespace btrieve::test {

struct ModelEntry {
  Bytes value;         // raw, all segments
  uint64_t order = 0;  // of records with one value: the later the larger
  uint32_t position = 0;
};

// Of raw key values: below, equal, above 0.
class KeyComparison {
 public:
  KeyComparison(const FileSpec& file, const KeySpec& key);
  int Compare(const Bytes& a, const Bytes& b) const;

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
  explicit ModelFile(const FileSpec& spec);

  std::map<uint32_t, ModelRecord> records;
  std::vector<ModelIndex> indexes;  // in the order of FileSpec::keys
  std::set<uint32_t> usedPositions;

  // The raw value of a record in a key; nothing where the key leaves the record out.
  std::optional<Bytes> ValueIn(size_t key, const Bytes& record) const;
  static Bytes RawValue(const KeySpec& key, const Bytes& record);

  // Status 5 for a value that another record has, else 0. `self` is not looked at.
  Status CheckUnique(const Bytes& record, uint32_t self) const;
  // Status 10 when a key that may not change would; 0 otherwise.
  Status CheckModifiable(const Bytes& before, const Bytes& after) const;

  void Insert(uint32_t position, const Bytes& record);
  void Update(uint32_t position, const Bytes& record);
  void Remove(uint32_t position);

  // The entry of a record, null when there is none.
  const ModelEntry* EntryOf(size_t key, uint32_t position) const;
  size_t DistinctValues(size_t key) const;
  int Compare(size_t key, const Bytes& a, const Bytes& b) const {
    return comparisons_[key].Compare(a, b);
  }
  // The value that an autoincrement field of 0 gets; nothing without such a field.
  void FillAutoIncrement(Bytes& record) const;

  // Goes back to an earlier state. Numbers go on, so that nothing new is taken for something old.
  void Restore(const ModelFile& earlier);

  const FileSpec& Spec() const { return *spec_; }

 private:
  uint64_t NextOrder(size_t key);

  const FileSpec* spec_;
  std::vector<KeyComparison> comparisons_;
  uint64_t nextOrder_ = 1;
  uint64_t nextVersion_ = 1;
};

}  // namespace btrieve::test
