// Sinks that write down what they hear.
#pragma once

#include <ocidl.h>

#include <functional>
#include <string>

#include "com/Com.h"
#include "com/Variant.h"
#include "tests/support/Pinned.h"

namespace qrn::test {

using namespace qrn::com;

// A variant in a few characters: "I2:5", "BSTR&:abc".
std::string Show(const VARIANT& value);

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
                      UINT*) override;
};

// Writes "ask(id)" and "changed(id)"; refuses leave for one id.
class PropertySink final : public Counted<IPropertyNotifySink> {
 public:
  std::string log;
  DISPID refuses = DISPID_UNKNOWN;

  STDMETHODIMP OnChanged(DISPID id) override;
  STDMETHODIMP OnRequestEdit(DISPID id) override;
};

// Connects a sink to the point of that interface for as long as it lives.
class Connection : Pinned {
 public:
  Connection(IUnknown* control, const GUID& outgoing, IUnknown* sink);
  ~Connection() { Leave(); }

  HRESULT result = E_FAIL;
  void Leave();

 private:
  Com<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

}  // namespace qrn::test
