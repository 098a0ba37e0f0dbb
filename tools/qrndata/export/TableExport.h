// One table on its way out: which records and fields, as which texts.
#pragma once

#include <string>
#include <vector>

#include "tools/qrndata/Dictionary.h"
#include "tools/qrndata/RecordImage.h"
#include "tools/qrndata/RecordScan.h"
#include "tools/qrndata/export/ExportPlace.h"
#include "tools/qrndata/export/RecordFilter.h"

namespace qrndata {

class TableExport {
 public:
  // Opens the data file. All must outlive this. Throws Failure for a file whose records would be
  // read from the wrong bytes, and for options that are not of the table.
  TableExport(const ExportOptions& options, const Streams& streams, const Dictionary& dictionary,
              const Table& table);

  // What is written of the table; names point to no other object.
  ExportedTable Described() const;
  void WriteTo(RecordWriter& writer);

  uint64_t Written() const noexcept { return written_; }
  // Says what of the records is not there as it is stored, and whether that is all of it.
  ExitCode Report() const;

 private:
  bool Encode(const FieldValues& values, TextValues& texts, uint32_t position);
  bool WriteRecord(RecordWriter& writer, const RecordScan& scan);
  Converted Encoded(const std::string& stored) const;
  void Tell(const std::string& problem);
  void TellBroken(const Converted& text, uint32_t position, size_t slot);

  const ExportOptions& options_;
  const Streams& streams_;
  qrn::QuorinSettings settings_;
  BtrFile file_;
  FileStat stat_;
  Table chosen_;
  RecordFilter filter_;
  RecordImage image_;
  int8_t key_ = kNoKey;
  TextValues texts_;
  uint64_t written_ = 0, leftOut_ = 0, broken_ = 0, told_ = 0;
};

}  // namespace qrndata
