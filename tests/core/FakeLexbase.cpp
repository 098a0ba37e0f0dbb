#include "FakeLexbase.h"

#include <cstring>

namespace qrn::test {
namespace {

FakeLexbase* presentLexbase = nullptr;

// Appends little-endian words and blank-padded names.
class RowWriter {
 public:
  RowWriter& Short(int32_t value) {
    row_.push_back(static_cast<char>(value));
    row_.push_back(static_cast<char>(value >> 8));
    return *this;
  }
  RowWriter& Byte(uint8_t value) {
    row_.push_back(static_cast<char>(value));
    return *this;
  }
  RowWriter& Name(const char* name, size_t width) {
    std::string padded(name);
    padded.resize(width, ' ');
    row_ += padded;
    return *this;
  }
  const std::string& Row() const { return row_; }

 private:
  std::string row_;
};

}  // namespace

FakeLexbase::FakeLexbase() {
  static const LexbaseFunctions functions = {
      [](const char* directory, int32_t) { return presentLexbase->Open(directory); },
      [] { return presentLexbase->Close(); },
      [](void* row) { return presentLexbase->Read("file", presentLexbase->files_, row); },
      [](void* row) { return presentLexbase->Read("field", presentLexbase->fields_, row); },
      [](void* row) { return presentLexbase->Read("index", presentLexbase->indexes_, row); }};
  presentLexbase = this;
  ReplaceLexbase(&functions);
}

FakeLexbase::~FakeLexbase() {
  ReplaceLexbase(nullptr);
  presentLexbase = nullptr;
}

FakeLexbase& FakeLexbase::File(int16_t fileId, const char* name, const char* location,
                               uint8_t flags) {
  RowWriter row;
  row.Short(fileId).Name(name, 20).Name(location, 64).Byte(flags);
  files_.rows.push_back(row.Row());
  return *this;
}

FakeLexbase& FakeLexbase::Field(const FieldOf& field) {
  RowWriter row;
  row.Short(field.fieldId).Short(field.fileId).Name(field.name, 20).Byte(field.type);
  row.Short(field.offset).Short(field.size).Byte(field.decimals).Short(field.flags);
  fields_.rows.push_back(row.Row());
  return *this;
}

FakeLexbase& FakeLexbase::Index(int16_t fileId, int16_t fieldId, int16_t part, int16_t flags) {
  RowWriter row;
  row.Short(fileId).Short(fieldId).Short(0).Short(part).Short(flags);
  indexes_.rows.push_back(row.Row());
  return *this;
}

void FakeLexbase::Fail(const char* call, int32_t code, size_t row) { failure_ = {call, code, row}; }

int32_t FakeLexbase::Open(const char* directory) {
  log_ += std::string("open(") + directory + ") ";
  if (failure_.call == "open") return failure_.code;
  ++openReadings_;
  files_.next = fields_.next = indexes_.next = 0;
  return 0;
}

int32_t FakeLexbase::Close() {
  log_ += "close ";
  --openReadings_;
  return failure_.call == "close" ? failure_.code : 0;
}

int32_t FakeLexbase::Read(const char* call, Rows& rows, void* out) {
  if (failure_.call == call && failure_.row == rows.next) return failure_.code;
  if (rows.next == rows.rows.size()) return LexbaseEndOfFile;
  const std::string& row = rows.rows[rows.next++];
  std::memcpy(out, row.data(), row.size());
  return 0;
}

}  // namespace qrn::test
