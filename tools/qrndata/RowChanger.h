// Rows of texts into records that are there already, found by a unique key.
#pragma once

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "tools/qrndata/Patience.h"
#include "tools/qrndata/RowTarget.h"
#include "tools/qrndata/UniqueValues.h"

namespace qrndata {

enum class ChangeMode {
  Update,   // the fields of the row are changed; a row without a record is refused
  Replace,  // the whole record is the row's; a row without a record is a new one
};

class RowChanger : public RowStore {
 public:
  // `key` is the name, number or first field of a key without duplicates, whose fields must be
  // among `slots`, those that the rows have. Throws Failure as RowTarget does, and for a key that
  // will not do. A trial stores nothing and comes to the same: only what other programs do
  // meanwhile it does not know.
  RowChanger(const std::filesystem::path& directory, const Table& table, ChangeMode mode,
             const std::string& key, std::vector<size_t> slots, std::chrono::seconds patience,
             bool isTrial = false);

  const FileMatch& Match() const noexcept override { return target_.Match(); }
  Refusal Add(FieldValues& values) override;
  bool IsFull() const noexcept override { return queue_.size() >= kMostQueued; }
  // Each record by an operation of its own.
  Outcome Store() override;
  void Close() override { target_.Close(); }

 private:
  static constexpr size_t kMostQueued = 200;

  void RequireKeyColumns(const Key& key) const;
  // What a trial knows of the rows before.
  struct Trial {
    UniqueValues unique;
    std::unordered_map<std::string, Bytes> records;  // by their ordered value in the key
    size_t takenKey = 0;                             // of the last row that had a value twice
  };

  Status Change(FieldValues& values, bool& isNew);
  Status Write(const FieldValues& values, const Bytes& wanted, bool& isNew);
  Status Find(const Bytes& wanted);
  Status TryWrite(bool isNew);
  std::string Ordered(const Bytes& record) const;
  Refusal RefusalOf(Status status, bool isNew);

  RowTarget target_;
  ChangeMode mode_;
  std::vector<size_t> slots_;
  const btrieve::KeySpec* key_ = nullptr;
  std::optional<Trial> trial_;
  Patience patience_;
  std::vector<FieldValues> queue_;
  size_t first_ = 0;
  Bytes found_, written_;  // the record as it was, and as it is to be
};

}  // namespace qrndata
