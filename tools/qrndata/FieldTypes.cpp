#include "tools/qrndata/FieldTypes.h"

#include <algorithm>
#include <iterator>

#include "core/DbTypes.h"
#include "tools/qrndata/Messages.h"
#include "tools/qrndata/Progress.h"

namespace qrndata {

namespace {

constexpr uint32_t Sizes(auto... sizes) { return ((1u << sizes) | ...); }

// Forms hold a field's text in 4,096 bytes.
constexpr int32_t kLongestText = 4096;
// The length byte counts as signed.
constexpr int32_t kLongestLString = 128;

// Sizes that the files could hold but forms read wrongly (UBin of 1 or 8 bytes, Logical of 2) are
// not taken.
// clang-format off
constexpr FieldTypeRow kFieldTypes[] = {
    {qrn::kString,     "String",     Family::Text,    1, kLongestText,    0, 0, 0, 0},
    {qrn::kInteger,    "Integer",    Family::Whole,   1, 8,               4, Sizes(1, 2, 4, 8), 0, 0},
    {qrn::kFloat,      "Float",      Family::Real,    4, 8,               8, Sizes(4, 8), 0, 0},
    {qrn::kDate,       "Date",       Family::Date,    4, 4,               4, 0, 0, 0},
    {qrn::kTime,       "Time",       Family::Time,    4, 4,               4, 0, 0, 0},
    {qrn::kDecimal,    "Decimal",    Family::Digits,  1, 64,              0, 0, 1, 2},
    {qrn::kMoney,      "Money",      Family::Digits,  1, 64,              0, 0, 1, 2},
    {qrn::kLogical,    "Logical",    Family::Logical, 1, 1,               1, 0, 0, 0},
    {qrn::kNumeric,    "Numeric",    Family::Digits,  1, 15,              0, 0, 0, 1},
    {qrn::kBFloat,     "BFloat",     Family::Real,    4, 8,               8, Sizes(4, 8), 0, 0},
    {qrn::kLString,    "LString",    Family::Text,    2, kLongestLString, 0, 0, 0, 0},
    {qrn::kZString,    "ZString",    Family::Text,    2, kLongestText,    0, 0, 0, 0},
    {qrn::kNote,       "Note",       Family::Text,    2, 32000,           0, 0, 0, 0},
    {qrn::kLVar,       "LVar",       Family::Text,    2, 32000,           0, 0, 0, 0},
    {qrn::kUBin,       "UBin",       Family::Whole,   2, 4,               4, Sizes(2, 4), 0, 0},
    {qrn::kAutoInc,    "AutoInc",    Family::Whole,   2, 4,               4, Sizes(2, 4), 0, 0},
    {qrn::kBit,        "Bit",        Family::Bit,     1, 1,               1, 0, 0, 0},
    {qrn::kNumericSTS, "NumericSTS", Family::Digits,  2, 15,              0, 0, 1, 1},
    {qrn::kNumericSA,  "NumericSA",  Family::Digits,  1, 15,              0, 0, 0, 1},
    {qrn::kCurrency,   "Currency",   Family::Digits,  8, 8,               8, 0, 0, 0},
    {qrn::kBlob,       "Blob",       Family::Blob,    8, 8,               8, 0, 0, 0},
};
// clang-format on

constexpr int32_t kCurrencyDecimals = 18;

template <class Predicate>
const FieldTypeRow* FindIf(Predicate matches) {
  const auto* found = std::find_if(std::begin(kFieldTypes), std::end(kFieldTypes), matches);
  return found == std::end(kFieldTypes) ? nullptr : found;
}

}  // namespace

bool FieldTypeRow::Takes(int64_t size) const noexcept {
  return size >= shortest && size <= longest && (sizes == 0 || (sizes >> size & 1) != 0);
}

int32_t FieldTypeRow::MaxDecimals(int32_t size) const noexcept {
  if (family != Family::Digits) return 0;
  return code == qrn::kCurrency ? kCurrencyDecimals : size * digitsPerByte - spareDigits;
}

std::string SizesOf(const FieldTypeRow& type) {
  if (type.sizes == 0 && type.shortest == type.longest) return std::to_string(type.longest);
  if (type.sizes == 0) return Say(Message::FromTo, type.shortest, type.longest);
  std::string list;
  for (int32_t size = type.shortest; size <= type.longest; ++size) {
    if (!type.Takes(size)) continue;
    if (!list.empty()) list += size == type.longest ? Say(Message::OrLast) : ", ";
    list += std::to_string(size);
  }
  return list;
}

const FieldTypeRow* FindFieldType(std::string_view name) noexcept {
  return FindIf([&](const FieldTypeRow& row) { return row.name == name; });
}

const FieldTypeRow* FindFieldType(int32_t code) noexcept {
  return FindIf([&](const FieldTypeRow& row) { return row.code == code; });
}

std::string FieldTypeName(int32_t code) {
  const FieldTypeRow* row = FindFieldType(code);
  return row != nullptr ? row->name : Say(Message::TypeNumber, code);
}

std::string SizedTypeName(int32_t code, int32_t size) {
  return Say(Message::SizedType, FieldTypeName(code),
             Counted(static_cast<uint64_t>(std::max(size, 0)), Message::ByteCount));
}

std::string AllFieldTypeNames() {
  std::string names;
  for (const FieldTypeRow& row : kFieldTypes) {
    names.append(names.empty() ? "" : ", ").append(row.name);
  }
  return names;
}

}  // namespace qrndata
