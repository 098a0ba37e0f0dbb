// CSV as spreadsheets write it: cells parted by commas, quotes round a cell, a quote doubled inside
// them, line breaks allowed there. Lines end in LF, CR LF or CR; lines without anything are
// skipped.
#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "tools/qrndata/Failure.h"
#include "tools/qrndata/Text.h"

namespace qrndata {

struct CsvCell {
  std::string text;
  bool isQuoted = false;
  Position at;

  // Unquoted and empty: no value, where a quoted empty cell is the empty text.
  bool IsMissing() const noexcept { return !isQuoted && text.empty(); }
};

struct CsvRow {
  std::vector<CsvCell> cells;
  std::string raw;      // the row as it stood, without its line end
  uint32_t line = 0;    // where it begins
  std::string problem;  // of its form, empty for a sound row; the rest of the line was skipped
  Position problemAt;
};

class CsvReader {
 public:
  // The stream must outlive the reader; it is read as bytes, and the encoding tells what counts as
  // a column. A UTF-8 byte order mark is skipped.
  explicit CsvReader(std::istream& stream, Encoding encoding = Encoding::Utf8);

  // False at the end of the file.
  bool Next(CsvRow& row);

  // Bytes taken so far.
  uint64_t BytesRead() const noexcept { return bytesRead_; }

 private:
  static constexpr int kEnd = -1;

  int Peek();
  void Advance(CsvRow& row);
  bool ContinuesCharacter(int c);
  void ReadCell(CsvRow& row);
  void ReadQuoted(CsvRow& row, CsvCell& cell);
  void ReadPlain(CsvRow& row, CsvCell& cell);
  void SkipLine(CsvRow& row);
  void TakeLineEnd();
  void Report(CsvRow& row, Position at, std::string_view problem);
  CsvCell& NewCell(CsvRow& row);

  std::streambuf& bytes_;
  Encoding encoding_;
  bool isBehindLead_ = false;  // of a two-byte character
  Position place_{1, 1};
  uint64_t bytesRead_ = 0;
  size_t cellCount_ = 0;
};

}  // namespace qrndata
