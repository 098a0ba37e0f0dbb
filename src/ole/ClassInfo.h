// What a control tells designers of itself: its class and event types, its property pages, which
// page edits which property, and that its errors are bare values.
#pragma once

#include <ocidl.h>
#include <oleauto.h>

#include "ole/Face.h"
#include "ole/tables/Members.h"

namespace qrn::ole {

class ClassInfo final : public Face<IProvideClassInfo2, ISpecifyPropertyPages, ISupportErrorInfo,
                                    IPerPropertyBrowsing> {
 public:
  ClassInfo(Control& control, const ControlTable& table) noexcept : Face(control), table_(table) {}

  STDMETHODIMP GetClassInfo(ITypeInfo** info) override;
  STDMETHODIMP GetGUID(DWORD kind, GUID* id) override;

  STDMETHODIMP GetPages(CAUUID* pages) override;

  // S_OK for the control's own interface: a failed call leaves no error object beside its code.
  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID id) override;

  // Only values without an enumeration of their own are named here; S_FALSE for the others.
  STDMETHODIMP GetDisplayString(DISPID id, BSTR* text) override;
  STDMETHODIMP MapPropertyToPage(DISPID id, CLSID* page) override;
  STDMETHODIMP GetPredefinedStrings(DISPID id, CALPOLESTR* texts, CADWORD* cookies) override;
  STDMETHODIMP GetPredefinedValue(DISPID id, DWORD cookie, VARIANT* value) override;

 private:
  const ControlTable& table_;
};

}  // namespace qrn::ole
