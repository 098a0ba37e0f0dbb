// What screen readers and programs that work a screen are given of a window, and the answer to who
// asks for it.
#pragma once

#include <oleacc.h>

#include "com/Object.h"
#include "ole/Kit.h"

namespace qrn::ole {

// Whether WM_GETOBJECT asks for the content of the window.
bool AsksForContent(const Message& message) noexcept;
// Answers WM_GETOBJECT with the object. False, and nothing answered, without one.
bool AnswerWith(const Com<IAccessible>& object, Message& message);

// The number of a child as programs send it, in a VARIANT of type VT_I4: a script may send a short
// number, or leave the argument out and mean the object itself. Anything else is given back as it
// is.
VARIANT ChildNumber(const VARIANT& child) noexcept;
// The object itself, and not one of its children.
bool IsSelf(const VARIANT& child) noexcept;

// What the system knows of IAccessible: its members by name and number.
HRESULT FindAccessibleType(LCID locale, ITypeInfo** info) noexcept;

// The base of such an object. Late-bound calls, a script's, run its own functions.
template <class... More>
class AccessibleObject : public com::Object<IAccessible, More...> {
 public:
  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    if (!count) return E_POINTER;
    *count = 1;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
    if (!info) return E_POINTER;
    *info = nullptr;
    return index == 0 ? FindAccessibleType(locale, info) : DISP_E_BADINDEX;
  }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID locale,
                             DISPID* ids) override {
    Com<ITypeInfo> type;
    const HRESULT found = FindAccessibleType(locale, type.put());
    return FAILED(found) ? found : type->GetIDsOfNames(names, count, ids);
  }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID locale, WORD flags, DISPPARAMS* sent, VARIANT* result,
                      EXCEPINFO* exception, UINT* bad) override {
    Com<ITypeInfo> type;
    const HRESULT found = FindAccessibleType(locale, type.put());
    if (FAILED(found)) return found;
    return type->Invoke(static_cast<IAccessible*>(this), id, flags, sent, result, exception, bad);
  }

 protected:
  void* Find(REFIID id) noexcept override {
    if (id == __uuidof(IDispatch)) return static_cast<IDispatch*>(this);
    return com::Object<IAccessible, More...>::Find(id);
  }
};

}  // namespace qrn::ole
