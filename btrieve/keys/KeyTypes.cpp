// The table of key types.
#include "btrieve/keys/KeyTypes.h"

#include <algorithm>
#include <array>

#include "btrieve/keys/FieldOrder.h"

namespace btrieve {
namespace {

bool AnyLength(size_t) noexcept { return true; }
bool EvenLength(size_t length) noexcept { return length % 2 == 0; }
bool PowerOfTwo(size_t length) noexcept { return (length & (length - 1)) == 0; }

size_t AsLong(size_t length, bool) noexcept { return length; }

constexpr bool kText = true;
constexpr bool kOther = false;

// clang-format off
constexpr KeyTypeRow kRows[] = {
    // code  bytes    which of them  string   comparison         ordered bytes    their number
    {0,      1, 255,  AnyLength,     kText,   CompareBytes,      OrderBytes,      AsLong},
    {1,      1, 255,  AnyLength,     kOther,  CompareSigned,     OrderSigned,     AsLong},
    {2,      4, 8,    PowerOfTwo,    kOther,  CompareFloat,      OrderFloat,      AsLong},
    {3,      4, 4,    AnyLength,     kOther,  CompareUnsigned,   OrderUnsigned,   AsLong},
    {4,      4, 4,    AnyLength,     kOther,  CompareUnsigned,   OrderUnsigned,   AsLong},
    {5,      1, 64,   AnyLength,     kOther,  ComparePacked,     OrderPacked,     AsLong},
    {6,      1, 64,   AnyLength,     kOther,  ComparePacked,     OrderPacked,     AsLong},
    {7,      1, 2,    AnyLength,     kOther,  CompareBytes,      OrderBytes,      AsLong},
    {8,      1, 37,   AnyLength,     kOther,  CompareNumeric,    OrderNumeric,    SizeOfDigits},
    {9,      4, 8,    PowerOfTwo,    kOther,  CompareBFloat,     OrderBFloat,     AsLong},
    {10,     2, 255,  AnyLength,     kText,   CompareLString,    OrderLString,    AsLong},
    {11,     2, 255,  AnyLength,     kText,   CompareZString,    OrderZString,    SizeOfZString},
    {14,     1, 255,  AnyLength,     kOther,  CompareUnsigned,   OrderUnsigned,   AsLong},
    {15,     2, 8,    PowerOfTwo,    kOther,  CompareAbsolute,   OrderAbsolute,   AsLong},
    {17,     2, 15,   AnyLength,     kOther,  CompareNumericSts, OrderNumericSts, SizeOfStsDigits},
    {18,     1, 15,   AnyLength,     kOther,  CompareNumericSa,  OrderNumericSa,  SizeOfDigits},
    {19,     8, 8,    AnyLength,     kOther,  CompareSigned,     OrderSigned,     AsLong},
    {20,     8, 8,    AnyLength,     kOther,  CompareUnsigned,   OrderUnsigned,   AsLong},
    {25,     2, 254,  EvenLength,    kOther,  CompareWide,       OrderWide,       AsLong},
    {26,     2, 254,  EvenLength,    kOther,  CompareWideZ,      OrderWideZ,      AsLong},
    {27,     16, 16,  AnyLength,     kOther,  CompareBytes,      OrderBytes,      AsLong},
    {255,    1, 1,    AnyLength,     kOther,  CompareIndicator,  OrderIndicator,  AsLong},
};
// clang-format on

constexpr std::array<uint8_t, 256> kCaseFold = [] {
  std::array<uint8_t, 256> fold{};
  for (int i = 0; i < 256; ++i) {
    fold[i] = static_cast<uint8_t>(i >= 'a' && i <= 'z' ? i - 'a' + 'A' : i);
  }
  return fold;
}();

}  // namespace

const KeyTypeRow* FindKeyType(uint8_t code) noexcept {
  const auto row =
      std::find_if(std::begin(kRows), std::end(kRows),
                   [code](const KeyTypeRow& candidate) { return candidate.code == code; });
  return row == std::end(kRows) ? nullptr : row;
}

const uint8_t* CaseFoldMap() noexcept { return kCaseFold.data(); }

}  // namespace btrieve
