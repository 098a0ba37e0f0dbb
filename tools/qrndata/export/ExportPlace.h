// Where the tables of an export go: files of text, a database, a workbook.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "tools/qrndata/Verbs.h"
#include "tools/qrndata/export/RecordWriter.h"

namespace qrndata {

// A table that is to be written.
struct ExportedTable {
  const Table& table;              // with the fields that are written
  std::vector<std::string> names;  // of the fields, in the encoding of the output
  uint64_t most;                   // no more records than these
};

class ExportPlace {
 public:
  virtual ~ExportPlace() = default;

  // The next table: between its Begin and End come the records. The writer is good until the next
  // call; the table stays to the end. Throws Failure.
  virtual RecordWriter& Next(const ExportedTable& table) = 0;
  // Puts everything in place: before it nothing has changed. Throws Failure.
  virtual void Finish() = 0;
};

// Every file that would be written; none for the standard output.
std::vector<std::filesystem::path> OutputsOf(const ExportOptions& options,
                                             const std::vector<ExportedTable>& tables);

// CSV or JSON: the standard output or one file for one table, a folder of files for several.
std::unique_ptr<ExportPlace> MakeTextPlace(const ExportOptions& options, const Streams& streams,
                                           const std::vector<ExportedTable>& tables);
// One SQLite database: every table with its types, primary key and indexes, in one transaction.
// `streams` is told of keys that it does not take.
std::unique_ptr<ExportPlace> MakeSqlitePlace(const ExportOptions& options, const Streams& streams);
// One Excel workbook: a sheet for each table. Throws Failure when a table has more records or
// fields than a sheet has room for.
std::unique_ptr<ExportPlace> MakeWorkbookPlace(const ExportOptions& options,
                                               const std::vector<ExportedTable>& tables);

}  // namespace qrndata
