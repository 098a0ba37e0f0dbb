#include "host/container/Scriptable.h"

#include <activscp.h>

#include <algorithm>

#include "host/container/Text.h"

namespace qrn::host {
namespace {

void Describe(EXCEPINFO* exception, const ScriptError& error) noexcept {
  if (!exception) return;
  *exception = EXCEPINFO{};
  exception->scode = error.code;
  Guard([&] {
    exception->bstrDescription = Bstr(error.description).detach();
    return S_OK;
  });
}

// Runs a member; a script's error travels in the exception structure.
template <class Body>
HRESULT GuardScript(EXCEPINFO* exception, Body body) noexcept {
  return Guard([&]() -> HRESULT {
    try {
      body();
      return S_OK;
    } catch (const ScriptError& error) {
      Describe(exception, error);
      return DISP_E_EXCEPTION;
    }
  });
}

// The failure of a call in words, with what the exception structure holds; frees its texts.
ScriptError FailureOf(const std::wstring& name, HRESULT result, EXCEPINFO& exception) {
  if (result == DISP_E_EXCEPTION && exception.pfnDeferredFillIn) {
    exception.pfnDeferredFillIn(&exception);
  }
  const Bstr source = Bstr::Take(exception.bstrSource);
  const Bstr help = Bstr::Take(exception.bstrHelpFile);
  const Bstr description = Bstr::Take(exception.bstrDescription);
  HRESULT code = result;
  if (result == DISP_E_EXCEPTION && exception.scode != 0) code = exception.scode;
  std::wstring text = name + L": ";
  if (!description.empty()) {
    text += description.view();
  } else if (result == static_cast<HRESULT>(SCRIPT_E_REPORTED)) {
    text += L"its code failed";
  } else {
    wchar_t number[16];
    swprintf(number, 16, L"0x%08lX", static_cast<unsigned long>(code));
    text += std::wstring(L"failed with ") + number;
  }
  return {code, std::move(text)};
}

std::vector<VARIANT> Reversed(std::span<const Variant> arguments) {
  std::vector<VARIANT> list;
  for (size_t i = arguments.size(); i > 0; --i) list.push_back(*arguments[i - 1].get());
  return list;
}

HRESULT IdOfMember(IDispatch* object, const std::wstring& name, DISPID* id) {
  LPOLESTR text = const_cast<LPOLESTR>(name.c_str());
  return object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, id);
}

}  // namespace

VARIANT* Call::At(size_t index) const noexcept {
  if (index >= Count()) return nullptr;
  return &parameters_->rgvarg[parameters_->cArgs - 1 - index];
}

bool Call::Has(size_t index) const noexcept {
  const VARIANT* value = At(index);
  return value && !(value->vt == VT_ERROR && value->scode == DISP_E_PARAMNOTFOUND);
}

Variant Call::Converted(const VARIANT& value, VARTYPE type) const {
  Variant plain;
  com::Check(VariantCopyInd(plain.put(), const_cast<VARIANT*>(&value)));
  if (type == VT_EMPTY || plain.type() == type) return plain;
  Variant converted;
  const HRESULT result = VariantChangeTypeEx(converted.put(), plain.get(), LOCALE_USER_DEFAULT,
                                             VARIANT_ALPHABOOL, type);
  if (FAILED(result)) throw ScriptError{result, L"the value does not fit"};
  return converted;
}

Variant Call::Value(size_t index) const {
  return Has(index) ? Converted(*At(index), VT_EMPTY) : Variant();
}

std::wstring Call::Text(size_t index, std::wstring_view fallback) const {
  if (!Has(index)) return std::wstring(fallback);
  const Variant text = Converted(*At(index), VT_BSTR);
  return std::wstring(text->bstrVal ? text->bstrVal : L"", SysStringLen(text->bstrVal));
}

int32_t Call::Number(size_t index, int32_t fallback) const {
  return Has(index) ? Converted(*At(index), VT_I4)->lVal : fallback;
}

double Call::Real(size_t index, double fallback) const {
  return Has(index) ? Converted(*At(index), VT_R8)->dblVal : fallback;
}

bool Call::Truth(size_t index, bool fallback) const {
  return Has(index) ? Converted(*At(index), VT_BOOL)->boolVal != VARIANT_FALSE : fallback;
}

Variant Call::NewValue(VARTYPE type) const { return Converted(parameters_->rgvarg[0], type); }

std::wstring Call::NewText() const {
  const Variant text = NewValue(VT_BSTR);
  return std::wstring(text->bstrVal ? text->bstrVal : L"", SysStringLen(text->bstrVal));
}

int32_t Call::NewNumber() const { return NewValue(VT_I4)->lVal; }
double Call::NewReal() const { return NewValue(VT_R8)->dblVal; }
bool Call::NewTruth() const { return NewValue(VT_BOOL)->boolVal != VARIANT_FALSE; }

void Call::Give(Variant value) noexcept {
  if (result_) *result_ = value.release();
}

