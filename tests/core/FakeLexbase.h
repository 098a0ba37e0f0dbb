// A dictionary library of rows given by the test, to provoke what files on disk never hold.
#pragma once

#include <array>
#include <cstdint>
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
  FakeLexbase();
  ~FakeLexbase();

  FakeLexbase& File(int16_t fileId, const char* name, const char* location, uint8_t flags = 0);
  FakeLexbase& Field(const FieldOf& field);
  FakeLexbase& Index(int16_t fileId, int16_t fieldId, int16_t part, int16_t flags);

  // The call that fails from now on, with its code: "open", "close", "file", "field", "index".
  // A read fails in the place of its row number `row`.
  void Fail(const char* call, int32_t code, size_t row = 0);

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

  int32_t Open(const char* directory);
  int32_t Close();
  int32_t Read(const char* call, Rows& rows, void* out);

  Rows files_, fields_, indexes_;
  Failure failure_;
  std::string log_;
  int openReadings_ = 0;
};

}  // namespace qrn::test
