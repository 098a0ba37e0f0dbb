#include "tools/qrndata/TableFile.h"

namespace qrndata {

namespace {

struct FlagRow {
  uint16_t index;  // in index.ddf
  uint16_t file;   // in the data file's key specification, 0 for none
  const char* word;
};

// clang-format off
constexpr FlagRow kFlagRows[] = {
    {kIndexDuplicates,      btrieve::kDuplicates,      "duplicates"},
    {kIndexModifiable,      btrieve::kModifiable,      "modifiable"},
    {kIndexSequence,        btrieve::kSequence,        "collating sequence"},
    {kIndexNullAll,         btrieve::kNullAllSegments, "null when all segments are"},
    {kIndexContinues,       btrieve::kAnotherSegment,  ""},
    {kIndexCaseInsensitive, btrieve::kCaseInsensitive, "case-insensitive"},
    {kIndexDescending,      btrieve::kDescending,      "descending"},
    {kIndexNamed,           0,                         ""},
    {kIndexExtendedType,    btrieve::kExtendedType,    ""},
    {kIndexNullAny,         btrieve::kNullAnySegment,  "null when any segment is"},
};
// clang-format on

class BlockWriter {
 public:
  void Put8(size_t value) { bytes_.push_back(static_cast<uint8_t>(value)); }
  void Put16(size_t value) {
    Put8(value);
    Put8(value >> 8);
  }
  void PutZeros(size_t count) { bytes_.resize(bytes_.size() + count); }
  void Put(const btrieve::CollatingSequence& sequence) {
    bytes_.insert(bytes_.end(), sequence.block.begin(), sequence.block.end());
  }
  Bytes Take() { return std::move(bytes_); }

 private:
  Bytes bytes_;
};

void PutHead(BlockWriter& block, const Table& table) {
  block.Put16(FixedLength(table));
  block.Put16(table.pageSize);
  block.Put16(table.keys.size());
  block.PutZeros(4);
  block.Put16(table.fileFlags | (HasVariableRecords(table) ? btrieve::kVariableRecords : 0u));
  block.PutZeros(4);
}

void PutSegment(BlockWriter& block, const Table& table, const Segment& segment) {
  const qrn::DbFieldInfo* field = FindField(table, segment.fieldId);
  block.Put16(field == nullptr ? 0 : static_cast<size_t>(field->Offset) + 1);
  block.Put16(field == nullptr ? 0 : static_cast<size_t>(field->Size));
  block.Put16(FileKeyFlags(segment.flags) | btrieve::kExtendedType);
  block.PutZeros(4);
  block.Put8(field == nullptr ? 0 : static_cast<size_t>(field->Type));
  block.Put8(segment.nullValue);
  block.PutZeros(4);
}

}  // namespace

uint16_t FileKeyFlags(uint16_t indexFlags) {
  uint16_t flags = 0;
  for (const FlagRow& row : kFlagRows) {
    if ((indexFlags & row.index) != 0) flags |= row.file;
  }
  return flags;
}

Bytes CreateBlock(const Table& table) {
  BlockWriter block;
  PutHead(block, table);
  for (const Key& key : table.keys) {
    for (const Segment& segment : key.segments) PutSegment(block, table, segment);
  }
  if (table.sequence) block.Put(*table.sequence);
  return block.Take();
}

std::string DescribeKeyFlags(uint16_t indexFlags) {
  std::string words;
  for (const FlagRow& row : kFlagRows) {
    if ((indexFlags & row.index) == 0 || *row.word == '\0') continue;
    words.append(words.empty() ? "" : ", ").append(row.word);
  }
  return words;
}

}  // namespace qrndata