void Call::Give(std::wstring_view text) { Give(Variant(Bstr(text))); }
void Call::Give(int32_t number) noexcept { Give(Variant(number)); }
void Call::GiveTruth(bool truth) noexcept { Give(Variant::Bool(truth)); }

void Call::Give(double number) noexcept {
  Variant value;
  value->vt = VT_R8;
  value->dblVal = number;
  Give(std::move(value));
}

STDMETHODIMP Scriptable::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

DISPID Scriptable::IdOf(std::wstring_view name) const noexcept {
  DISPID base = kFirstTableId;
  for (const MemberTable table : Tables()) {
    for (size_t i = 0; i < table.size(); ++i) {
      if (!SameName(table[i].name, name)) continue;
      if (table[i].id == kValueMember) return DISPID_VALUE;
      return table[i].id != 0 ? table[i].id : base + static_cast<DISPID>(i);
    }
    base += 0x1000;
  }
  return DISPID_UNKNOWN;
}

const MemberEntry* Scriptable::EntryOf(DISPID id) const noexcept {
  DISPID base = kFirstTableId;
  for (const MemberTable table : Tables()) {
    const auto place = static_cast<size_t>(id - base);
    if (id >= base && place < table.size() && table[place].id == 0) return &table[place];
    for (const MemberEntry& entry : table) {
      if (entry.id != 0 && (entry.id == id || (entry.id == kValueMember && id == DISPID_VALUE))) {
        return &entry;
      }
    }
    base += 0x1000;
  }
  return nullptr;
}

STDMETHODIMP Scriptable::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID locale,
                                       DISPID* ids) {
  return Guard([&]() -> HRESULT {
    if (!names || !ids || count == 0) return E_INVALIDARG;
    std::fill_n(ids, count, DISPID_UNKNOWN);
    const DISPID own = IdOf(names[0]);
    HRESULT found = S_OK;
    if (own == DISPID_UNKNOWN || OthersFirst(names[0])) found = FindOther(names[0], locale, ids);
    if (own != DISPID_UNKNOWN && ids[0] == DISPID_UNKNOWN) ids[0] = own, found = S_OK;
    return count > 1 && SUCCEEDED(found) ? DISP_E_UNKNOWNNAME : found;
  });
}

STDMETHODIMP Scriptable::Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* parameters,
                                VARIANT* result, EXCEPINFO* exception, UINT* badArgument) {
  DISPPARAMS none{};
  DISPPARAMS* given = parameters ? parameters : &none;
  const Com<IDispatch> alive(this);
  const MemberEntry* entry = EntryOf(id);
  if (!entry) {
    return Guard(
        [&] { return InvokeOther(id, locale, flags, given, result, exception, badArgument); });
  }
  if ((entry->flags & flags) == 0) return DISP_E_MEMBERNOTFOUND;
  return GuardScript(exception, [&] {
    Call call(given, result, flags);
    if (call.IsPut() && given->cArgs == 0) throw com::Failure{DISP_E_BADPARAMCOUNT};
    entry->run(*this, call);
  });
}

HRESULT Scriptable::FindOther(LPOLESTR, LCID, DISPID*) { return DISP_E_UNKNOWNNAME; }

HRESULT Scriptable::InvokeOther(DISPID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) {
  return DISP_E_MEMBERNOTFOUND;
}

Variant GetMember(IDispatch* object, const std::wstring& name, std::span<const Variant> arguments) {
  DISPID id = DISPID_UNKNOWN;
  if (!object || FAILED(IdOfMember(object, name, &id))) {
    throw ScriptError{DISP_E_UNKNOWNNAME, L"there is no " + name};
  }
  std::vector<VARIANT> list = Reversed(arguments);
  DISPPARAMS parameters{list.data(), nullptr, static_cast<UINT>(list.size()), 0};
  Variant result;
  EXCEPINFO exception{};
  UINT bad = 0;
  const HRESULT code =
      object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                     &parameters, result.put(), &exception, &bad);
  if (FAILED(code)) throw FailureOf(name, code, exception);
  return result;
}

bool PutMember(IDispatch* object, const std::wstring& name, const VARIANT& value,
               std::span<const Variant> arguments) {
  DISPID id = DISPID_UNKNOWN;
  if (!object || FAILED(IdOfMember(object, name, &id))) return false;
  std::vector<VARIANT> list = Reversed(arguments);
  list.insert(list.begin(), value);
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{list.data(), &put, static_cast<UINT>(list.size()), 1};
  const bool isObject = value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN;
  HRESULT code = E_FAIL;
  EXCEPINFO exception{};
  UINT bad = 0;
  if (isObject) {
    code = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUTREF, &parameters,
                          nullptr, &exception, &bad);
  }
  if (FAILED(code)) {
    exception = EXCEPINFO{};
    code = object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &parameters,
                          nullptr, &exception, &bad);
  }
  if (FAILED(code)) throw FailureOf(name, code, exception);
  return true;
}

}  // namespace qrn::host
