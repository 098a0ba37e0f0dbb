#include "tools/qrndata/TableFile.h"

#include "tools/qrndata/Messages.h"

namespace qrndata {

namespace {

struct FlagRow {
  uint16_t index;  // in index.ddf
  uint16_t file;   // in the data file's key specification, 0 for none
  std::optional<Message> word;
};

// clang-format off
constexpr FlagRow kFlagRows[] = {
    {kIndexDuplicates,      btrieve::kDuplicates,      Message::FlagDuplicates},
    {kIndexModifiable,      btrieve::kModifiable,      Message::FlagModifiable},
    {kIndexSequence,        btrieve::kSequence,        Message::FlagSequence},
    {kIndexNullAll,         btrieve::kNullAllSegments, Message::FlagNullAll},
    {kIndexContinues,       btrieve::kAnotherSegment,  {}},
    {kIndexCaseInsensitive, btrieve::kCaseInsensitive, Message::FlagNoCase},
    {kIndexDescending,      btrieve::kDescending,      Message::FlagDescending},
    {kIndexNamed,           0,                         {}},
    {kIndexExtendedType,    btrieve::kExtendedType,    {}},
    {kIndexNullAny,         btrieve::kNullAnySegment,  Message::FlagNullAny},
};
// clang-format on

BtrFileSpec HeadOf(const Table& table) {
  BtrFileSpec head{};
  head.recordLength = static_cast<uint16_t>(FixedLength(table));
  head.pageSize = table.pageSize;
  head.keyCount = static_cast<uint8_t>(table.keys.size());
  head.flags =
      static_cast<uint16_t>(table.fileFlags | (HasVariableRecords(table) ? BtrFileVariable : 0));
  return head;
}

BtrKeySpec SpecOf(const Table& table, const Segment& segment) {
  BtrKeySpec spec{};
  spec.flags = static_cast<uint16_t>(FileKeyFlags(segment.flags) | BtrKeyExtendedType);
  spec.nullValue = segment.nullValue;
  const qrn::DbFieldInfo* field = FindField(table, segment.fieldId);
  if (field == nullptr) return spec;
  spec.position = static_cast<uint16_t>(field->Offset + 1);
  spec.length = static_cast<uint16_t>(field->Size);
  spec.type = static_cast<uint8_t>(field->Type);
  return spec;
}

template <class Part>
void Append(Bytes& bytes, const Part& part) {
  const auto* begin = reinterpret_cast<const uint8_t*>(&part);
  bytes.insert(bytes.end(), begin, begin + sizeof part);
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
  Bytes block;
  Append(block, HeadOf(table));
  for (const Key& key : table.keys) {
    for (const Segment& segment : key.segments) Append(block, SpecOf(table, segment));
  }
  if (table.sequence) Append(block, table.sequence->block);
  return block;
}

std::string DescribeKeyFlags(uint16_t indexFlags) {
  std::string words;
  for (const FlagRow& row : kFlagRows) {
    if ((indexFlags & row.index) == 0 || !row.word) continue;
    words.append(words.empty() ? "" : ", ").append(Say(*row.word));
  }
  return words;
}

}  // namespace qrndata
