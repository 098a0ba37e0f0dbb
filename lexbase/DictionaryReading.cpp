#include "lexbase/DictionaryReading.h"

#include <algorithm>

namespace qrn::lexbase {

namespace {

constexpr size_t kFieldRowTable = 2;

int TableOf(std::span<const uint8_t> fieldRow) {
  return fieldRow[kFieldRowTable] | fieldRow[kFieldRowTable + 1] << 8;
}

int FirstFailure(std::initializer_list<int> codes) {
  const auto* failed = std::find_if(codes.begin(), codes.end(), [](int code) { return code != 0; });
  return failed == codes.end() ? 0 : *failed;
}

}  // namespace

int DictionaryReading::Open(const std::string& directory) {
  int code = files_.Open(directory, kFileDdf);
  if (code == 0) code = fields_.Open(directory, kFieldDdf);
  if (code == 0) code = indexes_.Open(directory, kIndexDdf);
  return code;
}

int DictionaryReading::Close() {
  return FirstFailure({files_.Close(), fields_.Close(), indexes_.Close()});
}

int DictionaryReading::CollectFields() {
  FieldRow row{};
  int code = 0;
  while ((code = fields_.ReadNext(row)) == 0) fieldRows_.push_back(row);
  if (code != LexbaseEndOfFile) return code;
  std::stable_sort(
      fieldRows_.begin(), fieldRows_.end(),
      [](const FieldRow& left, const FieldRow& right) { return TableOf(left) < TableOf(right); });
  fieldsAreCollected_ = true;
  return 0;
}

int DictionaryReading::ReadField(std::span<uint8_t> row) {
  if (!fieldsAreCollected_) {
    if (const int code = CollectFields(); code != 0) return code;
  }
  if (nextField_ == fieldRows_.size()) return LexbaseEndOfFile;
  std::copy(fieldRows_[nextField_].begin(), fieldRows_[nextField_].end(), row.begin());
  ++nextField_;
  return 0;
}

}  // namespace qrn::lexbase
