#include "ole/Dispatch.h"

#include <ocidl.h>

#include <string>

#include "ole/Control.h"
#include "ole/Convert.h"
#include "ole/SystemGuid.h"
#include "ole/tables/MemberChecks.h"

namespace qrn::ole {
namespace {

constexpr WORD kPuts = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

// The ASCII form of a name, or a form that equals no member.
std::string Ascii(const wchar_t* name) {
  std::string ascii;
  for (; *name; ++name) ascii += *name < 0x80 ? static_cast<char>(*name) : '?';
  return ascii;
}

template <class Row>
const Row* FindNamed(std::span<const Row> rows, std::string_view name) {
  for (const Row& row : rows) {
    if (SameName(row.name, name)) return &row;
  }
  return nullptr;
}

// A put's own value is not one of its arguments.
UINT PutValuesIn(const DISPPARAMS& sent) {
  return sent.cNamedArgs > 0 && sent.rgdispidNamedArgs[0] == DISPID_PROPERTYPUT ? 1 : 0;
}

// A font that is assigned, not set, is copied: later changes of the other one do not come through.
HRESULT CopyFont(Variant& value) {
  const auto font = Query<IFont>(value->pdispVal);
  if (!font) return S_OK;
  Com<IFont> copy;
  const HRESULT result = font->Clone(copy.put());
  if (SUCCEEDED(result)) value = Variant(Query<IDispatch>(copy));
  return result;
}

}  // namespace

STDMETHODIMP Dispatch::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 1;
  return S_OK;
}

STDMETHODIMP Dispatch::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
  if (!info) return E_POINTER;
  *info = nullptr;
  if (index != 0) return DISP_E_BADINDEX;
  *info = TypeInfoOf(AsGuid(table_.interfaceId)).detach();
  return *info ? S_OK : TYPE_E_CANTLOADLIBRARY;
}

STDMETHODIMP Dispatch::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (!names || !ids || count == 0) return E_INVALIDARG;
  return Guard([&]() -> HRESULT {
    const std::string name = Ascii(names[0]);
    const auto* property = FindNamed(table_.properties, name);
    const auto* method = FindNamed(table_.methods, name);
    ids[0] = property ? property->id : method ? method->id : DISPID_UNKNOWN;
    HRESULT result = property || method ? S_OK : DISP_E_UNKNOWNNAME;
    const auto arguments = property ? property->index
                           : method ? method->arguments
                                    : std::span<const ArgumentRow>();
    for (UINT i = 1; i < count; ++i) {
      const auto* argument = FindNamed(arguments, Ascii(names[i]));
      ids[i] = argument ? static_cast<DISPID>(argument - arguments.data()) : DISPID_UNKNOWN;
      if (!argument) result = DISP_E_UNKNOWNNAME;
    }
    return result;
  });
}

STDMETHODIMP Dispatch::Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* sent,
                              VARIANT* result, EXCEPINFO* exception, UINT* badArgument) {
  if (!sent) return E_POINTER;
  if (result) VariantInit(result);
  const HRESULT done = Run([&] {
    return Perform(id, {locale, flags, *sent, result, badArgument});
  });
  return Explain(done, exception);
}

// A member's own failure is an exception to its caller; what is wrong with the call itself is not.
HRESULT Dispatch::Explain(HRESULT result, EXCEPINFO* exception) const {
  if (SUCCEEDED(result) || !exception || HRESULT_FACILITY(result) == FACILITY_DISPATCH) {
    return result;
  }
  *exception = EXCEPINFO{};
  exception->scode = result;
  Guard([&] {
    const std::string_view name = table_.className;
    exception->bstrSource = Bstr(std::wstring(name.begin(), name.end())).detach();
    return S_OK;
  });
  return DISP_E_EXCEPTION;
}

HRESULT Dispatch::Perform(DISPID id, const Call& call) {
  if (const PropertyRow* row = FindRow(table_.properties, id)) {
    return CallProperty({*row, binding_.properties[row - table_.properties.data()]}, call);
  }
  if (const MethodRow* row = FindRow(table_.methods, id)) {
    return CallMethod(row - table_.methods.data(), call);
  }
  return DISP_E_MEMBERNOTFOUND;
}

