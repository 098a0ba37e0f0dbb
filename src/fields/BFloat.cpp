#include "fields/BFloat.h"

#include <algorithm>
#include <bit>

#include "fields/FloatText.h"
#include "fields/LittleEndian.h"
#include "fields/NumberText.h"

namespace qrn {
namespace {

constexpr int kBias8 = 894;  // between the exponents of a double and of the eight-byte form
constexpr int kDoubleMantissa = 52;
constexpr int kBFloatMantissa = 55;
constexpr uint64_t kDoubleMantissaMask = (uint64_t{1} << kDoubleMantissa) - 1;
constexpr uint64_t kBFloatMantissaMask = (uint64_t{1} << kBFloatMantissa) - 1;

constexpr int kBias4 = 2;
constexpr uint32_t kMantissaMask4 = (uint32_t{1} << 23) - 1;

}  // namespace

void BFloat8ToDouble(const QuorinSettings&, std::span<const uint8_t, kBFloat8Size> in,
                     double* out) noexcept {
  const auto bits = LoadLittle<uint64_t>(in);
  const uint64_t sign = bits >> kBFloatMantissa & 1;
  const uint64_t exponent = (bits >> 56) + kBias8;
  const uint64_t mantissa = (bits & kBFloatMantissaMask) >> 3;
  *out = std::bit_cast<double>(sign << 63 | exponent << kDoubleMantissa | mantissa);
}

int DoubleToBFloat8(const QuorinSettings&, double in,
                    std::span<uint8_t, kBFloat8Size> out) noexcept {
  const auto bits = std::bit_cast<uint64_t>(in);
  StoreLittle<uint64_t>(out, bits);
  const int exponent = static_cast<int>(bits >> kDoubleMantissa & 0x7FF) - kBias8;
  if (exponent < 0 || exponent > 255) {
    std::reverse(out.begin(), out.end());
    return -1;
  }
  const uint64_t sign = bits >> 63;
  const uint64_t mantissa = (bits & kDoubleMantissaMask) << 3;
  StoreLittle(out, static_cast<uint64_t>(exponent) << 56 | sign << kBFloatMantissa | mantissa);
  return 0;
}

float BFloat4ToFloat(const QuorinSettings&, uint32_t value) noexcept {
  const uint32_t sign = value >> 23 & 1;
  const uint32_t exponent = ((value >> 24) - kBias4) & 0xFF;
  return std::bit_cast<float>(sign << 31 | exponent << 23 | (value & kMantissaMask4));
}

uint32_t FloatToBFloat4(const QuorinSettings&, float value) noexcept {
  const auto bits = std::bit_cast<uint32_t>(value);
  const uint32_t exponent = ((bits >> 23) + kBias4) & 0xFF;
  return exponent << 24 | bits >> 31 << 23 | (bits & kMantissaMask4);
}

void ReadBFloat(const FieldSource& field, std::span<char> outText) {
  double value = 0;
  if (field.size == static_cast<int>(kBFloat8Size)) {
    uint8_t whole[kBFloat8Size];
    StoreLittle(std::span<uint8_t>(whole), LoadLittle<uint64_t>(field.value));
    BFloat8ToDouble(field.settings, whole, &value);
  } else {
    value = BFloat4ToFloat(field.settings, LoadLittle<uint32_t>(field.value));
  }
  FloatToText(field.settings, value, outText);
}

void WriteBFloat(const FieldTarget& field) {
  char clean[kNumberTextSize];
  const double value = ParseDouble(StripToNumber(field.settings, field.text, clean));
  if (field.size == 4) {
    return StoreLittle(field.out, FloatToBFloat4(field.settings, static_cast<float>(value)));
  }
  uint8_t whole[kBFloat8Size];
  DoubleToBFloat8(field.settings, value, whole);
  StoreLittle(field.out, LoadLittle<uint64_t>(whole));
}

}  // namespace qrn
