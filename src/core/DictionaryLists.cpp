#include "core/DictionaryLists.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "core/DictionaryLookup.h"
#include "platform/CodePage.h"
#include "platform/Memory.h"

namespace qrn {
namespace {

constexpr int32_t kFieldBlock = 32;
constexpr int32_t kSegmentBlock = 20;

// Whether a segment goes by case nobody asks. The key's own number is not taken either: segments
// are counted as they come.
constexpr int32_t kSegmentFlagDropped = LexbaseIndexIgnoreCase;

template <class Entry>
Entry* NewEntries(int32_t count) {
  return static_cast<Entry*>(AllocateZeroed(static_cast<size_t>(count) * sizeof(Entry)));
}

// The next free entry, already counted; null without memory.
template <class Entry>
Entry* NextEntry(Entry*& entries, int32_t& count, int32_t& capacity, int32_t block) {
  if (count == capacity) {
    auto* grown = NewEntries<Entry>(capacity + block);
    if (grown == nullptr) return nullptr;
    std::copy_n(entries, count, grown);
    FreeMemory(std::exchange(entries, grown));
    capacity += block;
  }
  return &entries[count++];
}

template <class Entry>
void FreeList(Entry*& entries, int32_t& count, int32_t& capacity) {
  FreeMemory(std::exchange(entries, nullptr));
  count = 0;
  capacity = 0;
}

void FillField(DbFieldInfo& field, const FieldRow& row) {
  std::memcpy(field.Name, row.name, sizeof row.name);
  field.Type = row.type;
  field.Size = row.size;
  field.Offset = row.offset;
  field.FileId = row.fileId;
  field.FieldId = row.fieldId;
}

// Dictionaries of the nineties count parts from 1 and have no flag for a key that goes on: there a
// higher part does.
void JoinCountedParts(DbTableInfo& table) {
  const DbSegmentInfo* const begin = table.Segments;
  const DbSegmentInfo* const end = begin + table.SegmentCount;
  const auto isFromZero = [](const DbSegmentInfo& segment) { return segment.Part < 1; };
  if (table.SegmentCount < 2 || std::any_of(begin, end, isFromZero)) return;
  if (end[-1].Part == end[-2].Part + 1) {
    table.Segments[table.SegmentCount - 2].Flags |= LexbaseIndexContinues;
  }
}

}  // namespace

DbDictionary* NewDictionary(const char* directory) noexcept {
  ReleaseEndedDictionaries();
  auto* dictionary = NewEntries<DbDictionary>(1);
  if (dictionary == nullptr) return nullptr;
  dictionary->Tables = NewEntries<DbTableInfo>(kMaxTables + 1);
  if (dictionary->Tables == nullptr) {
    FreeMemory(dictionary);
    return nullptr;
  }
  CopyText(dictionary->DdfDir, directory);
  return dictionary;
}

bool AppendTable(DbDictionary& dictionary, const FileRow& row) noexcept {
  if (dictionary.TableCount == kMaxTables) return false;
  DbTableInfo& table = dictionary.Tables[dictionary.TableCount++];
  std::memcpy(table.Name, row.name, sizeof row.name);
  std::memcpy(table.Location, row.location, sizeof row.location);
  table.FileId = row.fileId;
  return true;
}

DbFieldInfo* AppendField(DbTableInfo& table, const FieldRow& row) noexcept {
  DbFieldInfo* field = NextEntry(table.Fields, table.FieldCount, table.FieldCapacity, kFieldBlock);
  if (field == nullptr) return nullptr;
  FillField(*field, row);
  field->Decimals = row.decimals;
  return field;
}

bool AppendNamedIndex(DbTableInfo& table, const FieldRow& row) noexcept {
  DbFieldInfo* index =
      NextEntry(table.NamedIndexes, table.NamedIndexCount, table.NamedIndexCapacity, kFieldBlock);
  if (index == nullptr) return false;
  FillField(*index, row);
  // Kept so: the flag word takes the place of the decimals, and Flags stays 0.
  index->Decimals = static_cast<int16_t>(row.flags);
  return true;
}

bool AppendSegment(DbTableInfo& table, const IndexRow& row) noexcept {
  DbSegmentInfo* segment =
      NextEntry(table.Segments, table.SegmentCount, table.SegmentCapacity, kSegmentBlock);
  if (segment == nullptr) return false;
  segment->FileId = row.fileId;
  segment->FieldId = row.fieldId;
  segment->Part = row.part;
  segment->Flags = static_cast<int16_t>(row.flags & ~kSegmentFlagDropped);
  if (const DbFieldInfo* field = DbFindFieldById(table, row.fieldId); field != nullptr) {
    segment->Offset = field->Offset;
    segment->Size = field->Size;
    segment->Type = field->Type;
  }
  JoinCountedParts(table);
  return true;
}

void SwapLists(DbTableInfo& left, DbTableInfo& right) noexcept {
  std::swap(left.Fields, right.Fields);
  std::swap(left.FieldCount, right.FieldCount);
  std::swap(left.FieldCapacity, right.FieldCapacity);
  std::swap(left.Segments, right.Segments);
  std::swap(left.SegmentCount, right.SegmentCount);
  std::swap(left.SegmentCapacity, right.SegmentCapacity);
  std::swap(left.NamedIndexes, right.NamedIndexes);
  std::swap(left.NamedIndexCount, right.NamedIndexCount);
  std::swap(left.NamedIndexCapacity, right.NamedIndexCapacity);
}

void FreeLists(DbTableInfo& table) noexcept {
  FreeList(table.Fields, table.FieldCount, table.FieldCapacity);
  FreeList(table.Segments, table.SegmentCount, table.SegmentCapacity);
  FreeList(table.NamedIndexes, table.NamedIndexCount, table.NamedIndexCapacity);
}

}  // namespace qrn
