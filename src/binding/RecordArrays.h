// Whole records between a table and arrays of the host: the fields' texts in an array of strings,
// the record buffer or the position block in an array of bytes.
//
// `array` is what the host sent: the array itself or a reference to it. It is filled in place and
// keeps its bounds. Results are 0 or the codes of core/ReturnCodes.h: -17 to -19 for an array of
// strings, -22 to -24 for one of bytes.
#pragma once

#include <oaidl.h>

#include <span>

#include "core/DbEngine.h"
#include "core/DbTypes.h"

namespace qrn {

// The array's bounds are field positions: the elements, in their order, take or give the texts of
// the fields inside them.
Status FieldsToArray(DbEngine& engine, const DbTableInfo& table, VARIANT& array);
Status FieldsFromArray(DbEngine& engine, DbTableInfo& table, VARIANT& array);

// The bytes of a one-dimensional array, reachable while the object lives.
class ByteArray {
 public:
  explicit ByteArray(VARIANT& array) noexcept;
  ByteArray(const ByteArray&) = delete;
  ByteArray& operator=(const ByteArray&) = delete;
  ~ByteArray();

  Status failure() const noexcept { return failure_; }
  std::span<uint8_t> bytes() const noexcept { return bytes_; }

 private:
  Status Open(VARIANT& array) noexcept;

  SAFEARRAY* array_ = nullptr;
  std::span<uint8_t> bytes_;
  Status failure_ = 0;
};

}  // namespace qrn
