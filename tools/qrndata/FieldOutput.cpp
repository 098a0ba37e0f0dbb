#include "tools/qrndata/FieldOutput.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <vector>

#include "fields/BFloat.h"
#include "fields/FieldText.h"
#include "fields/LittleEndian.h"
#include "tools/qrndata/FieldTypes.h"

namespace qrndata {

namespace {

using Value = std::span<const uint8_t>;

std::string EngineText(const qrn::QuorinSettings& settings, const qrn::DbFieldInfo& field,
                       Value record, size_t offset) {
  // No type's text is longer than the bytes it comes from by more than this.
  constexpr size_t kSlack = 600;
  std::vector<char> text(record.size() + static_cast<size_t>(std::max(field.Size, 0)) + kSlack);
  qrn::GetFieldText(settings, text, record.data() + offset, field, record);
  return text.data();
}

std::string WholeText(const qrn::DbFieldInfo& field, Value value) {
  const auto unused = static_cast<unsigned>(64 - field.Size * 8);
  const auto bits = qrn::LoadLittle<uint64_t>(value.first(static_cast<size_t>(field.Size)));
  if (field.Type == qrn::kUBin || field.Size == 1) return std::to_string(bits);
  return std::to_string(static_cast<int64_t>(bits << unused) >> unused);
}

template <class Real>
std::string ShortestText(Real value) {
  std::array<char, 400> text{};
  const auto result =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
  return {text.data(), result.ptr};
}

bool AreZero(Value bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](uint8_t byte) { return byte == 0; });
}

std::string RealText(const qrn::QuorinSettings& settings, const qrn::DbFieldInfo& field,
                     Value value) {
  const bool isBFloat = field.Type == qrn::kBFloat;
  if (field.Size == 4) {
    const auto bits = qrn::LoadLittle<uint32_t>(value);
    if (isBFloat && bits == 0) return "0";
    return ShortestText(isBFloat ? qrn::BFloat4ToFloat(settings, bits)
                                 : std::bit_cast<float>(bits));
  }
  if (!isBFloat) return ShortestText(qrn::LoadLittle<double>(value));
  const auto bytes = value.first<qrn::kBFloat8Size>();
  double number = 0;
  if (!AreZero(bytes)) qrn::BFloat8ToDouble(settings, bytes, &number);
  return ShortestText(number);
}

// Digits with the point put back, as a number is usually written; empty when a character is none.
std::string PointedText(bool isNegative, std::string digits, size_t decimals) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  if (!std::all_of(digits.begin(), digits.end(), isDigit)) return {};
  if (digits.size() <= decimals) digits.insert(0, decimals + 1 - digits.size(), '0');
  const size_t spare = digits.size() - decimals - 1;
  digits.erase(0, std::min(digits.find_first_not_of('0'), spare));
  if (decimals != 0) digits.insert(digits.size() - decimals, 1, '.');
  return (isNegative ? "-" : "") + digits;
}

std::string SignedDigitsText(const qrn::DbFieldInfo& field, Value value) {
  std::string digits(value.begin(), value.begin() + std::max(field.Size, 1));
  bool isNegative = false;
  if (field.Type == qrn::kNumericSTS) {
    isNegative = digits.back() == '-';
    digits.pop_back();
  } else if (digits.back() >= 'p' && digits.back() <= 'y') {
    isNegative = true;
    digits.back() = static_cast<char>(digits.back() - 'p' + '0');
  }
  return PointedText(isNegative, digits, static_cast<size_t>(std::max(field.Decimals, 0)));
}

std::string TimeText(const std::string& engineText, Value value) {
  if (value[0] == 0) return AreZero(value.first(4)) ? "" : engineText;
  std::array<char, 8> hundredths{};
  std::snprintf(hundredths.data(), hundredths.size(), ".%02u", value[0]);
  return engineText + hundredths.data();
}

// Whole, with any NUL in it; nothing when the descriptor points out of the record.
std::string BlobText(Value record, Value value) {
  const auto length = qrn::LoadLittle<uint32_t>(value);
  const auto offset = qrn::LoadLittle<uint32_t>(value.subspan(4));
  if (offset > record.size() || length > record.size() - offset) return {};
  const Value data = record.subspan(offset, length);
  return {data.begin(), data.end()};
}

// Bytes that a record must have from the value's start for it to be read.
size_t BytesNeeded(const qrn::DbFieldInfo& field) {
  const bool isOpenEnded = field.Type == qrn::kNote || field.Type == qrn::kLVar;
  const FieldTypeRow* type = FindFieldType(field.Type);
  const int32_t least = type == nullptr ? 1 : type->shortest;
  return isOpenEnded ? 1 : static_cast<size_t>(std::max(field.Size, least));
}

// Forms show other bytes than 0 and 1 as characters, one of them as nothing.
std::string LogicalText(Value value) { return std::to_string(value[0]); }

// Forms read a text that fills its field one byte too far.
std::string WithinField(std::string text, const qrn::DbFieldInfo& field) {
  const auto room = static_cast<size_t>(std::max(field.Size, 1)) - 1;
  if (text.size() > room) text.resize(room);
  return text;
}

// Nothing where the engine's text is as good.
std::string OwnText(const qrn::QuorinSettings& settings, const qrn::DbFieldInfo& field,
                    Value value) {
  const bool isPlainSize = field.Size == 1 || field.Size == 2 || field.Size == 4 || field.Size == 8;
  switch (field.Type) {
    case qrn::kInteger:
    case qrn::kUBin:
    case qrn::kAutoInc:
      return isPlainSize ? WholeText(field, value) : "";
    case qrn::kFloat:
    case qrn::kBFloat:
      return field.Size == 4 || field.Size == 8 ? RealText(settings, field, value) : "";
    case qrn::kNumericSTS:
    case qrn::kNumericSA:
      return SignedDigitsText(field, value);
    case qrn::kLogical:
      return LogicalText(value);
    default:
      return {};
  }
}

}  // namespace

std::string FieldValueText(const qrn::QuorinSettings& settings, const qrn::DbFieldInfo& field,
                           std::span<const uint8_t> record, size_t offset) {
  const size_t needed = BytesNeeded(field);
  if (offset > record.size() || record.size() - offset < needed) return {};
  const Value value = record.subspan(offset);
  if (field.Type == qrn::kBlob) return BlobText(record, value);
  std::string text = OwnText(settings, field, value);
  if (!text.empty()) return text;
  text = EngineText(settings, field, record, offset);
  if (field.Type == qrn::kDate && AreZero(value.first(4))) return {};
  if (field.Type == qrn::kTime) return TimeText(text, value);
  if (field.Type == qrn::kLString) return WithinField(std::move(text), field);
  if (field.Type == qrn::kCurrency && text.ends_with('.')) text.pop_back();
  return text;
}

}  // namespace qrndata
