// The five functions: one reading, and the guard that no exception passes.
#include "lexbase.h"

#include <memory>

#include "lexbase/DictionaryReading.h"

namespace {

using qrn::lexbase::DictionaryReading;

// Never destroyed: at process end the record manager may be gone before this library.
std::unique_ptr<DictionaryReading>& TheReading() {
  static auto& reading = *new std::unique_ptr<DictionaryReading>;
  return reading;
}

template <class Body>
int Guard(Body body) noexcept {
  try {
    return body();
  } catch (...) {
    return LexbaseFailed;
  }
}

template <int kRowSize>
int ReadRow(void* row, int (DictionaryReading::*read)(std::span<uint8_t>)) noexcept {
  if (row == nullptr) return LexbaseNoBuffer;
  return Guard([&] {
    DictionaryReading* reading = TheReading().get();
    if (reading == nullptr) return int{LexbaseNotOpen};
    return (reading->*read)({static_cast<uint8_t*>(row), size_t{kRowSize}});
  });
}

}  // namespace

extern "C" {

int32_t LEXBASE_CALL DDFOpen(const char* directory, int32_t) {
  if (directory == nullptr || *directory == '\0') return LexbaseBadDirectory;
  return Guard([&] {
    if (TheReading() != nullptr) return int{LexbaseAlreadyOpen};
    auto reading = std::make_unique<DictionaryReading>();
    const int code = reading->Open(directory);
    if (code == 0) TheReading() = std::move(reading);
    return code;
  });
}

int32_t LEXBASE_CALL DDFClose() {
  return Guard([]() -> int {
    const auto reading = std::move(TheReading());
    return reading == nullptr ? int{LexbaseNotOpen} : reading->Close();
  });
}

int32_t LEXBASE_CALL DDFReadFile(void* fileRow) {
  return ReadRow<LexbaseFileRowSize>(fileRow, &DictionaryReading::ReadFile);
}

int32_t LEXBASE_CALL DDFReadField(void* fieldRow) {
  return ReadRow<LexbaseFieldRowSize>(fieldRow, &DictionaryReading::ReadField);
}

int32_t LEXBASE_CALL DDFReadIndex(void* indexRow) {
  return ReadRow<LexbaseIndexRowSize>(indexRow, &DictionaryReading::ReadIndex);
}
}
