#include "tools/qrndata/CsvReader.h"

#include "platform/CodePage.h"
#include "tools/qrndata/Messages.h"

namespace qrndata {

namespace {

bool EndsLine(int c) { return c == '\n' || c == '\r'; }

}  // namespace

CsvReader::CsvReader(std::istream& stream, Encoding encoding, char delimiter)
    : bytes_(*stream.rdbuf()), encoding_(encoding), delimiter_(delimiter) {
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

bool CsvReader::IsDelimiter(int c) const {
  return c == delimiter_ && !(isBehindLead_ && IsTrailByte(static_cast<uint8_t>(c)));
}

bool CsvReader::EndsCell(int c) const { return c == kEnd || IsDelimiter(c) || EndsLine(c); }

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
  if (row.raw.size() < kMostRowBytes) row.raw.push_back(static_cast<char>(c));
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
    if (!IsDelimiter(Peek())) break;
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
    if (c == kEnd) return Report(row, cell.at, Message::QuoteNeverClosed);
    if (IsTooLong(row, cell.at)) return;
    if (c == '"') {
      Advance(row);
      if (Peek() != '"') break;
    }
    cell.text.push_back(static_cast<char>(Peek()));
    Advance(row);
  }
  if (EndsCell(Peek())) return;
  Report(row, place_, delimiter_ == ',' ? Message::CommaExpected : Message::DelimiterExpected);
  SkipLine(row);
}

void CsvReader::ReadPlain(CsvRow& row, CsvCell& cell) {
  for (int c = Peek(); !EndsCell(c); c = Peek()) {
    if (IsTooLong(row, cell.at)) return;
    if (c == '"') {
      Report(row, place_, Message::QuoteInCell);
      return SkipLine(row);
    }
    cell.text.push_back(static_cast<char>(c));
    Advance(row);
  }
}

bool CsvReader::IsTooLong(CsvRow& row, Position at) {
  if (row.raw.size() < kMostRowBytes) return false;
  Report(row, at, Message::RowTooLong);
  SkipLine(row);
  return true;
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

void CsvReader::Report(CsvRow& row, Position at, Message problem) {
  if (!row.problem.empty()) return;
  row.problem = Say(problem);
  row.problemAt = at;
}

}  // namespace qrndata
