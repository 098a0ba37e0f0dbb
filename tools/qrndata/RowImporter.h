// Rows of texts into a table as new records, a block of them to each call of the record manager.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "tools/qrndata/Patience.h"
#include "tools/qrndata/RowTarget.h"
#include "tools/qrndata/UniqueValues.h"

namespace qrndata {

class RowImporter : public RowStore {
 public:
  // Opens the table's data file, as RowTarget does. `batch` rows go to the record manager at once;
  // 0 checks rows, their unique keys included, without storing any. `patience` is how long a row
  // waits for other programs.
  RowImporter(const std::filesystem::path& directory, const Table& table, uint32_t batch,
              std::chrono::seconds patience = {});

  const FileMatch& Match() const noexcept override { return target_.Match(); }
  Refusal Add(FieldValues& values) override;
  bool IsFull() const noexcept override;

  // Each call of the record manager is whole or not there, and others read and lock records
  // meanwhile; their writes wait for it. While another program holds what a row needs the row is
  // tried again, for its patience from the last row that was stored: then it is refused, or, where
  // the whole file is held, a failure.
  Outcome Store() override;
  void Close() override { target_.Close(); }
  Outcome StoreLast() override;

  // For programs that fill tables of their own: Add, and Store when the queue is full; Finish
  // stores the rest. Throw Failure for a row that the record manager refuses.
  Refusal Put(FieldValues& values);
  void Finish();

 private:
  size_t Queued() const noexcept { return ends_.size() - first_; }
  size_t BeginOf(size_t row) const noexcept { return row == 0 ? 0 : ends_[row - 1]; }
  Bytes RecordAt(size_t row) const;
  Bytes BlockOf(size_t count) const;
  size_t BlockSize(size_t most) const;
  Status InsertBlock(size_t most, size_t& inserted);
  Status InsertSynced(bool& isThere);
  Outcome StoreDownTo(size_t left);
  bool MakeBlocksSmaller(Status status);
  Outcome Judge(Status status, Outcome outcome);
  Refusal DropFirst(Refusal refusal);
  void Drop(size_t count);
  void Clear();

  RowTarget target_;
  uint32_t batch_;
  std::optional<UniqueValues> unique_;  // where nothing is stored
  Patience patience_;
  Bytes queue_;               // records as an extended insert has them, each behind its length
  std::vector<size_t> ends_;  // where each record of the queue ends
  size_t tried_ = 0;          // rows checked where nothing is stored
  size_t first_ = 0;          // the first one that is neither stored nor refused
  size_t mostBytes_;          // of a block
  size_t mostRows_;
};

}  // namespace qrndata
