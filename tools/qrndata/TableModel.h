// A table as the dictionary describes it: what the schema is read into, what `build` writes and
// what the other verbs read back. Names and locations are code page 932.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "btrieve/keys/KeySpec.h"
#include "core/DbTypes.h"

namespace qrndata {

// Flags of an index.ddf row. Most are the record manager's own; the collating sequence, case and
// "named" bits are not (TableFile.h maps them).
inline constexpr uint16_t kIndexDuplicates = LexbaseIndexDuplicates;
inline constexpr uint16_t kIndexModifiable = LexbaseIndexModifiable;
inline constexpr uint16_t kIndexSequence = LexbaseIndexSequence;
inline constexpr uint16_t kIndexNullAll = LexbaseIndexNullAll;
inline constexpr uint16_t kIndexContinues =
    LexbaseIndexContinues;  // another segment of the same key follows
inline constexpr uint16_t kIndexCaseInsensitive = LexbaseIndexIgnoreCase;
inline constexpr uint16_t kIndexDescending = LexbaseIndexDescending;
inline constexpr uint16_t kIndexNamed = LexbaseIndexNamed;
inline constexpr uint16_t kIndexExtendedType = LexbaseIndexExtendedType;
inline constexpr uint16_t kIndexNullAny = LexbaseIndexNullAny;

// Flags of a file.ddf row.
inline constexpr uint8_t kOwnTable = LexbaseFileOwn;  // a table of the dictionary itself
inline constexpr uint8_t kHasNullableFields = LexbaseFileNullable;

inline constexpr int kFirstUserTable = LexbaseFirstUserTable;
inline constexpr size_t kMaxNameLength = LexbaseNameSize, kMaxLocationLength = LexbaseLocationSize;

struct Segment {
  int fieldId = 0;
  uint16_t flags = 0;     // as index.ddf has them
  uint8_t nullValue = 0;  // known to the schema and the data file, not to the dictionary
};

struct Key {
  std::string name;  // empty without an index name row
  std::vector<Segment> segments;

  bool AllowsDuplicates() const { return (segments.front().flags & kIndexDuplicates) != 0; }
};

struct Table {
  int id = 0;
  std::string name;
  std::string location;
  uint8_t flags = 0;
  std::vector<qrn::DbFieldInfo> fields;  // by field id
  std::vector<Key> keys;                 // the slot is the key number

  // What the dictionary does not keep: only a schema gives them.
  uint16_t pageSize = 4096;
  uint16_t fileFlags = 130;
  std::optional<btrieve::CollatingSequence> sequence;  // of the segments whose flags ask for one
};

// Takes one row; the name is cut to what fits.
qrn::DbFieldInfo MakeField(std::string_view name, int32_t type, int32_t size);

bool IsNullable(const qrn::DbFieldInfo& field) noexcept;
// Types whose value runs to its NUL behind the fixed part: note and lvar.
bool IsVariableText(const qrn::DbFieldInfo& field) noexcept;

const qrn::DbFieldInfo* FindField(const Table& table, std::string_view name);
const qrn::DbFieldInfo* FindField(const Table& table, int fieldId);

// The record length as the dictionary gives it: the end of the field at the largest offset.
size_t RecordLength(const Table& table);

// The first note or lvar field, null without one.
const qrn::DbFieldInfo* VariableField(const Table& table);

bool HasVariableRecords(const Table& table);

// Bytes that every record of the file has: up to the first variable field's null indicator or value
// (a short text still follows), else the record length.
size_t FixedLength(const Table& table);

// A name in messages: UTF-8, in double quotes.
std::string Quoted(std::string_view codePageName);

}  // namespace qrndata
