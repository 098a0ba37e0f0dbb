// The plain records everyone shares: a loaded dictionary, its tables, fields and key segments.
// They stand on the lowest floor, so that field codecs and the engine mean the same thing.
//
// Texts are code page 932 bytes, NUL-terminated. Offsets and sizes are bytes, offsets from the
// start of the record. A table's id is its slot in `Tables`, from 0 in the order of file.ddf; an
// index position is the slot in `Segments` of a key's first segment, not Btrieve's key number.
#pragma once

#include <cstddef>
#include <cstdint>

#include "lexbase.h"

namespace qrn {

// Status of the engine: 0 success, positive a Btrieve status passed on unchanged, negative one of
// the system's own codes (core/ReturnCodes.h).
using Status = int16_t;

// Field type codes as the dictionary files store them: kString and so on.
enum FieldType : int32_t {
#define QRN_FIELD_TYPE(name, number) k##name = (number),
  LEXBASE_FIELD_TYPES(QRN_FIELD_TYPE)
#undef QRN_FIELD_TYPE
};

// Field flag: a null-indicator byte precedes the value. A walk steps over it; Offset is as given.
inline constexpr uint16_t kFieldNullable = LexbaseFieldNullable;

// Segment flags, as index.ddf stores them.
inline constexpr int32_t kSegmentLeavesNullOut = LexbaseIndexNullAll;
inline constexpr int32_t kSegmentContinues =
    LexbaseIndexContinues;  // another segment of the same key follows

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

inline constexpr size_t kPosBlockSize = BtrPositionBlockSize;

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
