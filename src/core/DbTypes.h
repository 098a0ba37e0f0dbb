// The plain records everyone shares: a loaded dictionary, its tables, fields and key segments.
// They stand on the lowest floor, so that field codecs and the engine mean the same thing.
//
// Texts are code page 932 bytes, NUL-terminated. Offsets and sizes are bytes, offsets from the
// start of the record. A table's id is its slot in `Tables`, from 0 in the order of file.ddf; an
// index position is the slot in `Segments` of a key's first segment, not Btrieve's key number.
#pragma once

#include <cstddef>
#include <cstdint>

namespace qrn {

// Status of the engine: 0 success, positive a Btrieve status passed on unchanged, negative one of
// the system's own codes (core/ReturnCodes.h).
using Status = int16_t;

// Field type codes as the dictionary files store them.
enum FieldType : int32_t {
  kString = 0,
  kInteger = 1,
  kFloat = 2,
  kDate = 3,
  kTime = 4,
  kDecimal = 5,
  kMoney = 6,
  kLogical = 7,
  kNumeric = 8,
  kBFloat = 9,
  kLString = 10,
  kZString = 11,
  kNote = 12,
  kLVar = 13,
  kUBin = 14,
  kAutoInc = 15,
  kBit = 16,
  kNumericSTS = 17,
  kNumericSA = 18,
  kCurrency = 19,
  kBlob = 21,
  kWideString = 25,
  kWideZString = 26,
  kConstraintName = 227,  // a row that no loader takes
  kIndexName = 255,       // names a key: Offset is the key number
};

// Field flag: a null-indicator byte precedes the value. A walk steps over it; Offset is as given.
inline constexpr uint16_t kFieldNullable = 4;

// Segment flags, as index.ddf stores them.
inline constexpr int32_t kSegmentLeavesNullOut = 8;
inline constexpr int32_t kSegmentContinues = 16;  // another segment of the same key follows

// One column of a table, or one index name.
struct DbFieldInfo {
  char Name[32];  // at most 20 characters, trailing blanks cut
  int32_t Type;   // FieldType
  int32_t Size;
  int32_t Reserved;
  int32_t Offset;  // in an index name row the key number
  int32_t FileId;
  int32_t FieldId;
  int32_t Decimals;  // in an index name row the flag word
  uint16_t Flags;
};

// One segment of one key. Offset, Size and Type are copied from the field at load, 0 without one.
struct DbSegmentInfo {
  int32_t Offset;
  int32_t Size;
  int32_t Flags;
  int32_t Type;
  int32_t FileId;
  int32_t FieldId;
  int32_t Part;  // segment number within the key
};

inline constexpr size_t kPosBlockSize = 128;

// One table, with its run-time state: position block, record buffer, open flag. The arrays are
// owned by the dictionary (core/Dictionary.h), the record buffer from open to close.
struct DbTableInfo {
  char Name[21];
  char Location[67];  // up to 64 from the dictionary, up to 66 by DbSetFileName
  uint8_t PosBlock[kPosBlockSize];
  int32_t IsOpen;
  int32_t IsVariable;  // set by an open that finds variable-length records, never cleared
  int32_t FieldCount;
  DbFieldInfo* Fields;  // null until the table's fields are loaded
  int32_t SegmentCount;
  DbSegmentInfo* Segments;
  int32_t NamedIndexCount;
  DbFieldInfo* NamedIndexes;
  int32_t RecordLength;  // fixed part, as the dictionary gives it
  int32_t BufferSize;    // bytes usable in RecordBuffer
  int32_t FileId;        // the table's id in the dictionary files
  uint8_t* RecordBuffer;
  int32_t FieldCapacity;
  int32_t SegmentCapacity;
  int32_t NamedIndexCapacity;
  // Bytes really allocated at RecordBuffer: what no quirk of a codec may write beyond.
  size_t BufferAllocated;
};

inline constexpr int32_t kMaxTables = 256;

// One loaded dictionary directory.
struct DbDictionary {
  char Reserved[260];
  char DdfDir[260];
  int32_t TableCount;
  DbTableInfo* Tables;      // kMaxTables slots and an empty one
  DbDictionary* NextEnded;  // of those freed while a message box was up (core/Dictionary.h)
};

}  // namespace qrn
