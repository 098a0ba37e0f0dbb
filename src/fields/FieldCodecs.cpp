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
  return {static_cast<FieldType>(code), nullptr, kStepUnknown, nullptr, nullptr};
}

// clang-format off
constexpr FieldCodec kFieldCodecs[] = {  // a row's number is its type code; a gap keeps its row
    {kString,      "String",     kStepBySize,  ReadString,     WriteString},
    {kInteger,     "Integer",    kStepBySize,  ReadInteger,    WriteInteger},
    {kFloat,       "Float",      kStepBySize,  ReadFloat,      WriteFloat},
    {kDate,        "Date",       4,            ReadDate,       WriteDate},
    {kTime,        "Time",       4,            ReadTime,       WriteTime},
    {kDecimal,     "Decimal",    kStepBySize,  ReadDecimal,    WriteDecimal},
    {kMoney,       "Money",      kStepBySize,  ReadDecimal,    WriteDecimal},
    {kLogical,     "Logical",    1,            ReadLogical,    WriteLogical},
    {kNumeric,     "Numeric",    kStepBySize,  ReadNumeric,    WriteNumeric},
    {kBFloat,      "BFloat",     kStepBySize,  ReadBFloat,     WriteBFloat},
    {kLString,     "LString",    kStepBySize,  ReadLString,    WriteLString},
    {kZString,     "ZString",    kStepBySize,  ReadZString,    WriteZString},
    {kNote,        nullptr,      kStepByText,  ReadNote,       WriteNote},
    {kLVar,        nullptr,      kStepByText,  ReadNote,       WriteNote},
    {kUBin,        "UBin",       kStepBySize,  ReadUBin,       WriteInteger},
    {kAutoInc,     "AutoInc",    kStepBySize,  ReadAutoInc,    WriteAutoInc},
    {kBit,         nullptr,      1,            ReadBit,        WriteBit},
    {kNumericSTS,  "NumericSTS", kStepBySize,  ReadNumericSTS, WriteNumericSTS},
    {kNumericSA,   "NumericSA",  kStepBySize,  ReadNumericSA,  WriteNumericSA},
    {kCurrency,    "Currency",   8,            ReadCurrency,   WriteCurrency},
    Gap(20),
    {kBlob,        "Blob",       8,            ReadBlob,       nullptr},
    Gap(22),
    Gap(23),
    Gap(24),
    {kWideString,  nullptr,      kStepUnknown, ReadWideText,   WriteWideText},
    {kWideZString, nullptr,      kStepUnknown, ReadWideText,   WriteWideText},
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
