#include "tests/extended/TestTable.h"

#include "core/RecordBuffer.h"

namespace qrn::test {

TestTable::TestTable(const std::vector<Column>& columns, const std::vector<KeyColumns>& keys) {
  CopyText(info_.Name, "Orders");
  for (const Column& column : columns) AddColumn(column);
  for (const KeyColumns& key : keys) AddKey(key);
  info_.Fields = fields_.data();
  info_.FieldCount = info_.FieldCapacity = static_cast<int32_t>(fields_.size());
  info_.Segments = segments_.data();
  info_.SegmentCount = info_.SegmentCapacity = static_cast<int32_t>(segments_.size());
  info_.FileId = 7;
}

TestTable::~TestTable() { FreeRecordBuffer(info_); }

void TestTable::MakeBuffer(const std::string& bytes) {
  ASSERT_TRUE(AllocateRecordBuffer(info_, static_cast<int32_t>(bytes.size())));
  std::copy(bytes.begin(), bytes.end(), info_.RecordBuffer);
}

void TestTable::AddColumn(const Column& column) {
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

void TestTable::AddKey(const KeyColumns& key) {
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

}  // namespace qrn::test
