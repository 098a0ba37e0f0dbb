#include "btrieve/legacy/OldHead.h"

#include <algorithm>

#include "btrieve/legacy/Damage.h"
#include "btrieve/legacy/Layout.h"

namespace btrieve::legacy {
namespace {

uint16_t Word(const uint8_t* at) noexcept { return LoadValue<uint16_t>(at); }

std::string KeyName(size_t key) { return "key " + std::to_string(key); }

bool IsPageSize(uint16_t size) noexcept {
  return size >= kSmallestPage && size <= kLargestPage && size % kSmallestPage == 0;
}

uint16_t VersionIn(ByteView file) noexcept {
  const auto stored = static_cast<int16_t>(Word(&file[inhead::kVersion]));
  return static_cast<uint16_t>(stored < 0 ? -stored : stored);
}

void CheckKind(ByteView file) {
  if (!IsLikeOldFile(file)) throw Damage(kNotABtrieveFile, "not a data file");
  const uint16_t version = VersionIn(file);
  if (version != kVersion) {
    ThrowNotRead("not a data file, or one of format " + std::to_string(version >> 8) + "." +
                 std::to_string(version & 0xFF));
  }
  if (file.size() > kLargestOldFile) ThrowNotRead(kTooLargeOldFile);
}

void CheckSize(ByteView file, uint16_t pageSize, std::vector<std::string>* faults) {
  if (file.size() < pageSize) ThrowDamage("the file ends within its first page");
  const uint32_t pages = LoadHighLow(&file[inhead::kPages]);
  if (uint64_t{pages} * pageSize == file.size()) return;
  const std::string text = "page 0 says that there are " + std::to_string(pages) + " pages of " +
                           std::to_string(pageSize) + " bytes, the file has " +
                           std::to_string(file.size()) + " bytes";
  if (!faults) ThrowDamage(text);
  faults->push_back(text);
}

void CheckSegment(const KeySegment& segment, uint16_t recordLength, const std::string& key) {
  if (segment.length == 0 || segment.offset + segment.length > recordLength) {
    ThrowDamage("page 0: " + key + " does not lie in the record");
  }
  if (segment.Has(kSequence))
    ThrowNotRead("a version 5 file whose " + key + " has a collating sequence");
  if (segment.Has(kRepeating) && segment.Has(kDuplicates)) {
    ThrowNotRead("a version 5 file whose " + key + " has duplicates without pointers");
  }
  const KeyTypeRow* type = FindKeyType(static_cast<uint8_t>(segment.Type()));
  if (!type || !type->Takes(segment.length)) {
    ThrowNotRead("a version 5 file whose " + key + " is of type " +
                 std::to_string(static_cast<int>(segment.Type())) + " with " +
                 std::to_string(segment.length) + " bytes");
  }
}

KeySegment SegmentAt(const uint8_t* at) noexcept {
  KeySegment segment;
  segment.offset = Word(at + indescriptor::kOffset);
  segment.length = Word(at + indescriptor::kLength);
  segment.flags = Word(at + indescriptor::kFlags);
  segment.givenType = at[indescriptor::kType];
  segment.nullValue = at[indescriptor::kNullValue];
  return segment;
}

OldKey KeyAt(const uint8_t* at) noexcept {
  OldKey key;
  key.root = LoadHighLow(at + indescriptor::kRoot);
  key.values = LoadHighLow(at + indescriptor::kValues);
  key.keyLength = Word(at + indescriptor::kKeyLength);
  key.entryLength = Word(at + indescriptor::kEntryLength);
  key.mostEntries = Word(at + indescriptor::kMostEntries);
  key.pointers = Word(at + indescriptor::kPointers);
  key.duplicates = (Word(at + indescriptor::kFlags) & kDuplicates) != 0;
  return key;
}

// Takes the descriptors off the page, key by key.
class Descriptors {
 public:
  Descriptors(ByteView file, OldHead& head) : page_(file.first(head.spec.pageSize)), head_(head) {}

