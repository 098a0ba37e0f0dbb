// Rows of texts into a table, a transaction for each batch.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "fields/QuorinSettings.h"
#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/FileMatch.h"
#include "tools/qrndata/RecordImage.h"
#include "tools/qrndata/TableModel.h"
#include "tools/qrndata/UniqueValues.h"

namespace qrndata {

// Why a row was not taken.
struct Refusal {
  std::string problem;              // UTF-8; empty: the row was taken
  std::optional<size_t> fieldSlot;  // the field at fault, where it is one

  explicit operator bool() const noexcept { return !problem.empty(); }
};

class RowImporter {
 public:
  // Opens the table's data file. `table` must outlive the importer. `batch` rows go into one
  // transaction; 0 checks rows, their unique keys included, without storing any. `patience` is how
  // long a row waits for other programs. Throws Failure when the file cannot be opened, has other
  // records than the table, or the table's records cannot be written (a variable field that is not
  // the last).
  RowImporter(const std::filesystem::path& directory, const Table& table, uint32_t batch,
              Sharing sharing = Sharing::Alone, std::chrono::seconds patience = {});

  // How the data file differs from the table, where it can be written all the same.
  const FileMatch& Match() const noexcept { return match_; }

  // Stores one row: code page 932, one value a field, nothing for null (an empty value where the
  // field cannot be null). While another program holds what the row needs the batch is ended and
  // the row tried again, for its patience from the last row that was stored: then the row is
  // refused. Throws Failure when the record manager refuses more than this row, the whole file
  // being held by another program included; what the batch has not ended by then is undone.
  Refusal Put(FieldValues& values);

  // Ends the last batch. Throws Failure when it could not be written.
  void Finish();

  // Rows of finished batches: these are there whatever comes.
  uint64_t Stored() const noexcept { return stored_; }

 private:
  using Clock = std::chrono::steady_clock;

  Refusal Check(FieldValues& values) const;
  Refusal Store(Bytes& record);
  Status Insert(Bytes& record);
  bool MayWaitOn();
  Refusal ExplainDuplicate(const Bytes& record);
  Refusal RefuseDuplicate(size_t key, const char* why) const;
  Refusal Try(Bytes& record);
  void Commit();
  void Rest();

  const Table& table_;
  qrn::QuorinSettings settings_;
  uint32_t batch_;
  Sharing sharing_;
  std::chrono::seconds patience_;
  BtrFile file_;
  FileStat stat_;
  FileMatch match_;
  RecordImage image_;
  std::optional<UniqueValues> unique_;  // where nothing is stored
  std::optional<Transaction> transaction_;
  uint32_t pending_ = 0;
  uint64_t stored_ = 0;
  std::optional<Clock::time_point> waitingSince_;
  Clock::time_point restedAt_ = Clock::now();
};

}  // namespace qrndata
