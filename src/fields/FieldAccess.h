// The two ends a codec works between: a field's bytes in a record, and its text.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <string_view>

#include "core/DbTypes.h"
#include "fields/QuorinSettings.h"

namespace qrn {

namespace detail {

// `size` is what the dictionary says, so it may be anything.
template <class Byte>
std::span<Byte> FirstBytes(std::span<Byte> bytes, int32_t size) noexcept {
  return bytes.first(std::min(bytes.size(), size > 0 ? static_cast<size_t>(size) : 0));
}

}  // namespace detail

// A field to be read. `value` runs from its first byte to the end of what may be read, which is
// often more than the field and, where a record is cut off, less.
struct FieldSource {
  const QuorinSettings& settings;
  std::span<const uint8_t> value;
  std::span<const uint8_t> record;  // where a Blob's data lies
  int32_t size;
  int32_t decimals;  // never negative

  // The field alone.
  std::span<const uint8_t> Bytes() const noexcept { return detail::FirstBytes(value, size); }
  std::string_view Characters() const noexcept {
    return {reinterpret_cast<const char*>(value.data()), Bytes().size()};
  }
};

// A field to be written. `out` runs from its first byte to the end of what may be written.
struct FieldTarget {
  const QuorinSettings& settings;
  std::span<uint8_t> out;
  std::string_view text;
  int32_t size;
  int32_t decimals;  // never negative

  std::span<uint8_t> Bytes() const noexcept { return detail::FirstBytes(out, size); }
};

// A codec's two directions. A reader ends its text with a NUL, within `outText`.
using FieldReader = void (*)(const FieldSource& field, std::span<char> outText);
using FieldWriter = void (*)(const FieldTarget& field);

}  // namespace qrn
