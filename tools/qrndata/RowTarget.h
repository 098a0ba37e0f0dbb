// A table's data file, open for an import, with what is said of rows that it refuses.
#pragma once

#include <filesystem>
#include <string>

#include "fields/QuorinSettings.h"
#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/FileMatch.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/RecordImage.h"
#include "tools/qrndata/RowStore.h"
#include "tools/qrndata/TableModel.h"

namespace qrndata {

class RowTarget {
 public:
  // `table` must outlive this. Throws Failure when the file cannot be opened, has other records
  // than the table, or the table's records cannot be written (a variable field that is not the
  // last).
  RowTarget(const std::filesystem::path& directory, const Table& table, Access access);

  BtrFile& File() noexcept { return file_; }
  const FileStat& Stat() const noexcept { return stat_; }
  const FileMatch& Match() const noexcept { return match_; }
  const Table& TheTable() const noexcept { return table_; }
  RecordImage& Image() noexcept { return image_; }

  // Checks the texts and puts them into the form that is stored.
  Refusal Check(FieldValues& values) const;
  // A record that forms could not read.
  static Refusal CheckLength(const Bytes& record);

  // Of a record that was refused with status 5: which key, and which field. `own` is what stands in
  // the file for it, whose values are no duplicates; null for a new record.
  Refusal ExplainDuplicate(const Bytes& record, const Bytes* own = nullptr);
  Refusal RefuseDuplicate(size_t key, Message why) const;
  // Throws Failure (kSystem) when what was written is not known to be on stable storage.
  void Close();
  // "table "T": status 2 (...)".
  Failure FailureOf(Status status) const;

 private:
  const Table& table_;
  qrn::QuorinSettings settings_;
  BtrFile file_;
  FileStat stat_;
  FileMatch match_;
  RecordImage image_;
};

}  // namespace qrndata
