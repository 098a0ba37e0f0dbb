// What a file is made of: record length, page size, flags, keys with their segments, collating
// sequences. It comes from the block given to Create (and Create Index), stands in the file in a
// checked byte form, and goes back to callers through Stat.
//
// Integers in all three forms are little-endian. Offsets in this model count from 0, in the Create
// block and in Stat from 1.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "btrieve/keys/KeyTypes.h"
#include "btrieve/system/Status.h"

namespace btrieve {

// Flags of a file. The others only steer storage: they are kept and given back, never acted upon.
inline constexpr uint16_t kVariableRecords = BtrFileVariable;
inline constexpr uint16_t kKeyOnly = BtrFileKeyOnly;
inline constexpr uint16_t kReservePointers = BtrFileReservePointers;
inline constexpr uint16_t kKeyNumbersGiven = BtrFileKeyNumbers;

// Flags of a key segment. Bits from 0x1000 up have no meaning and are given back as they came.
inline constexpr uint16_t kDuplicates = BtrKeyDuplicates;
inline constexpr uint16_t kModifiable = BtrKeyModifiable;
inline constexpr uint16_t kOldBinary = BtrKeyOldBinary;
inline constexpr uint16_t kNullAllSegments = BtrKeyNullAll;
inline constexpr uint16_t kAnotherSegment = BtrKeyAnotherSegment;
inline constexpr uint16_t kSequence = BtrKeySequence;
inline constexpr uint16_t kDescending = BtrKeyDescending;
inline constexpr uint16_t kRepeating = BtrKeyRepeating;
inline constexpr uint16_t kExtendedType = BtrKeyExtendedType;
inline constexpr uint16_t kNullAnySegment = BtrKeyNullAny;
inline constexpr uint16_t kCaseInsensitive = BtrKeyIgnoreCase;

inline constexpr size_t kSpecificationSize = BtrSpecSize;  // of a file's head and of each segment
inline constexpr size_t kSequenceSize = BtrSequenceSize;  // 0xAC, name of 8 bytes, map of 256 bytes
inline constexpr uint8_t kSequenceMark = 0xAC;
inline constexpr int kHighestKeyNumber = BtrHighestKeyNumber;
inline constexpr int kNoSequence = -1;
inline constexpr uint8_t kDefaultFileVersion = 0x95;

// A caller's map of the 256 byte values, applied before bytes are compared.
struct CollatingSequence {
  std::array<uint8_t, kSequenceSize> block{};

  const uint8_t* Map() const noexcept { return block.data() + 9; }
  bool operator==(const CollatingSequence&) const = default;
};

struct KeySegment {
  uint16_t offset = 0;             // bytes from the start of the record
  uint16_t length = 0;             // bytes
  uint16_t flags = 0;              // as given, unknown bits included
  uint8_t givenType = 0;           // byte 10 as given; without kExtendedType it has no effect
  uint8_t nullValue = 0;           // the byte that, filling the segment, makes it null
  uint8_t givenSequence = 0;       // byte 15 as given
  int16_t sequence = kNoSequence;  // slot in FileSpec::sequences

  // The type that counts: the extended one, else string or unsigned binary.
  KeyType Type() const noexcept;
  bool Has(uint16_t flag) const noexcept { return (flags & flag) != 0; }
  // Upper and lower case letters are one: types string, lstring, zstring without a sequence.
  bool FoldsCase() const noexcept;
  bool operator==(const KeySegment&) const = default;
};

struct KeySpec {
  uint8_t number = 0;  // what callers pass as key number, 0..118
  std::vector<KeySegment> segments;

  // Bytes of the key's value: all segments one after the other, 1..255.
  size_t Length() const noexcept;
  // These stand in every segment of a key alike.
  bool AllowsDuplicates() const noexcept { return segments[0].Has(kDuplicates); }
  bool IsModifiable() const noexcept { return segments[0].Has(kModifiable); }
  bool IsAutoIncrement() const noexcept { return segments[0].Type() == KeyType::AutoIncrement; }
  bool operator==(const KeySpec&) const = default;
};

struct FileSpec {
  uint16_t recordLength = 0;  // bytes; in a variable file the fixed part
  uint16_t pageSize = 0;      // bytes; only limits follow from it, storage has pages of its own
  uint16_t flags = 0;
  uint8_t version = kDefaultFileVersion;  // high nibble major
  uint8_t reservedPointers = 0;  // duplicate pointers left for linked keys that are added later
  uint16_t preallocatedPages = 0;
  std::vector<KeySpec> keys;  // ascending key number, gaps are possible
  std::vector<CollatingSequence> sequences;

  bool IsVariable() const noexcept { return (flags & kVariableRecords) != 0; }
  bool IsKeyOnly() const noexcept { return (flags & kKeyOnly) != 0; }
  // Null where there is no such key. The pointer lives as long as `keys` stays unchanged.
  const KeySpec* FindKey(int number) const noexcept;
  size_t SegmentCount() const noexcept;
  bool operator==(const FileSpec&) const = default;
};

// Reads the data of a Create: head, segments, collating sequences; bytes after them are ignored.
// 22 too short for what it announces, 24 page size, 26 too many segments (or the last one says that
// another follows), 27 a segment outside the fixed part, 28 record length, 29 length of a segment
// or key, 45 flags differ between segments, 48 collating sequence missing or of another form,
// 49 type, 55 autoincrement rules. `file` is only changed on success.
[[nodiscard]] Status ParseCreateBlock(std::span<const uint8_t> data, FileSpec& file);

// Reads the data of a Create Index (the segments of one key, then collating sequences) for a key to
// be added to `file`. `keyNumber` as the caller passed it: 0 takes the lowest free number, 128 + n
// takes n. Statuses as above, and 6 for a number that is taken or out of range.
// On success `file` holds the key (and any sequence it brought) at its place by number; the
// result's number is in `added`. A linked key without a reserved pointer becomes a repeating one.
[[nodiscard]] Status AddIndexFromBlock(std::span<const uint8_t> data, int8_t keyNumber,
                                       FileSpec& file, uint8_t& added);

// Takes key `number` out of `file`; with `renumber` the higher keys move down by one.
// False, with nothing changed, when there is no such key.
bool DropKey(FileSpec& file, uint8_t number, bool renumber);

// The checked byte form that stands in the file; its layout is told in docs.
std::vector<uint8_t> StoreSpec(const FileSpec& file);
// Reads it back. False for anything that StoreSpec did not write: wrong length, checksum, or a
// specification that Create would have refused. `file` is only changed on success.
[[nodiscard]] bool LoadSpec(std::span<const uint8_t> bytes, FileSpec& file);

}  // namespace btrieve
