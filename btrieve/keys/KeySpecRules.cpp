// The rules of a specification. Limits of the page are kept although the storage could do more:
// a file made here must be one that every record manager would make.
#include "btrieve/keys/KeySpecRules.h"

#include <algorithm>
#include <iterator>

namespace btrieve {
namespace {

constexpr int kPageOverhead = 8;
constexpr int kLinkedPointer = 8;    // bytes a linked-duplicates key takes from each record
constexpr int kVariablePointer = 4;  // bytes a variable-length file takes from each record
constexpr int kShortestRecord = 4;
constexpr size_t kIndexPageHead = 12;
constexpr size_t kEntriesAPage = 8;
constexpr size_t kUniqueEntry = 8;      // bytes beside the value: record and child page
constexpr size_t kDuplicateEntry = 12;  // first record, last record, child page

struct PageRow {
  uint16_t size;
  uint8_t segments;
};

constexpr PageRow kPages[] = {{512, 8},   {1024, 23}, {1536, 24},  {2048, 54},  {2560, 54},
                              {3072, 54}, {3584, 54}, {4096, 119}, {8192, 119}, {16384, 119}};

const PageRow* FindPage(uint16_t size) {
  const auto row = std::find_if(std::begin(kPages), std::end(kPages),
                                [size](const PageRow& page) { return page.size == size; });
  return row == std::end(kPages) ? nullptr : row;
}

bool IsLinked(const KeySpec& key) {
  return key.AllowsDuplicates() && !key.segments[0].Has(kRepeating);
}

int LongestRecord(const FileSpec& file) {
  const auto linked = std::count_if(file.keys.begin(), file.keys.end(), IsLinked);
  return file.pageSize - kPageOverhead -
         kLinkedPointer * static_cast<int>(linked + file.reservedPointers) -
         (file.IsVariable() ? kVariablePointer : 0);
}

// The flags that a key's segments must share; repeating says nothing without duplicates.
uint16_t SharedFlags(const KeySegment& segment) {
  const uint16_t shared = kDuplicates | kModifiable | kNullAllSegments | kNullAnySegment;
  return segment.flags & (segment.Has(kDuplicates) ? shared | kRepeating : shared);
}

bool FlagsAgree(const KeySpec& key) {
  return std::all_of(key.segments.begin(), key.segments.end(), [&](const KeySegment& segment) {
    return SharedFlags(segment) == SharedFlags(key.segments[0]);
  });
}

Status CheckSegment(const FileSpec& file, const KeySegment& segment) {
  const KeyTypeRow* type = FindKeyType(static_cast<uint8_t>(segment.Type()));
  if (!type) return kKeyType;
  if (segment.Has(kSequence) && !type->isString) return kKeyType;
  if (!type->Takes(segment.length)) return kKeyLength;
  if (segment.offset + segment.length > file.recordLength) return kKeyPosition;
  if (!segment.Has(kSequence)) return kOk;
  const bool known =
      segment.sequence >= 0 && static_cast<size_t>(segment.sequence) < file.sequences.size();
  return known ? kOk : kCollatingSequence;
}

bool FitsPage(const FileSpec& file, const KeySpec& key) {
  const size_t entry = key.Length() + (key.AllowsDuplicates() ? kDuplicateEntry : kUniqueEntry);
  return key.Length() <= 255 && entry * kEntriesAPage <= file.pageSize - kIndexPageHead;
}

bool Overlap(const KeySegment& a, const KeySegment& b) {
  return a.offset < b.offset + b.length && b.offset < a.offset + a.length;
}

// The same field as a plain integer of a later key.
bool RecursAsInteger(const KeySegment& counter, const KeySegment& other) {
  const bool integer = other.Type() == KeyType::Integer || other.Type() == KeyType::UnsignedBinary;
  return integer && other.offset == counter.offset && other.length == counter.length;
}

bool CountsAlone(const FileSpec& file, const KeySpec& key) {
  const KeySegment& counter = key.segments[0];
  for (const KeySpec& other : file.keys) {
    if (other.number == key.number) continue;
    for (const KeySegment& segment : other.segments) {
      if (!Overlap(counter, segment)) continue;
      if (other.number < key.number || !RecursAsInteger(counter, segment)) return false;
    }
  }
  return true;
}

Status CheckAutoIncrement(const FileSpec& file, const KeySpec& key) {
  const bool counts = std::any_of(
      key.segments.begin(), key.segments.end(),
      [](const KeySegment& segment) { return segment.Type() == KeyType::AutoIncrement; });
  if (!counts) return kOk;
  const bool plain =
      key.segments.size() == 1 && !key.AllowsDuplicates() && !key.segments[0].Has(kDescending);
  return plain && CountsAlone(file, key) ? kOk : kAutoIncrement;
}

Status CheckKey(const FileSpec& file, const KeySpec& key) {
  if (!FlagsAgree(key)) return kInconsistentKeyFlags;
  for (const KeySegment& segment : key.segments) {
    if (const Status status = CheckSegment(file, segment)) return status;
  }
  return FitsPage(file, key) ? CheckAutoIncrement(file, key) : kKeyLength;
}

// Ascending and within range; a key has at least one segment.
bool NumbersAreGood(const FileSpec& file) {
  int last = -1;
  return std::all_of(file.keys.begin(), file.keys.end(), [&](const KeySpec& key) {
    const bool good = key.number > last && key.number <= kHighestKeyNumber;
    last = key.number;
    return good && !key.segments.empty();
  });
}

}  // namespace

Status CheckSpec(const FileSpec& file) {
  const PageRow* page = FindPage(file.pageSize);
  if (!page) return kPageSize;
  if (!NumbersAreGood(file) || file.SegmentCount() > page->segments) return kNumberOfKeys;
  if (file.recordLength < kShortestRecord || file.recordLength > LongestRecord(file)) {
    return kRecordLength;
  }
  for (const KeySpec& key : file.keys) {
    if (const Status status = CheckKey(file, key)) return status;
  }
  return kOk;
}

}  // namespace btrieve
