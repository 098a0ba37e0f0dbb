// Which records a file's unique keys would refuse, found without storing any.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "btrieve/keys/KeyOrder.h"
#include "tools/qrndata/BtrFile.h"

namespace qrndata {

struct TakenValue {
  size_t key;     // slot in the file's keys
  bool isStored;  // by a record of the file, else by a record taken before
};

// Keeps the key values of every record taken: some hundred bytes each.
class UniqueValues {
 public:
  // `file` must outlive this.
  UniqueValues(BtrFile& file, const btrieve::FileSpec& spec);

  // The first unique key that has the record's value already; otherwise the record counts as taken.
  // Numbers are given as an insert gives them: `record` is changed. `own` is what stood in the
  // record's place until now, whose values go; null for a new record.
  std::optional<TakenValue> Take(Bytes& record, const Bytes* own = nullptr);

 private:
  struct UniqueKey {
    size_t slot;
    int8_t number;
    btrieve::KeyOrder order;
    std::unordered_set<std::string> taken;  // ordered bytes
    std::unordered_set<std::string> freed;  // the file's, that no record has any more
    std::optional<uint64_t> highest;        // of a key that gives numbers
  };

  static std::string Ordered(const UniqueKey& key, const Bytes& record);
  static bool IsSame(const UniqueKey& key, const Bytes* own, const std::string& ordered);
  static void Leave(UniqueKey& key, const Bytes& own);
  static void Keep(UniqueKey& key, const Bytes& record);
  static bool GiveNumber(const UniqueKey& key, Bytes& record);
  uint64_t HighestStored(const UniqueKey& key);
  bool IsStored(const UniqueKey& key, const Bytes& record);

  BtrFile& file_;
  std::vector<UniqueKey> keys_;
};

}  // namespace qrndata
