#include "host/designer/classes/PlainValue.h"

#include "com/Variant.h"
#include "host/container/Text.h"

namespace qrn::designer {
namespace {

using com::Variant;
using host::Utf8;

std::optional<form::PropertyValue> TextOf(VARIANT& value) {
  const BSTR text = value.bstrVal;
  return Utf8(std::wstring_view(text ? text : L"", SysStringLen(text)));
}

std::optional<form::PropertyValue> TruthOf(VARIANT& value) {
  return int32_t{value.boolVal ? -1 : 0};
}

std::optional<form::PropertyValue> FractionOf(VARIANT& value) {
  Variant changed;
  if (FAILED(VariantChangeType(changed.put(), &value, 0, VT_R8))) return std::nullopt;
  return changed->dblVal;
}

// Colours come without a sign.
std::optional<form::PropertyValue> BitsOf(VARIANT& value) {
  return static_cast<int32_t>(value.ulVal);
}

std::optional<form::PropertyValue> WholeOf(VARIANT& value) {
  Variant changed;
  if (FAILED(VariantChangeType(changed.put(), &value, 0, VT_I4))) return std::nullopt;
  return int32_t{changed->lVal};
}

struct ValueRow {
  VARTYPE type;
  std::optional<form::PropertyValue> (*read)(VARIANT& value);
};
constexpr ValueRow kValues[] = {
    {VT_BSTR, TextOf},   {VT_BOOL, TruthOf}, {VT_R4, FractionOf},
    {VT_R8, FractionOf}, {VT_UI4, BitsOf},   {VT_I2, WholeOf},
    {VT_I4, WholeOf},    {VT_UI1, WholeOf},  {VT_INT, WholeOf},
};

}  // namespace

std::optional<form::PropertyValue> PlainValue(VARIANT& value) {
  for (const ValueRow& row : kValues) {
    if (row.type == value.vt) return row.read(value);
  }
  return std::nullopt;
}

}  // namespace qrn::designer
