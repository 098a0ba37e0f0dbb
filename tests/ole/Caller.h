// Late-bound calls as scripts make them.
#pragma once

#include <cstdio>
#include <deque>
#include <initializer_list>
#include <vector>

#include "Sinks.h"

namespace qrn::test {

struct CallResult {
  HRESULT result = E_FAIL;
  Variant value;
  HRESULT scode = S_OK;  // of the exception, where there was one
  UINT badArgument = 99;

  // "ok I2:4", or the failure in hex with the exception's code
  std::string Text() const {
    if (SUCCEEDED(result)) return (result == S_FALSE ? "false " : "ok ") + Show(*value.get());
    char text[48];
    std::snprintf(text, sizeof text, scode ? "%08lX:%08lX" : "%08lX", result, scode);
    return text;
  }
};

// Calls a member of the object by name; arguments in reading order, by reference where a VARIANT
// says so.
inline CallResult Call(IDispatch* object, const wchar_t* name, WORD flags,
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
inline CallResult Get(IDispatch* object, const wchar_t* name,
                      std::initializer_list<VARIANT> index = {}) {
  return Call(object, name, DISPATCH_PROPERTYGET, index);
}
inline CallResult Put(IDispatch* object, const wchar_t* name,
                      std::initializer_list<VARIANT> indexAndValue) {
  return Call(object, name, DISPATCH_PROPERTYPUT, indexAndValue);
}
inline CallResult CallMethod(IDispatch* object, const wchar_t* name,
                             std::initializer_list<VARIANT> arguments = {}) {
  return Call(object, name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments);
}

// Plain arguments. The text lives as long as the program: tests are short.
inline VARIANT Text(const wchar_t* text) {
  static std::deque<Bstr> kept;
  kept.emplace_back(std::wstring_view(text));
  VARIANT value{};
  value.vt = VT_BSTR;
  value.bstrVal = kept.back().get();
  return value;
}
inline VARIANT Text(const std::string& ascii) {
  return Text(std::wstring(ascii.begin(), ascii.end()).c_str());
}
inline VARIANT Short(int16_t number) { return *Variant(number).get(); }
inline VARIANT Long(int32_t number) { return *Variant(number).get(); }
inline VARIANT Bool(bool yes) { return *Variant::Bool(yes).get(); }
inline VARIANT Missing() {
  VARIANT value{};
  value.vt = VT_ERROR;
  value.scode = DISP_E_PARAMNOTFOUND;
  return value;
}
inline VARIANT Ref(VARTYPE type, void* place) {
  VARIANT value{};
  value.vt = type | VT_BYREF;
  value.byref = place;
  return value;
}
inline VARIANT Ref(Variant& variable) { return Ref(VT_VARIANT, variable.get()); }

}  // namespace qrn::test
