// Order of decimal digits with a sign. Ordered bytes are nibbles: 1 for zero and above, 0 below,
// then the digits, each taken from 9 for a negative value so that the larger amount comes first.
#include <algorithm>
#include <array>

#include "btrieve/keys/FieldOrder.h"
#include "btrieve/keys/KeyTypes.h"

namespace btrieve {
namespace {

// Longest ordered bytes of any decimal field: a packed one of 64 bytes.
constexpr size_t kLongest = 64;

// Each byte with its nibbles above 9 put to 0.
constexpr std::array<uint8_t, 256> kCleanNibbles = [] {
  std::array<uint8_t, 256> clean{};
  for (int i = 0; i < 256; ++i) {
    const int high = i >> 4;
    const int low = i & 15;
    clean[i] = static_cast<uint8_t>((high > 9 ? 0 : high << 4) | (low > 9 ? 0 : low));
  }
  return clean;
}();

// `out` holds a nibble for the sign and then digits, `padding` nibbles behind them stay 0.
void PutSign(bool negative, bool padding, size_t size, uint8_t* out) noexcept {
  const bool zero = std::all_of(out, out + size, [](uint8_t byte) { return byte == 0; });
  if (!negative || zero) {
    out[0] |= 0x10;
    return;
  }
  for (size_t i = 0; i < size; ++i) out[i] = static_cast<uint8_t>(0x99 - out[i]);
  out[0] &= 0x0F;
  if (padding) out[size - 1] &= 0xF0;
}

// A sign character: the digit it stands for and whether it makes the number negative.
struct SignedDigit {
  uint8_t digit;
  bool negative;
};

uint8_t Digit(uint8_t character) noexcept {
  return character >= '0' && character <= '9' ? static_cast<uint8_t>(character - '0') : 0;
}

SignedDigit NumericSign(uint8_t character) noexcept {
  if (character >= 'A' && character <= 'I') return {static_cast<uint8_t>(character - '@'), false};
  if (character >= 'J' && character <= 'R') return {static_cast<uint8_t>(character - 'I'), true};
  return {Digit(character), character == '}'};
}

SignedDigit NumericSaSign(uint8_t character) noexcept {
  if (character >= 'p' && character <= 'y') return {static_cast<uint8_t>(character - 'p'), true};
  return {Digit(character), false};
}

// `digits` characters, the last of them standing for `last`.
void OrderDigits(const uint8_t* field, size_t digits, SignedDigit last, uint8_t* out) noexcept {
  const size_t size = SizeOfDigits(digits, false);
  std::memset(out, 0, size);
  for (size_t i = 0; i < digits; ++i) {
    const uint8_t digit = i + 1 == digits ? last.digit : Digit(field[i]);
    out[(i + 1) / 2] |= static_cast<uint8_t>((i + 1) % 2 ? digit : digit << 4);
  }
  PutSign(last.negative, digits % 2 == 0, size, out);
}

template <OrderField order>
int CompareOrdered(const uint8_t* a, const uint8_t* b, size_t length, size_t size) noexcept {
  uint8_t orderedA[kLongest];
  uint8_t orderedB[kLongest];
  order(a, length, nullptr, orderedA);
  order(b, length, nullptr, orderedB);
  return std::memcmp(orderedA, orderedB, size);
}

}  // namespace

size_t SizeOfDigits(size_t length, bool) noexcept { return (length + 2) / 2; }

size_t SizeOfStsDigits(size_t length, bool) noexcept { return (length + 1) / 2; }

// The sign moves from the last nibble to the first, the digits one nibble back.
void OrderPacked(const uint8_t* field, size_t length, const uint8_t*, uint8_t* out) noexcept {
  uint8_t carried = 0;
  for (size_t i = 0; i < length; ++i) {
    const uint8_t clean = kCleanNibbles[field[i]];
    out[i] = static_cast<uint8_t>(carried << 4 | clean >> 4);
    carried = clean & 15;
  }
  PutSign((field[length - 1] & 15) == 13, false, length, out);
}

int ComparePacked(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t*) noexcept {
  return CompareOrdered<OrderPacked>(a, b, length, length);
}

void OrderNumeric(const uint8_t* field, size_t length, const uint8_t*, uint8_t* out) noexcept {
  OrderDigits(field, length, NumericSign(field[length - 1]), out);
}

int CompareNumeric(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t*) noexcept {
  return CompareOrdered<OrderNumeric>(a, b, length, SizeOfDigits(length, false));
}

void OrderNumericSts(const uint8_t* field, size_t length, const uint8_t*, uint8_t* out) noexcept {
  OrderDigits(field, length - 1, {Digit(field[length - 2]), field[length - 1] == '-'}, out);
}

int CompareNumericSts(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t*) noexcept {
  return CompareOrdered<OrderNumericSts>(a, b, length, SizeOfStsDigits(length, false));
}

void OrderNumericSa(const uint8_t* field, size_t length, const uint8_t*, uint8_t* out) noexcept {
  OrderDigits(field, length, NumericSaSign(field[length - 1]), out);
}

int CompareNumericSa(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t*) noexcept {
  return CompareOrdered<OrderNumericSa>(a, b, length, SizeOfDigits(length, false));
}

}  // namespace btrieve
