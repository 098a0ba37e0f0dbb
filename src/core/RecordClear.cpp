// The empty record.
#include <algorithm>

#include "core/Record.h"
#include "core/RecordBuffer.h"
#include "core/ReturnCodes.h"

namespace qrn {
namespace {

void FillBytes(std::span<uint8_t> bytes, int32_t count, char value) {
  const auto wanted = static_cast<size_t>(std::max(count, 0));
  std::fill_n(bytes.begin(), std::min(wanted, bytes.size()), static_cast<uint8_t>(value));
}

int32_t IntegerWidth(int32_t size) { return size == 4 || size == 1 ? size : 2; }

// Zeros, the last carrying the sign.
void FillNumeric(std::span<uint8_t> bytes, int32_t size) {
  const int32_t zeros = std::max(size, 1) - 1;
  FillBytes(bytes, zeros, '0');
  if (static_cast<size_t>(zeros) < bytes.size()) bytes[static_cast<size_t>(zeros)] = '{';
}

using ClearFunction = void (*)(std::span<uint8_t> bytes, int32_t size);

struct ClearRow {
  int32_t type;
  ClearFunction clear;
};

constexpr ClearFunction kZeroSize = [](std::span<uint8_t> bytes, int32_t size) {
  FillBytes(bytes, size, '\0');
};
constexpr ClearFunction kZero8 = [](std::span<uint8_t> bytes, int32_t) {
  FillBytes(bytes, 8, '\0');
};
constexpr ClearFunction kZero4 = [](std::span<uint8_t> bytes, int32_t) {
  FillBytes(bytes, 4, '\0');
};
constexpr ClearFunction kZero1 = [](std::span<uint8_t> bytes, int32_t) {
  FillBytes(bytes, 1, '\0');
};
constexpr ClearFunction kZeroInteger = [](std::span<uint8_t> bytes, int32_t size) {
  FillBytes(bytes, IntegerWidth(size), '\0');
};

// Decimal and Money are left without a sign nibble: their empty form is no valid zero.
constexpr ClearRow kClears[] = {
    {kString, [](std::span<uint8_t> bytes, int32_t size) { FillBytes(bytes, size, ' '); }},
    {kInteger, kZeroInteger},
    {kFloat, kZero8},
    {kDate, kZero4},
    {kTime, kZero4},
    {kDecimal, kZeroSize},
    {kMoney, kZeroSize},
    {kLogical, kZero1},
    {kNumeric, FillNumeric},
    {kBFloat, kZero8},
    {kLString, kZero1},
    {kZString, kZero1},
    {kNote, kZeroSize},
    {kLVar, kZeroSize},
    {kUBin, kZeroInteger},
    {kAutoInc,
     [](std::span<uint8_t> bytes, int32_t size) { FillBytes(bytes, size == 4 ? 4 : 2, '\0'); }},
    {kNumericSTS, FillNumeric},
    {kNumericSA, FillNumeric},
    {kCurrency, kZero8},
};

}  // namespace

void DbClearValue(std::span<uint8_t> bytes, int32_t type, int32_t size) noexcept {
  const auto row = std::find_if(std::begin(kClears), std::end(kClears),
                                [type](const ClearRow& each) { return each.type == type; });
  if (row != std::end(kClears)) row->clear(bytes, size);
}

Status DbClearRecord(DbEngine&, DbTableInfo& table) noexcept {
  FillBytes(RecordBytes(table), table.RecordLength, '\0');
  for (int32_t i = 0; i < table.FieldCount; ++i) {
    const DbFieldInfo& field = table.Fields[i];
    DbClearValue(RecordBytesFrom(table, field.Offset), field.Type, field.Size);
  }
  return kSuccess;
}

}  // namespace qrn
