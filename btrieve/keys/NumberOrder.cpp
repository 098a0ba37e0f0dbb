// Order of binary numbers: integers of any length, floating point of both kinds.
#include "btrieve/keys/FieldOrder.h"

namespace btrieve {
namespace {

template <class Value>
int CompareAs(const uint8_t* a, const uint8_t* b) noexcept {
  return Sign(LoadValue<Value>(a), LoadValue<Value>(b));
}

// From the most significant byte, which lies last, down.
int CompareFromTop(const uint8_t* a, const uint8_t* b, size_t length) noexcept {
  for (size_t i = length; i-- > 0;) {
    if (a[i] != b[i]) return a[i] < b[i] ? -1 : 1;
  }
  return 0;
}

void Reverse(const uint8_t* field, size_t length, uint8_t* out) noexcept {
  for (size_t i = 0; i < length; ++i) out[i] = field[length - 1 - i];
}

void PutBigEndian(uint64_t value, size_t length, uint8_t* out) noexcept {
  for (size_t i = length; i-- > 0; value >>= 8) out[i] = static_cast<uint8_t>(value);
}

constexpr uint64_t TopBit(size_t length) noexcept { return uint64_t{1} << (8 * length - 1); }

uint64_t LoadUnsigned(const uint8_t* field, size_t length) noexcept {
  uint64_t value = 0;
  std::memcpy(&value, field, length);
  return value;
}

// The absolute value of a two's complement number; that of the lowest one still fits unsigned.
uint64_t LoadAbsolute(const uint8_t* field, size_t length) noexcept {
  const uint64_t value = LoadUnsigned(field, length);
  if (!(value & TopBit(length))) return value;
  const uint64_t mask = TopBit(length) | (TopBit(length) - 1);
  return (~value + 1) & mask;
}

// Sign and magnitude to a number whose plain order is the value's: negatives are turned over.
uint64_t OrderMagnitude(uint64_t magnitude, bool negative, size_t length) noexcept {
  const uint64_t top = TopBit(length);
  if (magnitude == 0 || !negative) return top | magnitude;
  return (top - 1) & ~magnitude;
}

uint64_t FloatKey(const uint8_t* field, size_t length) noexcept {
  const uint64_t bits = LoadUnsigned(field, length);
  const uint64_t top = TopBit(length);
  return OrderMagnitude(bits & (top - 1), (bits & top) != 0, length);
}

// Last byte exponent, top bit of the byte before it the sign, the rest mantissa.
uint64_t BFloatKey(const uint8_t* field, size_t length) noexcept {
  const uint64_t exponent = field[length - 1];
  if (exponent == 0) return OrderMagnitude(0, false, length);
  const size_t mantissaBits = 8 * (length - 1) - 1;
  const uint64_t mantissa = LoadUnsigned(field, length - 1) & ((uint64_t{1} << mantissaBits) - 1);
  return OrderMagnitude(exponent << mantissaBits | mantissa, (field[length - 2] & 0x80) != 0,
                        length);
}

}  // namespace

int CompareUnsigned(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t*) noexcept {
  switch (length) {
    case 2:
      return CompareAs<uint16_t>(a, b);
    case 4:
      return CompareAs<uint32_t>(a, b);
    case 8:
      return CompareAs<uint64_t>(a, b);
    default:
      return CompareFromTop(a, b, length);
  }
}

void OrderUnsigned(const uint8_t* field, size_t length, const uint8_t*, uint8_t* out) noexcept {
  Reverse(field, length, out);
}

int CompareSigned(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t*) noexcept {
  switch (length) {
    case 2:
      return CompareAs<int16_t>(a, b);
    case 4:
      return CompareAs<int32_t>(a, b);
    case 8:
      return CompareAs<int64_t>(a, b);
    default:
      break;
  }
  const int top = CompareAs<int8_t>(a + length - 1, b + length - 1);
  return top != 0 ? top : CompareFromTop(a, b, length - 1);
}

void OrderSigned(const uint8_t* field, size_t length, const uint8_t*, uint8_t* out) noexcept {
  Reverse(field, length, out);
  out[0] ^= 0x80;
}

int CompareAbsolute(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t*) noexcept {
  return Sign(LoadAbsolute(a, length), LoadAbsolute(b, length));
}

void OrderAbsolute(const uint8_t* field, size_t length, const uint8_t*, uint8_t* out) noexcept {
  PutBigEndian(LoadAbsolute(field, length), length, out);
}

int CompareIndicator(const uint8_t* a, const uint8_t* b, size_t, const uint8_t*) noexcept {
  return Sign(a[0] != 0, b[0] != 0);
}

void OrderIndicator(const uint8_t* field, size_t, const uint8_t*, uint8_t* out) noexcept {
  out[0] = field[0] != 0;
}

int CompareFloat(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t*) noexcept {
  return Sign(FloatKey(a, length), FloatKey(b, length));
}

void OrderFloat(const uint8_t* field, size_t length, const uint8_t*, uint8_t* out) noexcept {
  PutBigEndian(FloatKey(field, length), length, out);
}

int CompareBFloat(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t*) noexcept {
  return Sign(BFloatKey(a, length), BFloatKey(b, length));
}

void OrderBFloat(const uint8_t* field, size_t length, const uint8_t*, uint8_t* out) noexcept {
  PutBigEndian(BFloatKey(field, length), length, out);
}

}  // namespace btrieve
