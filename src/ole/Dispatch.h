// IDispatch of a control, driven by its rows. Types come from the type library when a host asks for
// them; calls never do.
#pragma once

#include "ole/Access.h"
#include "ole/Arguments.h"
#include "ole/Face.h"

namespace qrn::ole {

class Dispatch final : public Face<IDispatch> {
 public:
  Dispatch(Control& control, const ControlTable& table, const Binding& binding) noexcept
      : Face(control), table_(table), binding_(binding) {}

  // Gets and puts a property without an index as a host would, for persistence. The put does not
  // ask for leave and tells nobody.
  HRESULT Load(int32_t id, VARIANT& value);
  HRESULT Read(int32_t id, VARIANT& value);

  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* sent, VARIANT* result,
                      EXCEPINFO* exception, UINT* badArgument) override;

 private:
  struct Call {
    LCID locale;
    WORD flags;
    const DISPPARAMS& sent;
    VARIANT* result;
    UINT* badArgument;
  };
  struct Property {
    const PropertyRow& row;
    const PropertyAccess& access;
  };

  HRESULT Perform(DISPID id, const Call& call);
  HRESULT CallMethod(size_t index, const Call& call);
  HRESULT CallProperty(const Property& property, const Call& call);
  HRESULT Get(const Property& property, VARIANT* index, VARIANT& value);
  HRESULT Put(const Property& property, VARIANT* index, const Call& call);
  HRESULT Store(const Property& property, VARIANT* index, Variant& value);
  bool HoldsAlready(const Property& property, VARIANT* index, const Variant& value);
  HRESULT Explain(HRESULT result, EXCEPINFO* exception) const;

  const ControlTable& table_;
  const Binding& binding_;
};

}  // namespace qrn::ole
