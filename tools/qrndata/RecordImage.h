// Records as bytes: built from checked texts, taken apart into texts.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "fields/QuorinSettings.h"
#include "tools/qrndata/BtrFile.h"
#include "tools/qrndata/TableModel.h"

namespace qrndata {

// One value a field in the table's order: code page 932, nothing for null.
using FieldValues = std::vector<std::optional<std::string>>;

// Records longer than this are not read by forms.
inline constexpr size_t kMaxFormRecord = 64512;

class RecordImage {
 public:
  // Both must outlive the image.
  RecordImage(const qrn::QuorinSettings& settings, const Table& table);

  // `values` are checked texts (FieldInput.h). The result is ready for Insert: fixed part, a note's
  // text with its NUL, blobs behind the fixed part. Valid until the next call.
  Bytes& Build(const FieldValues& values);

  // `record` with the values of the fields `slots` in place of its own; every other byte stays.
  Bytes& Change(std::span<const uint8_t> record, const FieldValues& values,
                const std::vector<size_t>& slots);

  // A null stands only in nullable fields.
  FieldValues Split(std::span<const uint8_t> record) const;

 private:
  void Put(const qrn::DbFieldInfo& field, const std::optional<std::string>& value);
  void ChangeFixed(const qrn::DbFieldInfo& field, const std::optional<std::string>& value);
  void PutBlob(const qrn::DbFieldInfo& field, const std::string& value);
  std::optional<std::string> Take(const qrn::DbFieldInfo& field,
                                  std::span<const uint8_t> record) const;

  const qrn::QuorinSettings& settings_;
  const Table& table_;
  std::vector<size_t> byOffset_;  // slots of fields
  size_t fixedLength_;
  Bytes record_;
};

}  // namespace qrndata
