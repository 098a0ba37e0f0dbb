// Records as rows of a file: lines of CSV or JSON here.
#pragma once

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "tools/qrndata/TableModel.h"

namespace qrndata {

// Nothing for null; UTF-8, or code page 932 where the file is to be that.
using TextValues = std::vector<std::optional<std::string>>;

class RecordWriter {
 public:
  virtual ~RecordWriter() = default;

  virtual void Begin() {}
  // Why the file has no room for the record, which is left out; empty: it was written.
  virtual std::string Write(const TextValues& values) = 0;
  virtual void End() {}
};

// `names` are the fields' names in the file's encoding. The table and stream must outlive the
// writer. CSV quotes an empty text where a missing cell would be read as null.
std::unique_ptr<RecordWriter> MakeCsvWriter(std::ostream& out, const Table& table,
                                            std::vector<std::string> names);
// An array of objects, one a line; numbers and logicals without quotes.
std::unique_ptr<RecordWriter> MakeJsonWriter(std::ostream& out, const Table& table,
                                             std::vector<std::string> names);
// An object a line and nothing round them.
std::unique_ptr<RecordWriter> MakeJsonLinesWriter(std::ostream& out, const Table& table,
                                                  std::vector<std::string> names);

// A cell as CSV has it.
std::string CsvText(const std::string& text, bool quoteEmpty);

}  // namespace qrndata
