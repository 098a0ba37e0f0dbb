// Rows of the three dictionary files as lexbase delivers them, and the reading they come from.
// Numbers are signed 16 bits in the files unless said otherwise, texts code page 932 of fixed
// width.
#pragma once

#include <cstdint>
#include <utility>

#include "core/DbTypes.h"

namespace qrn {

inline constexpr uint8_t kRowOfDictionaryItself =
    LexbaseFileOwn;  // value of a file row's flag byte
inline constexpr int32_t kFirstUserFileId =
    LexbaseFirstUserTable;  // 1 to 3 are the dictionary's own tables

// One table.
struct FileRow {
  int32_t fileId;
  char name[21];      // trailing blanks cut
  char location[65];  // the same
  uint8_t flags;
};

// One column, or the name of one key.
struct FieldRow {
  int32_t fieldId;
  int32_t fileId;
  char name[21];     // trailing blanks cut
  int32_t type;      // a byte in the file: FieldType
  int32_t offset;    // in an index name row the key number
  int32_t size;      // bytes
  int32_t decimals;  // a byte in the file
  uint16_t flags;

  // The dictionary's own field names have a dollar sign in third place.
  bool NamesDictionaryField() const noexcept { return name[2] == '$'; }
};

// One segment of one key.
struct IndexRow {
  int32_t fileId;
  int32_t fieldId;
  int32_t keyNumber;
  int32_t part;    // segment number within the key
  uint16_t flags;  // LexbaseIndexFlag
};

// Each reads the next row of its file in the reading under way and gives lexbase's code: 0 with the
// row filled, 9 at the end, otherwise a failure with the row as it was.
int32_t ReadFileRow(FileRow& row) noexcept;
int32_t ReadFieldRow(FieldRow& row) noexcept;
int32_t ReadIndexRow(IndexRow& row) noexcept;

// What a taker of rows says after each: go on, enough, or a failure of its own.
struct RowVerdict {
  bool goOn = true;
  int32_t failure = 0;
};

// Feeds every row to `take` until the file's end. Results: 0 at the end or when `take` says it has
// seen enough, lexbase's code, or what `take` failed with.
template <class Row, class Take>
int32_t ForEachRow(int32_t (*read)(Row&) noexcept, Take take) {
  Row row;
  for (;;) {
    const int32_t code = read(row);
    if (code != 0) return code == LexbaseEndOfFile ? 0 : code;
    const RowVerdict verdict = take(std::as_const(row));
    if (!verdict.goOn) return verdict.failure;
  }
}

inline constexpr RowVerdict kNextRow{};
inline constexpr RowVerdict kEnoughRows{false, 0};
constexpr RowVerdict FailedRow(int32_t failure) { return {false, failure}; }

// The one reading there is at a time; ends it at scope end at the latest.
class DictionaryReading {
 public:
  DictionaryReading() = default;
  ~DictionaryReading();
  DictionaryReading(const DictionaryReading&) = delete;
  DictionaryReading& operator=(const DictionaryReading&) = delete;

  // Both give lexbase's code.
  [[nodiscard]] int32_t Open(const char* directory) noexcept;
  [[nodiscard]] int32_t Close() noexcept;

 private:
  bool open_ = false;
};

}  // namespace qrn
