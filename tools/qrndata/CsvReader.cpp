#include "tools/qrndata/CsvReader.h"

#include "platform/CodePage.h"

namespace qrndata {

namespace {

bool EndsLine(int c) { return c == '\n' || c == '\r'; }

}  // namespace

CsvReader::CsvReader(std::istream& stream, Encoding encoding)
    : bytes_(*stream.rdbuf()), encoding_(encoding) {
  CsvRow mark;
  for (const int byte : {0xEF, 0xBB, 0xBF}) {
    if (Peek() != byte) break;
    Advance(mark);
  }
  place_ = {1, 1};
}

int CsvReader::Peek() {
  const auto c = bytes_.sgetc();
  return c == std::streambuf::traits_type::eof() ? kEnd : c;
}

bool CsvReader::ContinuesCharacter(int c) {
  if (encoding_ == Encoding::Utf8) return (c & 0xC0) == 0x80;
  const auto byte = static_cast<uint8_t>(c);
  const bool continues = isBehindLead_ && IsTrailByte(byte);
  isBehindLead_ = !continues && qrn::IsLeadByte(byte);
  return continues;
}

// Columns count the bytes that begin a character.
void CsvReader::Advance(CsvRow& row) {
  const int c = bytes_.sbumpc();
  row.raw.push_back(static_cast<char>(c));
  ++bytesRead_;
  const bool continues = ContinuesCharacter(c);
  if (c == '\n') {
    place_ = {place_.line + 1, 1};
  } else if (!continues) {
    ++place_.column;
  }
}

bool CsvReader::Next(CsvRow& row) {
  while (EndsLine(Peek())) TakeLineEnd();
  row.raw.clear();
  row.problem.clear();
  row.line = place_.line;
  cellCount_ = 0;
  if (Peek() == kEnd) return false;
  for (;;) {
    ReadCell(row);
    if (Peek() != ',') break;
    Advance(row);
  }
  row.cells.resize(cellCount_);
  if (Peek() != kEnd) TakeLineEnd();
  return true;
}

CsvCell& CsvReader::NewCell(CsvRow& row) {
  if (cellCount_ == row.cells.size()) row.cells.emplace_back();
  CsvCell& cell = row.cells[cellCount_++];
  cell.text.clear();
  cell.isQuoted = false;
  cell.at = place_;
  return cell;
}

void CsvReader::ReadCell(CsvRow& row) {
  CsvCell& cell = NewCell(row);
  if (Peek() == '"') {
    ReadQuoted(row, cell);
  } else {
    ReadPlain(row, cell);
  }
}

void CsvReader::ReadQuoted(CsvRow& row, CsvCell& cell) {
  cell.isQuoted = true;
  Advance(row);
  for (;;) {
    const int c = Peek();
    if (c == kEnd) return Report(row, cell.at, "this quote is never closed");
    if (c == '"') {
      Advance(row);
      if (Peek() != '"') break;
    }
    cell.text.push_back(static_cast<char>(Peek()));
    Advance(row);
  }
  if (Peek() == kEnd || Peek() == ',' || EndsLine(Peek())) return;
  Report(row, place_, "expected a comma or the line's end behind the closing quote");
  SkipLine(row);
}

void CsvReader::ReadPlain(CsvRow& row, CsvCell& cell) {
  for (int c = Peek(); c != kEnd && c != ',' && !EndsLine(c); c = Peek()) {
    if (c == '"') {
      Report(row, place_,
             "a quote inside a cell: put the whole cell in quotes and double this one");
      return SkipLine(row);
    }
    cell.text.push_back(static_cast<char>(c));
    Advance(row);
  }
}

void CsvReader::SkipLine(CsvRow& row) {
  while (Peek() != kEnd && !EndsLine(Peek())) Advance(row);
}

void CsvReader::TakeLineEnd() {
  const int c = bytes_.sbumpc();
  ++bytesRead_;
  if (c == '\r' && Peek() == '\n') {
    bytes_.sbumpc();
    ++bytesRead_;
  }
  place_ = {place_.line + 1, 1};
  isBehindLead_ = false;
}

void CsvReader::Report(CsvRow& row, Position at, std::string_view problem) {
  if (!row.problem.empty()) return;
  row.problem = problem;
  row.problemAt = at;
}

}  // namespace qrndata
