// A table made of a list of columns: its description for the parsers, its buffer, and, on request,
// a data file behind it.
#pragma once

#include <initializer_list>

#include "core/DbEngine.h"
#include "core/DbTypes.h"
#include "core/RecordBuffer.h"
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
  TestTable(const std::vector<Column>& columns, const std::vector<KeyColumns>& keys = {}) {
    CopyText(info_.Name, "Orders");
    for (const Column& column : columns) AddColumn(column);
    for (const KeyColumns& key : keys) AddKey(key);
    info_.Fields = fields_.data();
    info_.FieldCount = info_.FieldCapacity = static_cast<int32_t>(fields_.size());
    info_.Segments = segments_.data();
    info_.SegmentCount = info_.SegmentCapacity = static_cast<int32_t>(segments_.size());
    info_.FileId = 7;
  }
  ~TestTable() { FreeRecordBuffer(info_); }

  DbTableInfo& Info() { return info_; }
  const DbFieldInfo& Field(int32_t position) const { return fields_.at(position); }

  // Gives the table a record buffer that holds exactly these bytes (at least 8, zeros behind).
  void MakeBuffer(const std::string& bytes) {
    ASSERT_TRUE(AllocateRecordBuffer(info_, static_cast<int32_t>(bytes.size())));
    std::copy(bytes.begin(), bytes.end(), info_.RecordBuffer);
  }

 private:
  void AddColumn(const Column& column) {
    DbFieldInfo field{};
    CopyText(field.Name, Utf8ToCodePage(column.name));
    field.Type = column.type;
    field.Size = column.size;
    field.Decimals = column.decimals;
    field.Offset = info_.RecordLength;
    field.FieldId = static_cast<int32_t>(fields_.size()) + 1;
    fields_.push_back(field);
    info_.RecordLength += column.size;
  }
  void AddKey(const KeyColumns& key) {
    for (size_t part = 0; part < key.columns.size(); ++part) {
      const DbFieldInfo& field = fields_.at(key.columns[part]);
      DbSegmentInfo segment{};
      segment.Offset = field.Offset;
      segment.Size = field.Size;
      segment.Type = field.Type;
      segment.FieldId = field.FieldId;
      segment.Part = static_cast<int32_t>(part);
      segment.Flags = key.flags | 256;
      if (part + 1 < key.columns.size()) segment.Flags |= kSegmentContinues;
      segments_.push_back(segment);
    }
  }

  std::vector<DbFieldInfo> fields_;
  std::vector<DbSegmentInfo> segments_;
  DbTableInfo info_{};
};

}  // namespace qrn::test
