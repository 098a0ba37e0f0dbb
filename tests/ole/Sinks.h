// Sinks that write down what they hear.
#pragma once

#include <ocidl.h>

#include <functional>
#include <map>
#include <string>

#include "com/Com.h"
#include "com/Variant.h"
#include "tests/support/Pinned.h"

namespace qrn::test {

inline std::string Narrow(BSTR text) {
  if (!text) return "(null)";
  return std::string(text, text + SysStringLen(text));
}

using namespace qrn::com;

// A variant in a few characters: "I2:5", "BSTR&:abc".
inline std::string Show(const VARIANT& value) {
  Variant text;
  const VARTYPE plain = value.vt & ~VT_BYREF;
  static const std::map<VARTYPE, const char*> kNames = {
      {VT_I2, "I2"},     {VT_I4, "I4"},   {VT_R4, "R4"},           {VT_BSTR, "BSTR"},
      {VT_BOOL, "BOOL"}, {VT_UI4, "UI4"}, {VT_DISPATCH, "OBJECT"}, {VT_EMPTY, "EMPTY"}};
  const auto name = kNames.find(plain);
  std::string shown = name != kNames.end() ? name->second : "?";
  if (value.vt & VT_BYREF) shown += "&";
  if (plain == VT_DISPATCH || plain == VT_EMPTY) return shown;
  VariantCopyInd(text.put(), const_cast<VARIANT*>(&value));
  VariantChangeType(text.get(), text.get(), 0, VT_BSTR);
  return shown + ":" + Narrow(text->bstrVal);
}

// Counts its references and never frees itself: it lives in a test.
template <class Interface>
class Counted : public Interface {
 public:
  virtual ~Counted() = default;
  STDMETHODIMP QueryInterface(REFIID id, void** out) override {
    const bool known = id == __uuidof(IUnknown) || id == __uuidof(Interface);
    *out = known ? static_cast<Interface*>(this) : nullptr;
    if (known) ++references;
    return known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
  STDMETHODIMP_(ULONG) Release() override { return --references; }
  ULONG references = 0;
};

// Writes "id(argument,...)" for each event, and runs `answer` if set.
class EventSink final : public Counted<IDispatch> {
 public:
  std::string log;
  bool hears = true;  // false: takes events without a trace
  std::function<void(DISPID, DISPPARAMS&)> answer;

  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* sent, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    if (!hears) return S_OK;
    log += std::to_string(id) + "(";
    for (UINT i = sent->cArgs; i-- > 0;) log += Show(sent->rgvarg[i]) + (i ? "," : "");
    log += ") ";
    if (answer) answer(id, *sent);
    return S_OK;
  }
};

// Writes "ask(id)" and "changed(id)"; refuses leave for one id.
class PropertySink final : public Counted<IPropertyNotifySink> {
 public:
  std::string log;
  DISPID refuses = DISPID_UNKNOWN;

  STDMETHODIMP OnChanged(DISPID id) override {
    log += "changed(" + std::to_string(id) + ") ";
    return S_OK;
  }
  STDMETHODIMP OnRequestEdit(DISPID id) override {
    log += "ask(" + std::to_string(id) + ") ";
    return id == refuses ? S_FALSE : S_OK;
  }
};

// Connects a sink to the point of that interface for as long as it lives.
class Connection : Pinned {
 public:
  Connection(IUnknown* control, const GUID& outgoing, IUnknown* sink) {
    const auto container = Query<IConnectionPointContainer>(control);
    if (!container || FAILED(container->FindConnectionPoint(outgoing, point_.put()))) return;
    result = point_->Advise(sink, &cookie_);
    if (FAILED(result)) point_.reset();
  }
  ~Connection() { Leave(); }

  HRESULT result = E_FAIL;
  void Leave() {
    if (point_) point_->Unadvise(cookie_);
    point_.reset();
  }

 private:
  Com<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

}  // namespace qrn::test
