// The field types by the names that schemas and listings use, and what each takes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace qrndata {

enum class Family : uint8_t {
  Text,    // bytes of text
  Whole,   // whole numbers in binary
  Real,    // binary floating point
  Digits,  // decimal digits with a fixed point
  Date,
  Time,
  Logical,
  Bit,
  Blob,
};

struct FieldTypeRow {
  int32_t code;
  const char* name;
  Family family;
  int32_t shortest, longest;  // bytes, both inclusive
  int32_t standard;           // size without one in the schema; 0: a schema must give it
  uint32_t sizes;             // where not 0, bit n set for each size n that is taken
  int32_t spareDigits;        // Digits: digit places are size * digitsPerByte - spareDigits
  int32_t digitsPerByte;

  bool Takes(int64_t size) const noexcept;
  // The most decimals that a field of this type and size has.
  int32_t MaxDecimals(int32_t size) const noexcept;
};

// "4 or 8", "1 to 64": in messages.
std::string SizesOf(const FieldTypeRow& type);

// Null for a name or code that no schema can use.
const FieldTypeRow* FindFieldType(std::string_view name) noexcept;
const FieldTypeRow* FindFieldType(int32_t code) noexcept;

// "Decimal", or "type 25" for a code without a name.
std::string FieldTypeName(int32_t code);

// "Bit of 1 byte", "Decimal of 6 bytes".
std::string SizedTypeName(int32_t code, int32_t size);

// "String, Integer, ...", for messages.
std::string AllFieldTypeNames();

}  // namespace qrndata
