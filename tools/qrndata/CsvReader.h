// CSV as spreadsheets write it: cells parted by commas (or another character), quotes round a cell,
// a quote doubled inside them, line breaks allowed there. Lines end in LF, CR LF or CR; lines
// without anything are skipped. A row longer than kMostRowBytes is refused: a quote that is never
// closed would else take the whole file for one cell.
#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "tools/qrndata/Failure.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Text.h"

namespace qrndata {

struct CsvCell {
  std::string text;
  bool isQuoted = false;
  Position at;

  // Unquoted and empty: no value, where a quoted empty cell is the empty text.
  bool IsMissing() const noexcept { return !isQuoted && text.empty(); }
};

inline constexpr size_t kMostRowBytes = 1u << 20;

struct CsvRow {
  std::vector<CsvCell> cells;
  std::string raw;      // the row as it stood, without its line end; of a longer one the beginning
  uint32_t line = 0;    // where it begins
  std::string problem;  // of its form, empty for a sound row; the rest of the line was skipped
  Position problemAt;
};

class CsvReader {
 public:
  // The stream must outlive the reader; it is read as bytes, and the encoding tells what counts as
  // a column. A UTF-8 byte order mark is skipped.
  // `delimiter` is an ASCII character; the second byte of a character in code page 932 never is
  // one.
  explicit CsvReader(std::istream& stream, Encoding encoding = Encoding::Utf8,
                     char delimiter = ',');

  // False at the end of the file.
  bool Next(CsvRow& row);

  // Bytes taken so far.
  uint64_t BytesRead() const noexcept { return bytesRead_; }
  // Of what comes next.
  uint32_t Line() const noexcept { return place_.line; }

 private:
  static constexpr int kEnd = -1;

  int Peek();
  void Advance(CsvRow& row);
  bool IsDelimiter(int c) const;
  bool EndsCell(int c) const;
  bool IsTooLong(CsvRow& row, Position at);
  bool ContinuesCharacter(int c);
  void ReadCell(CsvRow& row);
  void ReadQuoted(CsvRow& row, CsvCell& cell);
  void ReadPlain(CsvRow& row, CsvCell& cell);
  void SkipLine(CsvRow& row);
  void TakeLineEnd();
  void Report(CsvRow& row, Position at, Message problem);
  CsvCell& NewCell(CsvRow& row);

  std::streambuf& bytes_;
  Encoding encoding_;
  char delimiter_;
  bool isBehindLead_ = false;  // of a two-byte character
  Position place_{1, 1};
  uint64_t bytesRead_ = 0;
  size_t cellCount_ = 0;
};

}  // namespace qrndata