HRESULT Dispatch::CallMethod(size_t index, const Call& call) {
  const MethodRow& row = table_.methods[index];
  if (!(call.flags & (DISPATCH_METHOD | DISPATCH_PROPERTYGET))) return DISP_E_MEMBERNOTFOUND;
  Arguments arguments(row.arguments, call.sent, 0, call.locale);
  const HRESULT collected = arguments.Collect(row.lastIsResult, call.badArgument);
  if (FAILED(collected)) return collected;
  const HRESULT result = binding_.methods[index].call(control(), arguments.values());
  if (FAILED(result)) return result;
  if (result != S_FALSE) Check(arguments.StoreAnswers(row.lastIsResult));
  if (row.lastIsResult && call.result) arguments.GiveLastAsResult(*call.result);
  return S_OK;
}

HRESULT Dispatch::CallProperty(const Property& property, const Call& call) {
  const bool put = (call.flags & kPuts) != 0;
  Arguments index(property.row.index, call.sent, put ? PutValuesIn(call.sent) : 0, call.locale);
  if (put) {
    if (call.sent.cArgs != property.row.index.size() + 1) return DISP_E_BADPARAMCOUNT;
    const HRESULT collected = index.Collect(false, call.badArgument);
    return FAILED(collected) ? collected : Put(property, index.values(), call);
  }
  if (!(call.flags & (DISPATCH_METHOD | DISPATCH_PROPERTYGET))) return DISP_E_MEMBERNOTFOUND;
  const HRESULT collected = index.Collect(false, call.badArgument);
  if (FAILED(collected)) return collected;
  Variant value;
  const HRESULT result = Get(property, index.values(), *value.get());
  if (SUCCEEDED(result) && call.result) *call.result = value.release();
  return result;
}

HRESULT Dispatch::Get(const Property& property, VARIANT* index, VARIANT& value) {
  if (property.row.rules & kRunTime && !control().UserMode()) return kNotAvailableNow;
  value = VARIANT{};
  value.vt = property.row.type.vt;
  const HRESULT result = property.access.get(control(), index, value);
  if (FAILED(result)) value.vt = VT_EMPTY;
  return result;
}

HRESULT Dispatch::Put(const Property& property, VARIANT* index, const Call& call) {
  const uint16_t rules = property.row.rules;
  if (rules & (kReadOnly | kPutFails)) return kPropertyIsReadOnly;
  if (rules & kRunTime && !control().UserMode()) return kPropertyIsReadOnly;
  Variant value;
  const HRESULT converted =
      ConvertValue(call.sent.rgvarg[0], property.row.type, call.locale, value);
  if (FAILED(converted)) {
    if (call.badArgument) *call.badArgument = 0;
    return converted;
  }
  if (property.row.type.alias == Alias::Font && !(call.flags & DISPATCH_PROPERTYPUTREF)) {
    Check(CopyFont(value));
  }
  return Store(property, index, value);
}

// Where every put goes: leave, store, dirty, notice.
HRESULT Dispatch::Store(const Property& property, VARIANT* index, Variant& value) {
  const PropertyRow& row = property.row;
  if (HoldsAlready(property, index, value)) return S_OK;
  if (row.rules & kStoreOnly) return property.access.put(control(), index, *value.get());
  const HRESULT leave = control().AskLeave(row.id);
  if (leave != S_OK) return leave;
  const HRESULT stored = property.access.put(control(), index, *value.get());
  if (stored == S_OK) control().Changed(row.id, (row.rules & kRepaint) != 0);
  return stored == S_FALSE ? S_OK : stored;
}

bool Dispatch::HoldsAlready(const Property& property, VARIANT* index, const Variant& value) {
  if (!(property.row.rules & kUnlessSame) || value.type() != VT_BSTR) return false;
  Variant held;
  if (FAILED(Get(property, index, *held.get()))) return false;
  return Bstr::Copy(held->bstrVal) == Bstr::Copy(value->bstrVal);
}

HRESULT Dispatch::Load(int32_t id, VARIANT& value) {
  const PropertyRow* row = FindRow(table_.properties, id);
  if (!row) return DISP_E_MEMBERNOTFOUND;
  Variant converted;
  const HRESULT result = ConvertValue(value, row->type, LOCALE_USER_DEFAULT, converted);
  if (FAILED(result)) return result;
  return Store({*row, binding_.properties[row - table_.properties.data()]}, nullptr, converted);
}

HRESULT Dispatch::Read(int32_t id, VARIANT& value) {
  const PropertyRow* row = FindRow(table_.properties, id);
  if (!row) return DISP_E_MEMBERNOTFOUND;
  return Get({*row, binding_.properties[row - table_.properties.data()]}, nullptr, value);
}

}  // namespace qrn::ole
