// A table made of a list of columns: its description for the parsers, its buffer, and, on request,
// a data file behind it.
#pragma once

#include <initializer_list>

#include "core/DbEngine.h"
#include "core/DbTypes.h"
#include "fields/QuorinSettings.h"
#include "tests/extended/Hex.h"
#include "tests/extended/ShownMessages.h"
#include "tests/support/Test.h"

namespace qrn::test {

struct Column {
  std::string name;  // UTF-8
  FieldType type;
  int32_t size;
  int32_t decimals = 0;
};

// One key: positions of its columns, and the flags of each segment.
struct KeyColumns {
  std::vector<int32_t> columns;
  int32_t flags = 3;  // duplicates, modifiable
};

class TestTable : Pinned {
 public:
  TestTable(const std::vector<Column>& columns, const std::vector<KeyColumns>& keys = {});
  ~TestTable();

  DbTableInfo& Info() { return info_; }
  const DbFieldInfo& Field(int32_t position) const { return fields_.at(position); }

  // Gives the table a record buffer that holds exactly these bytes (at least 8, zeros behind).
  void MakeBuffer(const std::string& bytes);

 private:
  void AddColumn(const Column& column);
  void AddKey(const KeyColumns& key);

  std::vector<DbFieldInfo> fields_;
  std::vector<DbSegmentInfo> segments_;
  DbTableInfo info_{};
};

}  // namespace qrn::test
