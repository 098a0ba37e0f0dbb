#include "Caller.h"

#include <cstdio>
#include <deque>
#include <vector>

namespace qrn::test {

std::string CallResult::Text() const {
  if (SUCCEEDED(result)) return (result == S_FALSE ? "false " : "ok ") + Show(*value.get());
  char text[48];
  std::snprintf(text, sizeof text, scode ? "%08lX:%08lX" : "%08lX", result, scode);
  return text;
}

CallResult Call(IDispatch* object, const wchar_t* name, WORD flags,
                std::initializer_list<VARIANT> arguments) {
  CallResult called;
  DISPID id = DISPID_UNKNOWN;
  auto* writable = const_cast<LPOLESTR>(name);
  called.result = object->GetIDsOfNames(IID_NULL, &writable, 1, LOCALE_USER_DEFAULT, &id);
  if (FAILED(called.result)) return called;
  std::vector<VARIANT> reversed(std::rbegin(arguments), std::rend(arguments));
  DISPID put = DISPID_PROPERTYPUT;
  const bool puts = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  DISPPARAMS sent{reversed.data(), puts ? &put : nullptr, static_cast<UINT>(reversed.size()),
                  puts ? 1u : 0u};
  EXCEPINFO exception{};
  called.result =
      object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &sent,
                     puts ? nullptr : called.value.put(), &exception, &called.badArgument);
  called.scode = exception.scode;
  SysFreeString(exception.bstrSource);
  return called;
}

CallResult Get(IDispatch* object, const wchar_t* name, std::initializer_list<VARIANT> index) {
  return Call(object, name, DISPATCH_PROPERTYGET, index);
}
CallResult Put(IDispatch* object, const wchar_t* name,
               std::initializer_list<VARIANT> indexAndValue) {
  return Call(object, name, DISPATCH_PROPERTYPUT, indexAndValue);
}
CallResult CallMethod(IDispatch* object, const wchar_t* name,
                      std::initializer_list<VARIANT> arguments) {
  return Call(object, name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments);
}

VARIANT Text(const wchar_t* text) {
  static std::deque<Bstr> kept;
  kept.emplace_back(std::wstring_view(text));
  VARIANT value{};
  value.vt = VT_BSTR;
  value.bstrVal = kept.back().get();
  return value;
}
VARIANT Short(int16_t number) { return *Variant(number).get(); }
VARIANT Long(int32_t number) { return *Variant(number).get(); }
VARIANT Bool(bool yes) { return *Variant::Bool(yes).get(); }
VARIANT Missing() {
  VARIANT value{};
  value.vt = VT_ERROR;
  value.scode = DISP_E_PARAMNOTFOUND;
  return value;
}
VARIANT Ref(VARTYPE type, void* place) {
  VARIANT value{};
  value.vt = type | VT_BYREF;
  value.byref = place;
  return value;
}
VARIANT Ref(Variant& variable) { return Ref(VT_VARIANT, variable.get()); }

}  // namespace qrn::test
