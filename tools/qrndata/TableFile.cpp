#include "tools/qrndata/TableFile.h"

#include <algorithm>
#include <array>

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

// What two descriptions of one segment must agree in: the rest only says how they are written.
constexpr uint16_t kComparedFlags =
    btrieve::kDuplicates | btrieve::kModifiable | btrieve::kSequence | btrieve::kNullAllSegments |
    btrieve::kCaseInsensitive | btrieve::kDescending | btrieve::kNullAnySegment;

uint16_t FileKeyFlags(uint16_t indexFlags) {
  uint16_t flags = 0;
  for (const FlagRow& row : kFlagRows) {
    if ((indexFlags & row.index) != 0) flags |= row.file;
  }
  return flags;
}

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

std::string NumberPair(const char* what, size_t inFile, size_t inDictionary) {
  return std::string(what) + " is " + std::to_string(inFile) + " in the file and " +
         std::to_string(inDictionary) + " in the dictionary";
}

void CompareSegments(const Table& table, size_t number, const btrieve::KeySpec& inFile,
                     std::vector<std::string>& out) {
  const std::string name = "key " + std::to_string(number);
  const std::vector<Segment>& segments = table.keys[number].segments;
  if (inFile.segments.size() != segments.size()) {
    out.push_back(NumberPair((name + ": the number of segments").c_str(), inFile.segments.size(),
                             segments.size()));
    return;
  }
  for (size_t at = 0; at < segments.size(); ++at) {
    const qrn::DbFieldInfo* field = FindField(table, segments[at].fieldId);
    const btrieve::KeySegment& segment = inFile.segments[at];
    if (field == nullptr) continue;
    const std::string place =
        name + ", segment " + std::to_string(at) + ", field " + Quoted(field->Name) + ": ";
    const auto compare = [&](const char* what, size_t left, size_t right) {
      if (left != right) out.push_back(place + NumberPair(what, left, right));
    };
    compare("the offset", segment.offset, static_cast<size_t>(field->Offset));
    compare("the length", segment.length, static_cast<size_t>(field->Size));
    compare("the type", static_cast<size_t>(segment.Type()), static_cast<size_t>(field->Type));
    compare("the flag word", segment.flags & kComparedFlags,
            FileKeyFlags(segments[at].flags) & kComparedFlags);
  }
}

}  // namespace

Bytes CreateBlock(const Table& table) {
  BlockWriter block;
  PutHead(block, table);
  for (const Key& key : table.keys) {
    for (const Segment& segment : key.segments) PutSegment(block, table, segment);
  }
  if (table.sequence) block.Put(*table.sequence);
  return block.Take();
}

std::vector<std::string> Differences(const Table& table, const btrieve::FileSpec& file) {
  std::vector<std::string> out;
  if (!file.IsVariable() && file.recordLength != RecordLength(table)) {
    out.push_back(NumberPair("the record length", file.recordLength, RecordLength(table)));
  }
  if (file.IsVariable() && file.recordLength > FixedLength(table)) {
    out.push_back(NumberPair("the fixed part", file.recordLength, FixedLength(table)));
  }
  if (!file.IsVariable() && HasVariableRecords(table)) {
    out.emplace_back("the file has fixed records, but a field of the table has no fixed length");
  }
  if (file.keys.size() != table.keys.size()) {
    out.push_back(NumberPair("the number of keys", file.keys.size(), table.keys.size()));
  }
  for (size_t number = 0; number < std::min(file.keys.size(), table.keys.size()); ++number) {
    CompareSegments(table, number, file.keys[number], out);
  }
  return out;
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
