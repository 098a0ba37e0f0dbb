// Comparison and ordered bytes of the fields of each kind; KeyTypes.cpp names them in its table.
// All follow the contracts of CompareFields and OrderField (KeyTypes.h).
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "btrieve/system/LittleEndian.h"

namespace btrieve {

template <class Value>
int Sign(Value a, Value b) noexcept {
  return a < b ? -1 : a > b;
}

// Bytes as they stand (through the map), and strings that end before their field does.
int CompareBytes(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t* map) noexcept;
void OrderBytes(const uint8_t* field, size_t length, const uint8_t* map, uint8_t* out) noexcept;
int CompareLString(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t* map) noexcept;
void OrderLString(const uint8_t* field, size_t length, const uint8_t* map, uint8_t* out) noexcept;
int CompareZString(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t* map) noexcept;
void OrderZString(const uint8_t* field, size_t length, const uint8_t* map, uint8_t* out) noexcept;
int CompareWide(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t* map) noexcept;
void OrderWide(const uint8_t* field, size_t length, const uint8_t* map, uint8_t* out) noexcept;
int CompareWideZ(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t* map) noexcept;
void OrderWideZ(const uint8_t* field, size_t length, const uint8_t* map, uint8_t* out) noexcept;

// Little-endian numbers of any length. Dates and times are unsigned ones too: their bytes go from
// the least part to the greatest.
int CompareUnsigned(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t*) noexcept;
void OrderUnsigned(const uint8_t* field, size_t length, const uint8_t*, uint8_t* out) noexcept;
int CompareSigned(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t*) noexcept;
void OrderSigned(const uint8_t* field, size_t length, const uint8_t*, uint8_t* out) noexcept;
int CompareAbsolute(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t*) noexcept;
void OrderAbsolute(const uint8_t* field, size_t length, const uint8_t*, uint8_t* out) noexcept;
int CompareIndicator(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t*) noexcept;
void OrderIndicator(const uint8_t* field, size_t length, const uint8_t*, uint8_t* out) noexcept;

// Floating point, 4 or 8 bytes. A negative NaN stands before everything, a positive one behind.
int CompareFloat(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t*) noexcept;
void OrderFloat(const uint8_t* field, size_t length, const uint8_t*, uint8_t* out) noexcept;
int CompareBFloat(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t*) noexcept;
void OrderBFloat(const uint8_t* field, size_t length, const uint8_t*, uint8_t* out) noexcept;

// Decimal digits with a sign, by value.
int ComparePacked(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t*) noexcept;
void OrderPacked(const uint8_t* field, size_t length, const uint8_t*, uint8_t* out) noexcept;
int CompareNumeric(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t*) noexcept;
void OrderNumeric(const uint8_t* field, size_t length, const uint8_t*, uint8_t* out) noexcept;
int CompareNumericSts(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t*) noexcept;
void OrderNumericSts(const uint8_t* field, size_t length, const uint8_t*, uint8_t* out) noexcept;
int CompareNumericSa(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t*) noexcept;
void OrderNumericSa(const uint8_t* field, size_t length, const uint8_t*, uint8_t* out) noexcept;

// Sizes of the ordered bytes, where they are not the field's length.
size_t SizeOfZString(size_t length, bool mapped) noexcept;
size_t SizeOfDigits(size_t length, bool mapped) noexcept;     // a sign and `length` digits
size_t SizeOfStsDigits(size_t length, bool mapped) noexcept;  // the last character is the sign

}  // namespace btrieve
