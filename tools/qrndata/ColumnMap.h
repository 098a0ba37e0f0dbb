// Which field each column of a CSV file goes into.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/qrndata/CsvReader.h"
#include "tools/qrndata/TableModel.h"

namespace qrndata {

// One entry of --columns: "CSV name=Field", "CSV name=" for a column that is left out, and, where
// the file has no header, "Field" or nothing for each column in turn. UTF-8.
struct ColumnRule {
  std::string column;  // empty in a file without a header
  std::string field;   // empty: left out
};

// Throws Failure (kUsage). Entries are parted by commas; those with one in them stand in quotes.
std::vector<ColumnRule> ParseColumnRules(const std::string& text, bool hasHeader);

// The field's slot for each column, nothing for one that is left out.
using ColumnSlots = std::vector<std::optional<size_t>>;

// By the first row. A column without a rule is named like its field (Names.h). Throws Failure
// (kBadInput) that names the place, also for a rule without a column.
ColumnSlots MapHeader(const Table& table, const std::vector<std::string>& header,
                      const std::vector<Position>& places, const std::string& file,
                      const std::vector<ColumnRule>& rules);

// Without a header: by the rules, without any by the fields' order.
ColumnSlots MapInOrder(const Table& table, const std::vector<ColumnRule>& rules);

// Fields as a list, "Field,Field,...": their slots. Throws Failure that names `option`, also for a
// field that stands there twice.
std::vector<size_t> ParseFieldList(const Table& table, const std::string& text,
                                   const std::string& option);

}  // namespace qrndata
