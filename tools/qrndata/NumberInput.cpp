#include "tools/qrndata/NumberInput.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

#include "tools/qrndata/FieldTypes.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Progress.h"

namespace qrndata {

namespace {

// Fits any sign, any 64-bit number and any double in plain digits.
using NumberText = std::array<char, 400>;

struct WholeRange {
  int64_t least;
  uint64_t most;
};

// One byte reads as unsigned whatever its type.
WholeRange RangeOf(const qrn::DbFieldInfo& field) {
  if (field.Size == 1) return {0, 255};
  const auto bits = static_cast<unsigned>(field.Size) * 8;
  const uint64_t allBits = bits == 64 ? ~uint64_t{0} : (uint64_t{1} << bits) - 1;
  if (field.Type == qrn::kUBin) return {0, allBits};
  const auto mostSigned = static_cast<int64_t>(allBits >> 1);
  return {-mostSigned - 1, allBits >> 1};
}

std::string_view WithoutPlus(std::string_view text) {
  if (text.size() > 1 && text[0] == '+') text.remove_prefix(1);
  return text;
}

bool AreDigits(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// A number in parts: sign, digits before and behind the point.
struct Parts {
  bool isNumber = false;
  bool isNegative = false;
  std::string_view whole;
  std::string_view fraction;
};

Parts Split(std::string_view text) {
  Parts parts;
  text = WithoutPlus(text);
  parts.isNegative = text.starts_with('-');
  if (parts.isNegative) text.remove_prefix(1);
  const size_t point = text.find('.');
  parts.whole = text.substr(0, point);
  if (point != std::string_view::npos) parts.fraction = text.substr(point + 1);
  parts.isNumber = AreDigits(parts.whole) && AreDigits(parts.fraction) &&
                   !(parts.whole.empty() && parts.fraction.empty());
  parts.whole.remove_prefix(std::min(parts.whole.find_first_not_of('0'), parts.whole.size()));
  parts.fraction = parts.fraction.substr(0, parts.fraction.find_last_not_of('0') + 1);
  return parts;
}

// Digits that the field has in front of the point.
int32_t WholePlaces(const qrn::DbFieldInfo& field) {
  const FieldTypeRow* type = FindFieldType(field.Type);
  return std::max(type->MaxDecimals(field.Size) - field.Decimals, 0);
}

bool FitsCurrency(bool isNegative, const std::string& digits) {
  const std::string text = (isNegative ? "-" : "") + digits;
  int64_t value = 0;
  return std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc{};
}

std::string Count(int32_t number, Message what) {
  return Counted(static_cast<uint64_t>(std::max(number, 0)), what);
}

// The magnitudes that the binary form of the type has.
struct RealRange {
  double least, most;
};

RealRange RealRangeOf(const qrn::DbFieldInfo& field) {
  const bool isBFloat = field.Type == qrn::kBFloat;
  if (isBFloat && field.Size == 8) return {0x1p-128, 0x1.fffffffffffffp+126};
  if (isBFloat) return {0x1p-126, 0x1.fffffep+126};
  if (field.Size == 4) return {0, std::numeric_limits<float>::max()};
  return {0, std::numeric_limits<double>::max()};
}

}  // namespace

CheckedText CheckWhole(const qrn::DbFieldInfo& field, std::string_view text) {
  if (text.empty()) return {"0", {}};
  if (field.Size != 1 && field.Size != 2 && field.Size != 4 && field.Size != 8) {
    return {{}, Say(Message::WholeSizeOdd, Count(field.Size, Message::ByteCount))};
  }
  text = WithoutPlus(text);
  const WholeRange range = RangeOf(field);
  const bool isNegative = text.starts_with('-');
  const std::string_view digits = text.substr(isNegative ? 1 : 0);
  const auto limit = isNegative ? uint64_t{0} - static_cast<uint64_t>(range.least) : range.most;
  uint64_t magnitude = 0;
  const auto [end, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), magnitude);
  const bool isNumber = !digits.empty() && AreDigits(digits);
  if (!isNumber || error != std::errc{} || magnitude > limit) {
    return {{}, Say(Message::WholeExpected, range.least, range.most)};
  }
  return {(isNegative && magnitude != 0 ? "-" : "") + std::to_string(magnitude), {}};
}

CheckedText CheckReal(const qrn::DbFieldInfo& field, std::string_view text) {
  if (text.empty()) return {"0", {}};
  text = WithoutPlus(text);
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (end != text.data() + text.size() || error == std::errc::invalid_argument ||
      !std::isfinite(value)) {
    return {{}, Say(Message::RealExpected)};
  }
  const RealRange range = RealRangeOf(field);
  const double magnitude = std::fabs(value);
  if (error != std::errc{} || magnitude > range.most || (value != 0 && magnitude < range.least)) {
    return {{}, Say(Message::OutsideType, SizedTypeName(field.Type, field.Size))};
  }
  NumberText plain{};
  const auto result =
      std::to_chars(plain.data(), plain.data() + plain.size(), value, std::chars_format::fixed);
  if (result.ec != std::errc{}) return {{}, Say(Message::TooManyDigits)};
  return {std::string(plain.data(), result.ptr), {}};
}

CheckedText CheckDigits(const qrn::DbFieldInfo& field, std::string_view text) {
  const Parts parts = text.empty() ? Parts{true, false, {}, {}} : Split(text);
  if (!parts.isNumber) return {{}, Say(Message::NumberExpected)};
  const auto decimals = static_cast<size_t>(std::max(field.Decimals, 0));
  const int32_t places = WholePlaces(field);
  if (parts.fraction.size() > decimals) {
    return {{}, Say(Message::AtMost, Count(field.Decimals, Message::Decimals))};
  }
  std::string digits = std::string(parts.whole) + std::string(parts.fraction) +
                       std::string(decimals - parts.fraction.size(), '0');
  const bool fits = field.Type == qrn::kCurrency
                        ? digits.empty() || FitsCurrency(parts.isNegative, digits)
                        : parts.whole.size() <= static_cast<size_t>(places);
  if (!fits) {
    return {{},
            field.Type == qrn::kCurrency
                ? Say(Message::NumberTooLarge)
                : Say(Message::AtMostBeforePoint, Count(places, Message::Digits))};
  }
  if (decimals != 0) digits.insert(digits.size() - decimals, 1, '.');
  // A zero in front of the point would take a place that a field of decimals alone does not have.
  if (parts.whole.empty() && (places > 0 || field.Type == qrn::kCurrency)) digits.insert(0, 1, '0');
  return {(parts.isNegative ? "-" : "") + digits, {}};
}

void PutWhole(const std::string& text, int32_t size, std::span<uint8_t> out) {
  const bool isNegative = text.starts_with('-');
  uint64_t value = 0;
  std::from_chars(text.data() + (isNegative ? 1 : 0), text.data() + text.size(), value);
  if (isNegative) value = uint64_t{0} - value;
  const size_t width = std::min({out.size(), sizeof value, static_cast<size_t>(size)});
  std::memcpy(out.data(), &value, width);
}

}  // namespace qrndata
