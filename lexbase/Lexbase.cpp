// The five functions: one reading, and the guard that no exception passes.
#include "lexbase/Lexbase.h"

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
    return qrn::lexbase::kDdfFailed;
  }
}

template <int kRowSize>
int ReadRow(void* row, int (DictionaryReading::*read)(std::span<uint8_t>)) noexcept {
  if (row == nullptr) return qrn::lexbase::kDdfNoBuffer;
  return Guard([&] {
    DictionaryReading* reading = TheReading().get();
    if (reading == nullptr) return static_cast<int>(qrn::lexbase::kDdfNotOpen);
    return (reading->*read)({static_cast<uint8_t*>(row), size_t{kRowSize}});
  });
}

}  // namespace

extern "C" {

int QRN_DDFAPI DDFOpen(const char* directory, int) {
  if (directory == nullptr || *directory == '\0') return qrn::lexbase::kDdfBadDirectory;
  return Guard([&] {
    if (TheReading() != nullptr) return static_cast<int>(qrn::lexbase::kDdfAlreadyOpen);
    auto reading = std::make_unique<DictionaryReading>();
    const int code = reading->Open(directory);
    if (code == 0) TheReading() = std::move(reading);
    return code;
  });
}

int QRN_DDFAPI DDFClose() {
  return Guard([] {
    const auto reading = std::move(TheReading());
    return reading == nullptr ? static_cast<int>(qrn::lexbase::kDdfNotOpen) : reading->Close();
  });
}

int QRN_DDFAPI DDFReadFile(void* fileRow) {
  return ReadRow<qrn::lexbase::kFileRowSize>(fileRow, &DictionaryReading::ReadFile);
}

int QRN_DDFAPI DDFReadField(void* fieldRow) {
  return ReadRow<qrn::lexbase::kFieldRowSize>(fieldRow, &DictionaryReading::ReadField);
}

int QRN_DDFAPI DDFReadIndex(void* indexRow) {
  return ReadRow<qrn::lexbase::kIndexRowSize>(indexRow, &DictionaryReading::ReadIndex);
}
}
