// A table as SQL: columns with types, primary key, indexes.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "tools/qrndata/export/ExportPlace.h"

namespace qrndata {

// Names as statements have them, in quotes. Each is given once, whatever the case of its letters.
class SqlNames {
 public:
  // `name`, with a number behind it where it is taken already or SQLite keeps it for itself.
  std::string Take(const std::string& name);

 private:
  std::set<std::string> taken_;
};

struct SqlIndex {
  std::string onColumns;  // ""name" ON "table" ("column" DESC)"
  std::string key;        // as the dictionary's users name it
  bool isUnique;
};

struct SqlShape {
  std::string create, insert;
  std::vector<SqlIndex> indexes;  // to be made when the rows are there
};

// Columns: whole numbers INTEGER; floats REAL; decimals of up to 15 digits
// DECIMAL(digits,decimals), which compares and adds up as a number, of more digits without a type;
// texts, dates and times TEXT. The primary key is the first key without duplicates that every
// record is in. `names` are the database's.
SqlShape ShapeOf(const ExportedTable& table, SqlNames& names);

}  // namespace qrndata
