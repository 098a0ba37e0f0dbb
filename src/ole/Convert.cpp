#include "ole/Convert.h"

#include <ocidl.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace qrn::ole {
namespace {

// Bytes behind a reference to that type; 0 for types that no answer is stored in.
size_t SizeBehind(VARTYPE type) {
  struct Row {
    VARTYPE type;
    size_t bytes;
  };
  constexpr Row kRows[] = {{VT_I1, 1},
                           {VT_UI1, 1},
                           {VT_I2, 2},
                           {VT_UI2, 2},
                           {VT_BOOL, 2},
                           {VT_I4, 4},
                           {VT_UI4, 4},
                           {VT_INT, 4},
                           {VT_UINT, 4},
                           {VT_ERROR, 4},
                           {VT_I8, 8},
                           {VT_UI8, 8},
                           {VT_R4, 4},
                           {VT_R8, 8},
                           {VT_CY, 8},
                           {VT_DATE, 8},
                           {VT_BSTR, sizeof(BSTR)}};
  const auto* row = std::ranges::find(kRows, type, &Row::type);
  return row == std::end(kRows) ? 0 : row->bytes;
}

// The innermost VARIANT of a chain of references to VARIANTs, itself if it is none. A chain that
// never ends is cut.
const VARIANT& Innermost(const VARIANT& sent) {
  const VARIANT* at = &sent;
  for (int depth = 0; depth < 8 && at->vt == (VT_BYREF | VT_VARIANT) && at->pvarVal; ++depth) {
    at = at->pvarVal;
  }
  return *at;
}

// The system makes an empty text of a null one where it copies; here it stays null.
bool IsNullText(const VARIANT& value) {
  if (value.vt == (VT_BYREF | VT_BSTR)) return value.pbstrVal && !*value.pbstrVal;
  return value.vt == VT_BSTR && !value.bstrVal;
}
void KeepNull(const VARIANT& from, VARIANT& copy) {
  if (!IsNullText(from) || copy.vt != VT_BSTR) return;
  Bstr().moveTo(copy.bstrVal);
}

HRESULT Change(const VARIANT& sent, VARTYPE type, LCID locale, Variant& value) {
  const VARIANT& from = Innermost(sent);
  Variant plain;
  HRESULT result = VariantCopyInd(plain.put(), const_cast<VARIANT*>(&from));
  if (FAILED(result)) return result;
  result = VariantChangeTypeEx(value.put(), plain.get(), locale, 0, type);
  if (SUCCEEDED(result)) KeepNull(from, *value.get());
  return result;
}

// Colours come as signed numbers whose top bit says "system colour".
HRESULT ChangeToBits(const VARIANT& sent, LCID locale, Variant& value) {
  const HRESULT result = Change(sent, VT_I4, locale, value);
  if (result == DISP_E_OVERFLOW) return Change(sent, VT_UI4, locale, value);
  if (SUCCEEDED(result)) value->vt = VT_UI4;
  return result;
}

HRESULT ChangeToObject(const VARIANT& sent, const ValueType& type, LCID locale, Variant& value) {
  const HRESULT result = Change(sent, VT_DISPATCH, locale, value);
  if (FAILED(result) || !value->pdispVal) return result;
  const bool suits = type.alias == Alias::Font      ? bool(Query<IFont>(value->pdispVal))
                     : type.alias == Alias::Picture ? bool(Query<IPicture>(value->pdispVal))
                                                    : true;
  return suits ? S_OK : DISP_E_TYPEMISMATCH;
}

}  // namespace

HRESULT ConvertValue(const VARIANT& sent, const ValueType& type, LCID locale, Variant& value) {
  if (type.vt == vt::kUI4) return ChangeToBits(sent, locale, value);
  if (type.vt == vt::kDispatch) return ChangeToObject(sent, type, locale, value);
  return Change(sent, type.vt, locale, value);
}

HRESULT OpenOutArgument(const VARIANT& sent, const ValueType& type, LCID locale, Variant& value) {
  const auto plain = static_cast<VARTYPE>(type.vt & ~VT_BYREF);
  const VARIANT& place = Innermost(sent);
  if (place.vt & VT_BYREF && (!place.byref || SizeBehind(place.vt & ~VT_BYREF) == 0)) {
    return DISP_E_TYPEMISMATCH;
  }
  if (FAILED(Change(place, plain, locale, value))) {
    *value.put() = VARIANT{};
    value->vt = plain;
  }
  return S_OK;
}

HRESULT StoreAnswer(const VARIANT& sent, const Variant& answer, LCID locale) {
  auto& place = const_cast<VARIANT&>(Innermost(sent));
  if (&place != &sent && !(place.vt & VT_BYREF)) {
    const HRESULT copied = VariantCopy(&place, const_cast<VARIANT*>(answer.get()));
    if (SUCCEEDED(copied)) KeepNull(*answer.get(), place);
    return copied;
  }
  if (!(place.vt & VT_BYREF)) return S_OK;
  const auto type = static_cast<VARTYPE>(place.vt & ~VT_BYREF);
  Variant changed;
  const HRESULT result = Change(*answer.get(), type, locale, changed);
  if (FAILED(result)) return result;
  if (type == VT_BSTR) Bstr().moveTo(*place.pbstrVal);
  std::memcpy(place.byref, &changed->byref, SizeBehind(type));
  changed.release();
  return S_OK;
}

}  // namespace qrn::ole
