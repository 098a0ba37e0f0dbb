// A dictionary library of rows given by the test, to provoke what files on disk never hold.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "platform/LexbaseCalls.h"
#include "tests/support/Pinned.h"

namespace qrn::test {

struct FieldOf {
  int16_t fieldId, fileId;
  const char* name;
  uint8_t type;
  int16_t offset, size;
  uint8_t decimals = 0;
  int16_t flags = 0;
};

// Stands in the library's place while it lives; there is one at a time.
class FakeLexbase : Pinned {
 public:
  FakeLexbase() {
    static const LexbaseFunctions functions = {
        [](const char* directory, int32_t) { return present_->Open(directory); },
        [] { return present_->Close(); },
        [](void* row) { return present_->Read("file", present_->files_, row); },
        [](void* row) { return present_->Read("field", present_->fields_, row); },
        [](void* row) { return present_->Read("index", present_->indexes_, row); }};
    present_ = this;
    ReplaceLexbase(&functions);
  }
  ~FakeLexbase() {
    ReplaceLexbase(nullptr);
    present_ = nullptr;
  }

  FakeLexbase& File(int16_t fileId, const char* name, const char* location, uint8_t flags = 0) {
    files_.rows.push_back(Word(fileId) + Padded(name, 20) + Padded(location, 64) + Byte(flags));
    return *this;
  }
  FakeLexbase& Field(const FieldOf& field) {
    fields_.rows.push_back(Word(field.fieldId) + Word(field.fileId) + Padded(field.name, 20) +
                           Byte(field.type) + Word(field.offset) + Word(field.size) +
                           Byte(field.decimals) + Word(field.flags));
    return *this;
  }
  FakeLexbase& Index(int16_t fileId, int16_t fieldId, int16_t part, int16_t flags) {
    indexes_.rows.push_back(Word(fileId) + Word(fieldId) + Word(0) + Word(part) + Word(flags));
    return *this;
  }

  // The call that fails from now on, with its code: "open", "close", "file", "field", "index".
  // A read fails in the place of its row number `row`.
  void Fail(const char* call, int32_t code, size_t row = 0) { failure_ = {call, code, row}; }

  const std::string& Log() const { return log_; }  // "open(dir) close "
  int OpenReadings() const { return openReadings_; }

 private:
  struct Rows {
    std::vector<std::string> rows;
    size_t next = 0;
  };
  struct Failure {
    std::string call;
    int32_t code = 0;
    size_t row = 0;
  };

  static std::string Byte(int32_t value) { return {static_cast<char>(value)}; }
  static std::string Word(int32_t value) { return Byte(value) + Byte(value >> 8); }
  static std::string Padded(std::string name, size_t width) {
    name.resize(width, ' ');
    return name;
  }
  int32_t Open(const char* directory) {
    log_ += std::string("open(") + directory + ") ";
    if (failure_.call == "open") return failure_.code;
    ++openReadings_;
    files_.next = fields_.next = indexes_.next = 0;
    return 0;
  }
  int32_t Close() {
    log_ += "close ";
    --openReadings_;
    return failure_.call == "close" ? failure_.code : 0;
  }
  int32_t Read(const char* call, Rows& rows, void* out) {
    if (failure_.call == call && failure_.row == rows.next) return failure_.code;
    if (rows.next == rows.rows.size()) return LexbaseEndOfFile;
    const std::string& row = rows.rows[rows.next++];
    std::memcpy(out, row.data(), row.size());
    return 0;
  }

  static inline FakeLexbase* present_ = nullptr;
  Rows files_, fields_, indexes_;
  Failure failure_;
  std::string log_;
  int openReadings_ = 0;
};

}  // namespace qrn::test
