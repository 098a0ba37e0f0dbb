// Order of character fields: fixed, counted, NUL-terminated, single bytes and 16-bit units.
#include <algorithm>

#include "btrieve/keys/FieldOrder.h"

namespace btrieve {
namespace {

// A string inside its field: where it begins and how long it is.
struct Text {
  const uint8_t* bytes;
  size_t length;
};

Text CountedText(const uint8_t* field, size_t length) noexcept {
  return {field + 1, std::min<size_t>(field[0], length - 1)};
}

Text TerminatedText(const uint8_t* field, size_t length) noexcept {
  const void* end = std::memchr(field, 0, length);
  return {field, end ? static_cast<size_t>(static_cast<const uint8_t*>(end) - field) : length};
}

int CompareTexts(Text a, Text b, const uint8_t* map) noexcept {
  const int shared = CompareBytes(a.bytes, b.bytes, std::min(a.length, b.length), map);
  return shared != 0 ? shared : Sign(a.length, b.length);
}

// The text, and zeros up to `room`. Zeros sort before or with anything that a longer text holds.
void OrderText(Text text, size_t room, const uint8_t* map, uint8_t* out) noexcept {
  OrderBytes(text.bytes, text.length, map, out);
  std::memset(out + text.length, 0, room - text.length);
}

size_t UnitsBeforeZero(const uint8_t* field, size_t length) noexcept {
  size_t at = 0;
  while (at + 1 < length && LoadValue<uint16_t>(field + at) != 0) at += 2;
  return at / 2;
}

int CompareUnits(const uint8_t* a, const uint8_t* b, size_t units) noexcept {
  for (size_t i = 0; i < units; ++i) {
    const int sign = Sign(LoadValue<uint16_t>(a + 2 * i), LoadValue<uint16_t>(b + 2 * i));
    if (sign != 0) return sign;
  }
  return 0;
}

void OrderUnits(const uint8_t* field, size_t units, uint8_t* out) noexcept {
  for (size_t i = 0; i < units; ++i) {
    out[2 * i] = field[2 * i + 1];
    out[2 * i + 1] = field[2 * i];
  }
}

}  // namespace

int CompareBytes(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t* map) noexcept {
  if (!map) return std::memcmp(a, b, length);
  for (size_t i = 0; i < length; ++i) {
    if (map[a[i]] != map[b[i]]) return map[a[i]] < map[b[i]] ? -1 : 1;
  }
  return 0;
}

void OrderBytes(const uint8_t* field, size_t length, const uint8_t* map, uint8_t* out) noexcept {
  if (!map) {
    std::memcpy(out, field, length);
    return;
  }
  for (size_t i = 0; i < length; ++i) out[i] = map[field[i]];
}

int CompareLString(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t* map) noexcept {
  return CompareTexts(CountedText(a, length), CountedText(b, length), map);
}

// The count comes last: it decides between texts that differ by zeros at their end alone.
void OrderLString(const uint8_t* field, size_t length, const uint8_t* map, uint8_t* out) noexcept {
  const Text text = CountedText(field, length);
  OrderText(text, length - 1, map, out);
  out[length - 1] = static_cast<uint8_t>(text.length);
}

int CompareZString(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t* map) noexcept {
  return CompareTexts(TerminatedText(a, length), TerminatedText(b, length), map);
}

// Without a map no byte of the text is zero. A map may make one so: then the length decides.
void OrderZString(const uint8_t* field, size_t length, const uint8_t* map, uint8_t* out) noexcept {
  const Text text = TerminatedText(field, length);
  OrderText(text, length, map, out);
  if (map) out[length] = static_cast<uint8_t>(text.length);
}

size_t SizeOfZString(size_t length, bool mapped) noexcept { return length + (mapped ? 1 : 0); }

int CompareWide(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t*) noexcept {
  return CompareUnits(a, b, length / 2);
}

void OrderWide(const uint8_t* field, size_t length, const uint8_t*, uint8_t* out) noexcept {
  OrderUnits(field, length / 2, out);
}

int CompareWideZ(const uint8_t* a, const uint8_t* b, size_t length, const uint8_t*) noexcept {
  const size_t unitsA = UnitsBeforeZero(a, length);
  const size_t unitsB = UnitsBeforeZero(b, length);
  const int shared = CompareUnits(a, b, std::min(unitsA, unitsB));
  return shared != 0 ? shared : Sign(unitsA, unitsB);
}

void OrderWideZ(const uint8_t* field, size_t length, const uint8_t*, uint8_t* out) noexcept {
  const size_t units = UnitsBeforeZero(field, length);
  OrderUnits(field, units, out);
  std::memset(out + 2 * units, 0, length - 2 * units);
}

}  // namespace btrieve