  void TakeKey() {
    const size_t number = head_.keys.size();
    KeySpec spec;
    spec.number = static_cast<uint8_t>(number);
    head_.keys.push_back(KeyAt(Peek()));
    do {
      const KeySegment segment = SegmentAt(Peek());
      CheckSegment(segment, head_.spec.recordLength, KeyName(number));
      spec.segments.push_back(segment);
      at_ += indescriptor::kSize;
      ++taken_;
    } while (spec.segments.back().Has(kAnotherSegment));
    CheckKey(head_.keys.back(), spec);
    head_.spec.keys.push_back(std::move(spec));
  }

 private:
  const uint8_t* Peek() const {
    if (taken_ == kMostKeys || at_ + indescriptor::kSize > page_.size()) {
      ThrowDamage("page 0: there are too many key segments");
    }
    return &page_[at_];
  }

  void CheckKey(const OldKey& key, const KeySpec& spec) const {
    const size_t own = kEntryChild + kEntryRecord * (key.duplicates ? 2 : 1);
    const bool fits = key.keyLength == spec.Length() && key.keyLength <= kMaxKeyLength &&
                      key.entryLength == key.keyLength + own &&
                      key.mostEntries == (page_.size() - inpage::kIndexHead) / key.entryLength;
    if (!fits) ThrowDamage("page 0: the lengths of " + KeyName(spec.number) + " do not agree");
    const bool hasRoom =
        key.pointers >= head_.spec.recordLength && key.pointers + kPointersSize <= head_.slotLength;
    if (key.duplicates && !hasRoom) {
      ThrowDamage("page 0: the duplicates of " + KeyName(spec.number) + " have no room");
    }
  }

  ByteView page_;
  OldHead& head_;
  size_t at_ = inhead::kDescriptors;
  size_t taken_ = 0;
};

void CheckSlot(const OldHead& head) {
  const auto duplicates = std::count_if(head.keys.begin(), head.keys.end(),
                                        [](const OldKey& key) { return key.duplicates; });
  const size_t least = head.spec.recordLength + kPointersSize * static_cast<size_t>(duplicates);
  if (head.slotLength == least + kVariablePointer) {
    ThrowNotRead("a version 5 file with records of variable length");
  }
  const bool fits = head.spec.recordLength > 0 && head.slotLength >= least &&
                    head.slotLength >= kDeletedLink &&
                    head.slotLength <= head.spec.pageSize - inpage::kDataHead;
  if (!fits) ThrowDamage("page 0: the lengths of records and slots do not agree");
  if (head.neverUsed > head.spec.pageSize - inpage::kDataHead) {
    ThrowDamage("page 0: more of the last data page is unused than there is");
  }
}

}  // namespace

bool IsLikeOldFile(ByteView start) noexcept {
  return start.size() >= kOldStart && LoadHighLow(&start[inhead::kPageNumber]) == 0 &&
         IsPageSize(Word(&start[inhead::kPageSize]));
}

bool IsOldFile(ByteView start) noexcept {
  return IsLikeOldFile(start) && VersionIn(start) == kVersion;
}

OldHead ReadHead(ByteView file, std::vector<std::string>* faults) {
  CheckKind(file);
  OldHead read;
  read.spec.pageSize = Word(&file[inhead::kPageSize]);
  CheckSize(file, read.spec.pageSize, faults);
  read.spec.version = kVersion >> 4 & 0xFF;
  read.spec.recordLength = Word(&file[inhead::kRecordLength]);
  read.isOwned = (file[inhead::kVersion + 1] & 0x80) != 0;
  read.slotLength = Word(&file[inhead::kSlotLength]);
  read.neverUsed = Word(&file[inhead::kNeverUsed]);
  read.firstDeleted = LoadHighLow(&file[inhead::kFirstDeleted]);
  read.records = LoadHighLow(&file[inhead::kRecords]);
  read.lastDataPage = LoadHighLow(&file[inhead::kLastDataPage]);
  read.pages = LoadHighLow(&file[inhead::kPages]);
  const size_t keys = Word(&file[inhead::kKeys]);
  if (keys > kMostKeys) ThrowDamage("page 0: there are more than 24 keys");
  Descriptors descriptors(file, read);
  while (read.keys.size() < keys) descriptors.TakeKey();
  CheckSlot(read);
  return read;
}

}  // namespace btrieve::legacy
