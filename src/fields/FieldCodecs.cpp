#include "fields/FieldCodecs.h"

#include <iterator>

#include "fields/BFloat.h"
#include "fields/BlobField.h"
#include "fields/CurrencyText.h"
#include "fields/Dates.h"
#include "fields/FloatText.h"
#include "fields/IntegerFields.h"
#include "fields/Numeric.h"
#include "fields/PackedDecimal.h"
#include "fields/SignedNumeric.h"
#include "fields/TextFields.h"
#include "fields/WideTextFields.h"

namespace qrn {
namespace {

constexpr FieldCodec Gap(int32_t code) {
  return {static_cast<FieldType>(code), kStepUnknown, nullptr, nullptr, nullptr};
}

// clang-format off
constexpr FieldCodec kFieldCodecs[] = {  // a row's number is its type code; a gap keeps its row
    {kString,      kStepBySize,  "String",     ReadString,     WriteString},
    {kInteger,     kStepBySize,  "Integer",    ReadInteger,    WriteInteger},
    {kFloat,       kStepBySize,  "Float",      ReadFloat,      WriteFloat},
    {kDate,        4,            "Date",       ReadDate,       WriteDate},
    {kTime,        4,            "Time",       ReadTime,       WriteTime},
    {kDecimal,     kStepBySize,  "Decimal",    ReadDecimal,    WriteDecimal},
    {kMoney,       kStepBySize,  "Money",      ReadDecimal,    WriteDecimal},
    {kLogical,     1,            "Logical",    ReadLogical,    WriteLogical},
    {kNumeric,     kStepBySize,  "Numeric",    ReadNumeric,    WriteNumeric},
    {kBFloat,      kStepBySize,  "BFloat",     ReadBFloat,     WriteBFloat},
    {kLString,     kStepBySize,  "LString",    ReadLString,    WriteLString},
    {kZString,     kStepBySize,  "ZString",    ReadZString,    WriteZString},
    {kNote,        kStepByText,  nullptr,      ReadNote,       WriteNote},
    {kLVar,        kStepByText,  nullptr,      ReadNote,       WriteNote},
    {kUBin,        kStepBySize,  "UBin",       ReadUBin,       WriteInteger},
    {kAutoInc,     kStepBySize,  "AutoInc",    ReadAutoInc,    WriteAutoInc},
    {kBit,         1,            nullptr,      ReadBit,        WriteBit},
    {kNumericSTS,  kStepBySize,  "NumericSTS", ReadNumericSTS, WriteNumericSTS},
    {kNumericSA,   kStepBySize,  "NumericSA",  ReadNumericSA,  WriteNumericSA},
    {kCurrency,    8,            "Currency",   ReadCurrency,   WriteCurrency},
    Gap(20),
    {kBlob,        8,            "Blob",       ReadBlob,       nullptr},
    Gap(22),
    Gap(23),
    Gap(24),
    {kWideString,  kStepUnknown, nullptr,      ReadWideText,   WriteWideText},
    {kWideZString, kStepUnknown, nullptr,      ReadWideText,   WriteWideText},
};
// clang-format on

constexpr bool RowsStandAtTheirCode() {
  for (size_t i = 0; i < std::size(kFieldCodecs); ++i) {
    if (static_cast<size_t>(kFieldCodecs[i].type) != i) return false;
  }
  return true;
}
static_assert(RowsStandAtTheirCode());

}  // namespace

const FieldCodec* FindFieldCodec(int32_t type) noexcept {
  if (type < 0 || static_cast<size_t>(type) >= std::size(kFieldCodecs)) return nullptr;
  const FieldCodec& row = kFieldCodecs[type];
  return row.read != nullptr ? &row : nullptr;
}

}  // namespace qrn
