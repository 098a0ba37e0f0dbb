// Reading the data blocks of Create and Create Index.
#include <algorithm>

#include "btrieve/keys/KeySpec.h"
#include "btrieve/keys/KeySpecRules.h"
#include "btrieve/system/ByteReader.h"

namespace btrieve {
namespace {

// Slots are one byte in the stored form, of which one value means "none".
constexpr size_t kMostSequences = 255;
constexpr int kGivenNumber = 128;  // a key number of 128 + n asks for n

KeySegment ReadSegment(ByteReader& reader, uint8_t& number) {
  KeySegment segment;
  // Position 0 becomes 65535, which lies outside every record.
  segment.offset = static_cast<uint16_t>(reader.Take<uint16_t>() - 1);
  segment.length = reader.Take<uint16_t>();
  segment.flags = reader.Take<uint16_t>();
  reader.Skip(4);
  segment.givenType = reader.Take<uint8_t>();
  segment.nullValue = reader.Take<uint8_t>();
  reader.Skip(2);
  number = reader.Take<uint8_t>();
  segment.givenSequence = reader.Take<uint8_t>();
  return segment;
}

// Reads segments to the first that none follows; the key's number is that of its first segment.
// 22 when the data ends before a segment of the key, 26 when it ends where another should follow.
Status ReadKey(ByteReader& reader, KeySpec& key) {
  do {
    if (reader.Rest().size() < kSpecificationSize) {
      return key.segments.empty() ? kDataBufferLength : kNumberOfKeys;
    }
    uint8_t number = 0;
    key.segments.push_back(ReadSegment(reader, number));
    if (key.segments.size() == 1) key.number = number;
  } while (key.segments.back().Has(kAnotherSegment));
  return kOk;
}

bool StandsASequence(std::span<const uint8_t> bytes) {
  return bytes.size() >= kSequenceSize && bytes[0] == kSequenceMark;
}

// The sequences at the end of a block, as far as they are whole and of the known form.
std::vector<CollatingSequence> ReadSequences(ByteReader& reader) {
  std::vector<CollatingSequence> sequences;
  while (StandsASequence(reader.Rest()) && sequences.size() < kMostSequences) {
    const auto block = reader.TakeBytes(kSequenceSize);
    std::copy(block.begin(), block.end(), sequences.emplace_back().block.begin());
  }
  return sequences;
}

// Gives each segment that asks for a sequence its slot; `slots` maps the numbers that the block
// counts by to slots of the file.
void ChooseSequences(KeySpec& key, std::span<const int16_t> slots) {
  for (KeySegment& segment : key.segments) {
    if (!segment.Has(kSequence)) continue;
    const size_t number = segment.Has(kCaseInsensitive) ? segment.givenSequence : 0;
    segment.sequence = number < slots.size() ? slots[number] : int16_t{kNoSequence};
  }
}

std::vector<int16_t> SlotsInOrder(size_t count) {
  std::vector<int16_t> slots(count);
  for (size_t i = 0; i < count; ++i) slots[i] = static_cast<int16_t>(i);
  return slots;
}

uint8_t ReadHead(ByteReader& reader, FileSpec& file) {
  file.recordLength = reader.Take<uint16_t>();
  file.pageSize = reader.Take<uint16_t>();
  const uint8_t keyCount = reader.Take<uint8_t>();
  const uint8_t version = reader.Take<uint8_t>();
  if (version != 0) file.version = version;
  reader.Skip(4);
  file.flags = reader.Take<uint16_t>();
  const uint8_t reserved = reader.Take<uint8_t>();
  if (file.flags & kReservePointers) file.reservedPointers = reserved;
  reader.Skip(1);
  file.preallocatedPages = reader.Take<uint16_t>();
  return keyCount;
}

Status ReadKeys(ByteReader& reader, uint8_t keyCount, FileSpec& file) {
  for (int i = 0; i < keyCount; ++i) {
    KeySpec key;
    if (const Status status = ReadKey(reader, key)) return status;
    if (!(file.flags & kKeyNumbersGiven)) key.number = static_cast<uint8_t>(i);
    file.keys.push_back(std::move(key));
  }
  std::stable_sort(file.keys.begin(), file.keys.end(),
                   [](const KeySpec& a, const KeySpec& b) { return a.number < b.number; });
  return kOk;
}

// The slot of a sequence in the file, where an equal one is used again. -1 when there is no room.
int16_t SlotOf(const CollatingSequence& sequence, FileSpec& file) {
  const auto known = std::find(file.sequences.begin(), file.sequences.end(), sequence);
  const auto slot = static_cast<int16_t>(known - file.sequences.begin());
  if (known != file.sequences.end()) return slot;
  if (file.sequences.size() >= kMostSequences) return kNoSequence;
  file.sequences.push_back(sequence);
  return slot;
}

int LowestFreeNumber(const FileSpec& file) {
  int number = 0;
  while (file.FindKey(number)) ++number;
  return number;
}

// The number that the caller asks for, -1 for none of them.
int WantedNumber(int8_t keyNumber, const FileSpec& file) {
  if (keyNumber == 0) return LowestFreeNumber(file);
  const int number = static_cast<uint8_t>(keyNumber) - kGivenNumber;
  return number >= 0 && number <= kHighestKeyNumber && !file.FindKey(number) ? number : -1;
}

bool IsRepeating(const KeySegment& segment) { return segment.Has(kRepeating); }

// A linked key needs a pointer in each record, and only reserved ones can still be had. Segments
// that disagree stay as they are: the rules refuse them.
void TakeReservedPointer(KeySpec& key, FileSpec& file) {
  if (!key.AllowsDuplicates()) return;
  if (std::any_of(key.segments.begin(), key.segments.end(), IsRepeating)) return;
  if (file.reservedPointers > 0) {
    --file.reservedPointers;
    return;
  }
  for (KeySegment& segment : key.segments) segment.flags |= kRepeating;
}

void InsertByNumber(KeySpec key, FileSpec& file) {
  const auto place = std::find_if(file.keys.begin(), file.keys.end(),
                                  [&](const KeySpec& other) { return other.number > key.number; });
  file.keys.insert(place, std::move(key));
}

// The slots that numbers in a Create Index block mean: sequences it brings, else the file's own.
std::vector<int16_t> SlotsOfBlock(const std::vector<CollatingSequence>& brought, FileSpec& file) {
  if (brought.empty()) return SlotsInOrder(file.sequences.size());
  std::vector<int16_t> slots;
  slots.reserve(brought.size());
  for (const CollatingSequence& sequence : brought) slots.push_back(SlotOf(sequence, file));
  return slots;
}

}  // namespace

Status ParseCreateBlock(std::span<const uint8_t> data, FileSpec& file) {
  if (data.size() < kSpecificationSize) return kDataBufferLength;
  ByteReader reader(data);
  FileSpec spec;
  const uint8_t keyCount = ReadHead(reader, spec);
  if (const Status status = ReadKeys(reader, keyCount, spec)) return status;
  spec.sequences = ReadSequences(reader);
  const auto slots = SlotsInOrder(spec.sequences.size());
  for (KeySpec& key : spec.keys) ChooseSequences(key, slots);
  if (const Status status = CheckSpec(spec)) return status;
  file = std::move(spec);
  return kOk;
}

Status AddIndexFromBlock(std::span<const uint8_t> data, int8_t keyNumber, FileSpec& file,
                         uint8_t& added) {
  const int number = WantedNumber(keyNumber, file);
  if (number < 0) return kInvalidKeyNumber;
  ByteReader reader(data);
  KeySpec key;
  if (const Status status = ReadKey(reader, key)) return status;
  key.number = static_cast<uint8_t>(number);
  FileSpec spec = file;
  ChooseSequences(key, SlotsOfBlock(ReadSequences(reader), spec));
  TakeReservedPointer(key, spec);
  InsertByNumber(std::move(key), spec);
  if (const Status status = CheckSpec(spec)) return status;
  file = std::move(spec);
  added = static_cast<uint8_t>(number);
  return kOk;
}

}  // namespace btrieve
