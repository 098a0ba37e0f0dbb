// Rows of texts into a table, a transaction for each batch.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "fields/QuorinSettings.h"
#include "tools/qrndata/BtrFile.h"
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
  // transaction; 0 checks rows, their unique keys included, without storing any. Throws Failure
  // when the file cannot be opened or the table's records cannot be written (a variable field that
  // is not the last).
  RowImporter(const std::filesystem::path& directory, const Table& table, uint32_t batch);

  // Stores one row: code page 932, one value a field, nothing for null (an empty value where the
  // field cannot be null). Throws Failure when the record manager refuses more than this row; the
  // batch is undone then.
  Refusal Put(FieldValues& values);

  // Ends the last batch. Throws Failure when it could not be written.
  void Finish();

  // Rows of finished batches: these are there whatever comes.
  uint64_t Stored() const noexcept { return stored_; }

 private:
  Refusal Check(FieldValues& values) const;
  Refusal Store(Bytes& record);
  Refusal ExplainDuplicate(const Bytes& record);
  Refusal RefuseDuplicate(size_t key, const char* why) const;
  Refusal Try(Bytes& record);
  void Commit();

  const Table& table_;
  qrn::QuorinSettings settings_;
  uint32_t batch_;
  BtrFile file_;
  FileStat stat_;
  RecordImage image_;
  std::optional<UniqueValues> unique_;  // where nothing is stored
  std::optional<Transaction> transaction_;
  uint32_t pending_ = 0;
  uint64_t stored_ = 0;
};

}  // namespace qrndata
